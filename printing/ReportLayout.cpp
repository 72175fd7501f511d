#include "printing/ReportLayout.h"

#include "app/Failure.h"
#include "app/Twips.h"
#include "store/Engine.h"

#include <QPageSize>

#include <algorithm>
#include <cmath>

namespace velmora::printing {

namespace {

struct Bound {
    const Control* control;
    int field; // text boxes: the record's field, -1 for none
};

class Builder {
public:
    Builder(const Report& report, QSize paper) : m_report(report), m_records(report.dataSource.get())
    {
        m_out.paper = paper;
        const int footer = report.section(SectionKind::PageFooter).height;
        m_footerTop = paper.height() - report.bottomMargin - footer;
        for (size_t i = 0; i < m_bands.size(); ++i)
            m_bands[i] = bind(report.section(SectionKind(i)));
    }

    LaidOutReport run()
    {
        startPage(true);
        const int records = m_records ? m_records->recordCount() : 0;
        for (int record = 0; record < records; ++record)
            band(SectionKind::Detail, record);
        band(SectionKind::ReportFooter, -1);
        finishPage();
        const QString count = QString::number(m_out.pages.size());
        for (auto [page, item] : m_pageFields) {
            QString& text = m_out.pages[page].items[item].text;
            text.replace(QLatin1String("%p"), QString::number(page + 1));
            text.replace(QLatin1String("%P"), count);
        }
        return std::move(m_out);
    }

private:
    std::vector<Bound> bind(const Section& section) const
    {
        std::vector<Bound> bound;
        for (const Control& control : section.controls()) {
            if (!control.visible)
                continue;
            int field = -1;
            if (control.kind == ControlKind::TextBox && m_records && m_records->isOpen()
                && section.kind() == SectionKind::Detail) {
                field = m_records->fieldIndex(control.dataField);
                if (field < 0)
                    throw Failure(store::failures::ItemNotFound,
                                  QStringLiteral("השדה '%1' של '%2' אינו ברשומות הדוח.")
                                      .arg(control.dataField, control.name));
            }
            bound.push_back({&control, field});
        }
        return bound;
    }

    void startPage(bool first)
    {
        m_out.pages.emplace_back();
        m_y = m_report.topMargin;
        if (first)
            placeWhole(SectionKind::ReportHeader);
        placeWhole(SectionKind::PageHeader);
        m_contentTop = m_y;
    }

    void finishPage()
    {
        const int y = m_y;
        m_y = m_footerTop;
        placeWhole(SectionKind::PageFooter);
        m_y = y;
    }

    void newPage()
    {
        finishPage();
        startPage(false);
    }

    void placeWhole(SectionKind kind)
    {
        for (const Bound& bound : m_bands[size_t(kind)])
            place(bound, m_y + bound.control->rect.top(), -1);
        m_y += m_report.section(kind).height;
    }

    // A band at the present place; one that doesn't fit goes on, or breaks, onto the next page.
    void band(SectionKind kind, int record)
    {
        const Section& section = m_report.section(kind);
        const int height = section.height;
        std::vector<const Bound*> rest;
        for (const Bound& bound : m_bands[size_t(kind)])
            rest.push_back(&bound);
        int offset = 0; // the part of the band already on earlier pages
        for (;;) {
            const int room = m_footerTop - m_y;
            if (height - offset <= room) {
                for (const Bound* bound : rest)
                    place(*bound, m_y - offset + bound->control->rect.top(), record);
                m_y += height - offset;
                return;
            }
            const bool atTop = m_y == m_contentTop;
            if (section.keepTogether && !atTop) {
                newPage();
                continue;
            }
            const int cut = offset + room;
            std::vector<const Bound*> moved;
            bool placed = false;
            for (const Bound* bound : rest) {
                if (bound->control->rect.bottom() + 1 <= cut) {
                    place(*bound, m_y - offset + bound->control->rect.top(), record);
                    placed = true;
                } else {
                    moved.push_back(bound);
                }
            }
            if (!placed && !atTop) {
                newPage();
                continue;
            }
            if (!placed) { // taller than a whole page: it is cut at the paper's edge
                place(*moved.front(), m_y - offset + moved.front()->control->rect.top(), record);
                moved.erase(moved.begin());
            }
            if (moved.empty()) {
                m_y = m_footerTop;
                return;
            }
            int next = cut;
            for (const Bound* bound : moved)
                next = std::min(next, bound->control->rect.top());
            offset = std::max(next, offset);
            rest = std::move(moved);
            newPage();
        }
    }

    void place(const Bound& bound, int top, int record)
    {
        const Control& c = *bound.control;
        PlacedItem item;
        item.rect = QRect(m_report.leftMargin + c.rect.left(), top, c.rect.width(), c.rect.height());
        item.control = c.name;
        item.record = record;
        bool pageFields = false;
        switch (c.kind) {
        case ControlKind::Label:
        case ControlKind::TextBox:
            if (c.kind == ControlKind::Label) {
                item.text = c.caption;
                pageFields = item.text.contains(QLatin1String("%p")) || item.text.contains(QLatin1String("%P"));
            } else if (bound.field >= 0 && record >= 0) {
                item.text = m_records->value(record, bound.field);
                item.fromField = true;
            }
            if (item.text.isEmpty() && !c.backColor.isValid())
                return;
            item.kind = ItemKind::Text;
            item.font = c.font;
            item.alignment = c.alignment;
            item.color = c.foreColor;
            item.background = c.backColor;
            break;
        case ControlKind::Image:
            if (c.picture.isNull())
                return;
            item.kind = ItemKind::Picture;
            item.picture = c.picture;
            item.sizeMode = c.sizeMode;
            break;
        case ControlKind::Line:
            item.kind = ItemKind::Line;
            item.color = c.borderColor;
            item.borderStyle = c.borderStyle;
            break;
        case ControlKind::Shape:
            item.kind = c.shape == ShapeKind::RoundedRectangle ? ItemKind::RoundedRectangle : ItemKind::Rectangle;
            item.color = c.borderColor;
            item.background = c.backColor;
            item.borderStyle = c.borderStyle;
            break;
        }
        auto& items = m_out.pages.back().items;
        if (pageFields)
            m_pageFields.emplace_back(m_out.pages.size() - 1, items.size());
        items.push_back(std::move(item));
    }

    const Report& m_report;
    const RecordSet* m_records;
    LaidOutReport m_out;
    std::array<std::vector<Bound>, 5> m_bands;
    std::vector<std::pair<size_t, size_t>> m_pageFields;
    int m_footerTop = 0;
    int m_y = 0;
    int m_contentTop = 0;
};

} // namespace

QSize a4Twips()
{
    const QSizeF mm = QPageSize(QPageSize::A4).size(QPageSize::Millimeter);
    return mmToTwips(mm);
}

LaidOutReport layOut(const Report& report, QSize paper)
{
    return Builder(report, paper).run();
}

} // namespace velmora::printing
