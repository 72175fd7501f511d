#include "printing/Report.h"

#include "app/Failure.h"
#include "store/Engine.h"

namespace velmora::printing {

Control& Section::add(Control control)
{
    m_controls.push_back(std::move(control));
    return m_controls.back();
}

Control* Section::find(const QString& name)
{
    for (Control& control : m_controls) {
        if (control.name.compare(name, Qt::CaseInsensitive) == 0)
            return &control;
    }
    return nullptr;
}

const Control* Section::find(const QString& name) const
{
    return const_cast<Section*>(this)->find(name);
}

Control& Section::control(const QString& name)
{
    if (Control* found = find(name))
        return *found;
    throw Failure(store::failures::ItemNotFound,
                  QStringLiteral("הפקד '%1' לא נמצא באזור '%2'.").arg(name, m_name));
}

Report::Report()
    : m_sections{{{SectionKind::ReportHeader, QStringLiteral("ReportHeader")},
                  {SectionKind::PageHeader, QStringLiteral("PageHeader")},
                  {SectionKind::Detail, QStringLiteral("Detail")},
                  {SectionKind::PageFooter, QStringLiteral("PageFooter")},
                  {SectionKind::ReportFooter, QStringLiteral("ReportFooter")}}}
{
}

Section* Report::findSection(const QString& name)
{
    for (Section& section : m_sections) {
        if (section.name().compare(name, Qt::CaseInsensitive) == 0)
            return &section;
    }
    return nullptr;
}

Section& Report::section(const QString& name)
{
    if (Section* found = findSection(name))
        return *found;
    throw Failure(store::failures::ItemNotFound, QStringLiteral("האזור '%1' לא נמצא בדוח.").arg(name));
}

FontSpec reportFont(double points, bool bold, bool italic)
{
    FontSpec style;
    style.points = points;
    style.bold = bold;
    style.italic = italic;
    return style;
}

namespace {

Control control(const QString& name, ControlKind kind, QRect rect)
{
    Control c;
    c.name = name;
    c.kind = kind;
    c.rect = rect;
    return c;
}

} // namespace

Control labelControl(const QString& name, QRect rect, FontSpec font, TextAlign align, const QString& caption)
{
    Control c = control(name, ControlKind::Label, rect);
    c.font = font;
    c.alignment = align;
    c.caption = caption;
    return c;
}

Control textBoxControl(const QString& name, QRect rect, const QString& field, FontSpec font, TextAlign align)
{
    Control c = control(name, ControlKind::TextBox, rect);
    c.dataField = field;
    c.font = font;
    c.alignment = align;
    return c;
}

Control shapeControl(const QString& name, QRect rect, ShapeKind kind, BorderStyle border)
{
    Control c = control(name, ControlKind::Shape, rect);
    c.shape = kind;
    c.borderStyle = border;
    return c;
}

Control imageControl(const QString& name, QRect rect)
{
    return control(name, ControlKind::Image, rect);
}

} // namespace velmora::printing
