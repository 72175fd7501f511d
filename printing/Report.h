#pragma once

#include "printing/RecordSet.h"

#include <QColor>
#include <QImage>
#include <QRect>
#include <QString>

#include <array>
#include <memory>
#include <vector>

namespace velmora::printing {

// A banded report as designed: five bands of controls, every measure in twips. Layout
// (ReportLayout.h) turns it and its rows into pages.

enum class ControlKind { Label, TextBox, Image, Line, Shape };
enum class ShapeKind { Rectangle, RoundedRectangle };
enum class BorderStyle { Solid, Dotted };
// Clip: the picture in its natural size, cut at the box; Stretch: over the whole box;
// Zoom: as large as fits, proportions kept.
enum class SizeMode { Clip = 0, Stretch = 1, Zoom = 2 };
// Where a line of text stands in its box on the paper, whatever its direction.
enum class TextAlign { Left, Centre, Right };

struct FontSpec {
    QString family = QStringLiteral("Arial");
    double points = 9.75;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeOut = false;

    bool operator==(const FontSpec&) const = default;
};

struct Control {
    QString name;
    ControlKind kind = ControlKind::Label;
    QRect rect;        // within the band
    QString caption;   // a label's text; "%p" and "%P" print the page and the number of pages
    QString dataField; // a text box's field
    FontSpec font;
    TextAlign alignment = TextAlign::Left;
    QColor foreColor = Qt::black;
    QColor backColor; // invalid: transparent
    QColor borderColor = Qt::black;
    BorderStyle borderStyle = BorderStyle::Solid;
    ShapeKind shape = ShapeKind::Rectangle;
    QImage picture;
    SizeMode sizeMode = SizeMode::Clip;
    bool visible = true;
};

// Builders of a design's controls, places in twips within the band.
FontSpec reportFont(double points, bool bold = false, bool italic = false);
Control labelControl(const QString& name, QRect rect, FontSpec font, TextAlign align = TextAlign::Left,
                     const QString& caption = {});
Control textBoxControl(const QString& name, QRect rect, const QString& field, FontSpec font, TextAlign align);
Control shapeControl(const QString& name, QRect rect, ShapeKind kind, BorderStyle border);
Control imageControl(const QString& name, QRect rect);

enum class SectionKind { ReportHeader, PageHeader, Detail, PageFooter, ReportFooter };

class Section {
public:
    Section() = default;
    Section(SectionKind kind, QString name) : m_kind(kind), m_name(std::move(name)) {}

    SectionKind kind() const { return m_kind; }
    const QString& name() const { return m_name; }
    void setName(const QString& name) { m_name = name; }

    int height = 0;
    bool keepTogether = false; // never broken across pages

    // Controls are painted in the order they were added: a picture meant to lie under the
    // others is added first.
    Control& add(Control control);
    // Names compare without regard to case. control() fails on a name that isn't there.
    Control* find(const QString& name);
    const Control* find(const QString& name) const;
    Control& control(const QString& name);
    std::vector<Control>& controls() { return m_controls; }
    const std::vector<Control>& controls() const { return m_controls; }

private:
    SectionKind m_kind = SectionKind::Detail;
    QString m_name;
    std::vector<Control> m_controls;
};

class Report {
public:
    Report();

    QString name;    // the design's name
    QString caption; // title of the preview window
    int width = 0;
    int leftMargin = 1440;
    int rightMargin = 1440;
    int topMargin = 1440;
    int bottomMargin = 1440;

    Section& section(SectionKind kind) { return m_sections[size_t(kind)]; }
    const Section& section(SectionKind kind) const { return m_sections[size_t(kind)]; }
    // By name, without regard to case; section() fails on a name that isn't there.
    Section* findSection(const QString& name);
    Section& section(const QString& name);

    // One detail band per record, in record order. The set stays open while the report
    // is shown.
    std::shared_ptr<RecordSet> dataSource;

private:
    std::array<Section, 5> m_sections;
};

} // namespace velmora::printing
