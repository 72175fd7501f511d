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

} // namespace velmora::printing
