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

Control labelControl(const QString& name, QRect rect, FontSpec font, TextAlign align, const QString& caption)
{
    Control c;
    c.name = name;
    c.kind = ControlKind::Label;
    c.rect = rect;
    c.font = font;
    c.alignment = align;
    c.caption = caption;
    return c;
}

Control textBoxControl(const QString& name, QRect rect, const QString& field, FontSpec font, TextAlign align)
{
    Control c;
    c.name = name;
    c.kind = ControlKind::TextBox;
    c.rect = rect;
    c.dataField = field;
    c.font = font;
    c.alignment = align;
    return c;
}

Control shapeControl(const QString& name, QRect rect, ShapeKind kind, BorderStyle border)
{
    Control c;
    c.name = name;
    c.kind = ControlKind::Shape;
    c.rect = rect;
    c.shape = kind;
    c.borderStyle = border;
    return c;
}

} // namespace velmora::printing
