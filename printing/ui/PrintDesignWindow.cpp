#include "printing/ui/PrintDesignWindow.h"

#include "app/Failure.h"
#include "app/Prompts.h"
#include "app/Twips.h"
#include "app/WeddingState.h"
#include "app/ui/HebrewText.h"
#include "printing/Picture.h"
#include "printing/PrintDesign.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace velmora::printing::ui {

using velmora::ui::setHebrewText;
using velmora::ui::setHebrewTitle;

// The preview's outlines: drawn in the design colour, never in the way of the mouse.
class Outline : public QWidget {
public:
    enum Kind { RoundedFrame, DottedFrame, DottedLine, Filled };

    Outline(Kind kind, QWidget* parent) : QWidget(parent), m_kind(kind)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    void setColour(const QColor& colour)
    {
        m_colour = colour;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing, m_kind == RoundedFrame);
        QPen pen(m_colour, 1, m_kind == DottedFrame || m_kind == DottedLine ? Qt::DotLine : Qt::SolidLine);
        const QRectF box = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        switch (m_kind) {
        case RoundedFrame:
            painter.setPen(pen);
            painter.drawRoundedRect(box, 8, 8);
            break;
        case DottedFrame:
            painter.setPen(pen);
            painter.drawRect(box);
            break;
        case DottedLine:
            painter.setPen(pen);
            painter.drawLine(QPointF(0, 0.5), QPointF(width(), 0.5));
            break;
        case Filled:
            painter.setPen(palette().color(QPalette::Dark));
            painter.setBrush(m_colour);
            painter.drawRect(box);
            break;
        }
    }

private:
    Kind m_kind;
    QColor m_colour = Qt::black;
};

namespace {

constexpr int ClientWidth = 5130; // twips
constexpr int ClientHeight = 2250;

template <class Control>
Control* place(Control* control, const char* name, int left, int top, int width, int height)
{
    control->setObjectName(QString::fromLatin1(name));
    control->setGeometry(twipsRect(left, top, width, height));
    return control;
}

Outline* outline(Outline::Kind kind, QWidget* page, const char* name, const QString& readAs)
{
    auto* shape = new Outline(kind, page);
    shape->setObjectName(QString::fromLatin1(name));
    shape->setAccessibleName(readAs);
    return shape;
}

QLabel* previewText(QWidget* page, const QString& text, bool bold, Qt::Alignment alignment)
{
    auto* label = new QLabel(page);
    setHebrewText(label, text);
    label->setAlignment(alignment | Qt::AlignVCenter);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    if (bold) {
        QFont font = label->font();
        font.setBold(true);
        label->setFont(font);
    }
    return label;
}

} // namespace

PrintDesignWindow::PrintDesignWindow(WeddingState& state, Prompts& prompts, QWidget* parent)
    : QDialog(parent), m_state(state), m_prompts(prompts)
{
    setObjectName(QStringLiteral("frmPrint"));
    // A small fixed dialog: a close box only.
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint
                   | Qt::MSWindowsFixedSizeDialogHint);
    setFont(QFont(QStringLiteral("Arial"), 8));
    setFixedSize(twipsToPixels(ClientWidth), twipsToPixels(ClientHeight));
    build();
    Form_Load();
}

void PrintDesignWindow::build()
{
    // The two pages lie on the same rectangle; the colour box stands over both.
    m_framLabelPrint = place(new QWidget(this), "framLabelPrint", 120, 0, 4935, 2175);
    m_framSittingNotePrint = place(new QWidget(this), "framSittingNotePrint", 120, 0, 4935, 2175);

    auto* frame1 = place(new QGroupBox(this), "Frame1", 2880, 240, 1935, 495);
    auto* label1 = place(new QLabel(frame1), "Label1", 1260, 120, 555, 255);
    setHebrewText(label1, QStringLiteral("צבע"));
    m_shpColor = place(outline(Outline::Filled, frame1, "shpColor", QStringLiteral("צבע")), "shpColor", 600, 135, 600, 225);
    auto* cmdColor = place(new QPushButton(frame1), "cmdColor", 120, 90, 420, 315);
    setHebrewText(cmdColor, QStringLiteral("..."));
    cmdColor->setAccessibleName(QStringLiteral("צבע"));
    cmdColor->setAutoDefault(false);
    label1->setBuddy(cmdColor);
    connect(cmdColor, &QPushButton::clicked, this, &PrintDesignWindow::chooseColour);

    // Labels: the preview of one label on the left, the choices on the right.
    QWidget* labels = m_framLabelPrint;
    m_shpLabelFrame = place(outline(Outline::RoundedFrame, labels, "shpLabelFrame", QStringLiteral("מסגרת למדבקה")),
                            "shpLabelFrame", 120, 480, 2295, 855);
    const Qt::Alignment right = Qt::AlignRight | Qt::AlignAbsolute;
    m_lblLabelName = place(previewText(labels, QStringLiteral("לפלוני"), true, right), "lblLabelName", 300, 600, 1845, 255);
    m_lblLabelAddress = place(previewText(labels, QStringLiteral("כתובת למשלוח הזמנה"), false, right), "lblLabelAddress",
                              300, 870, 1845, 255);
    m_chkLabelFrame = place(new QCheckBox(QStringLiteral("מסגרת למדבקה"), labels), "chkLabelFrame", 2760, 900, 1935, 285);
    m_chkLabelAddress = place(new QCheckBox(QStringLiteral("כתובת למשלוח הזמנה"), labels), "chkLabelAddress", 2760, 1245,
                              1935, 285);
    auto* cmdPrintLabel = place(new QPushButton(labels), "cmdPrintLabel", 2760, 1710, 1935, 375);
    setHebrewText(cmdPrintLabel, QStringLiteral("...הדפס מדבקות"));
    connect(m_chkLabelFrame, &QCheckBox::toggled, this, &PrintDesignWindow::labelFrameClicked);
    connect(m_chkLabelAddress, &QCheckBox::toggled, this, &PrintDesignWindow::labelAddressClicked);
    connect(cmdPrintLabel, &QPushButton::clicked, this, [this] { print(LabelsPage); });

    // Notes: the design under the lower half, the frame and fold over it, the texts on top.
    QWidget* notes = m_framSittingNotePrint;
    m_imgBG = place(new QLabel(notes), "imgBG", 360, 780, 1455, 555);
    m_shpNoteFrame = place(outline(Outline::DottedFrame, notes, "shpNoteFrame", QStringLiteral("מסגרת חיתוך")),
                           "shpNoteFrame", 360, 240, 1455, 1095);
    m_lineNoteFrame = place(outline(Outline::DottedLine, notes, "LineNoteFrame", QStringLiteral("קו קיפול")),
                            "LineNoteFrame", 360, 780, 1455, 15);
    m_lblNoteName = place(previewText(notes, QStringLiteral("פלוני"), true, Qt::AlignHCenter), "lblNoteName", 360, 885,
                          1455, 225);
    m_lblNoteTable = place(previewText(notes, QStringLiteral("מס' שולחן"), false, Qt::AlignHCenter), "lblNoteTable", 360,
                           1095, 1455, 210);
    m_chkNoteFrame = place(new QCheckBox(QStringLiteral("מסגרת חיתוך"), notes), "chkNoteFrame", 2760, 780, 1935, 285);
    m_lstStyles = place(new StyleList(notes), "lstStyles", 2760, 1080, 1935, 645);
    m_lstStyles->setAccessibleName(QStringLiteral("עיצוב הפתק"));
    auto* cmdPrintNote = place(new QPushButton(notes), "cmdPrintNote", 2760, 1770, 1935, 375);
    setHebrewText(cmdPrintNote, QStringLiteral("...הדפס פתקים"));
    connect(m_chkNoteFrame, &QCheckBox::toggled, this, &PrintDesignWindow::noteFrameClicked);
    connect(m_lstStyles, &QListWidget::currentRowChanged, this, &PrintDesignWindow::styleSelected);
    connect(cmdPrintNote, &QPushButton::clicked, this, [this] { print(NotesPage); });

    frame1->raise();
    setTabOrder(cmdColor, m_chkLabelFrame);
    setTabOrder(m_chkLabelFrame, m_chkLabelAddress);
    setTabOrder(m_chkLabelAddress, cmdPrintLabel);
    setTabOrder(cmdPrintLabel, m_chkNoteFrame);
    setTabOrder(m_chkNoteFrame, m_lstStyles);
    setTabOrder(m_lstStyles, cmdPrintNote);
}

void PrintDesignWindow::Form_Load()
{
    ReadPrintDesign(m_state, m_state.PrintPage);
    const bool notes = m_state.PrintPage == NotesPage;
    setHebrewTitle(this, notes ? QStringLiteral("עיצוב פתקי הושבה") : QStringLiteral("עיצוב מדבקות"));
    m_framSittingNotePrint->setVisible(notes);
    m_framLabelPrint->setVisible(!notes);
    if (notes) {
        LoadStyles();
        styleSelected();
    }
    m_imgBG->setScaledContents(true);
    applyColour();
    const QSignalBlocker quietFrame(m_chkLabelFrame), quietNote(m_chkNoteFrame), quietAddress(m_chkLabelAddress);
    m_chkLabelFrame->setChecked(m_state.LabelFrame);
    m_chkNoteFrame->setChecked(m_state.LabelFrame);
    m_chkLabelAddress->setChecked(m_state.LabelAddress);
    labelFrameClicked();
    noteFrameClicked();
    labelAddressClicked();
}

void PrintDesignWindow::LoadStyles()
{
    const QSignalBlocker quiet(m_lstStyles);
    m_lstStyles->clear();
    m_lstStyles->addItems(printing::LoadStyles(m_state));
    const auto match = m_lstStyles->findItems(m_state.NoteStyle, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (!match.isEmpty())
        m_lstStyles->setCurrentItem(match.first());
}

void PrintDesignWindow::styleSelected()
{
    if (QListWidgetItem* item = m_lstStyles->currentItem())
        m_state.NoteStyle = item->text();
    if (m_state.NoteStyle != NoBackground) {
        // A picture that can't be read leaves the preview empty, as it leaves the notes; the
        // choice stands. The notes' own reader also refuses a GIF cut short, which Qt's
        // reader would show with its missing part black.
        QImage picture;
        try {
            picture = loadPicture(DesignFolder(m_state.AppPath) + m_state.NoteStyle);
        } catch (const Failure&) {
        }
        m_imgBG->setPixmap(QPixmap::fromImage(picture));
        m_imgBG->setAccessibleDescription(m_state.NoteStyle);
        m_imgBG->show();
    } else {
        m_imgBG->hide();
    }
}

void PrintDesignWindow::chooseColour()
{
    // The dialog starts from its own value, not from the colour in use, and a cancel takes
    // that value as if it were chosen.
    if (const auto chosen = m_prompts.chooseColour(m_dialogColour))
        m_dialogColour = *chosen;
    m_state.LabelColor = valueFromColour(m_dialogColour);
    applyColour();
}

void PrintDesignWindow::applyColour()
{
    const QColor colour = colourFromValue(m_state.LabelColor);
    m_shpColor->setColour(colour);
    m_shpColor->setAccessibleDescription(colour.name());
    for (QLabel* text : {m_lblLabelName, m_lblLabelAddress, m_lblNoteName, m_lblNoteTable}) {
        QPalette palette = text->palette();
        palette.setColor(QPalette::WindowText, colour);
        text->setPalette(palette);
    }
    for (Outline* shape : {m_shpLabelFrame, m_shpNoteFrame, m_lineNoteFrame})
        shape->setColour(colour);
}

void PrintDesignWindow::labelFrameClicked()
{
    m_state.LabelFrame = m_chkLabelFrame->isChecked();
    m_shpLabelFrame->setVisible(m_state.LabelFrame);
}

void PrintDesignWindow::noteFrameClicked()
{
    m_state.LabelFrame = m_chkNoteFrame->isChecked();
    m_shpNoteFrame->setVisible(m_state.LabelFrame);
    m_lineNoteFrame->setVisible(m_state.LabelFrame);
}

void PrintDesignWindow::labelAddressClicked()
{
    m_state.LabelAddress = m_chkLabelAddress->isChecked();
    m_lblLabelAddress->setVisible(m_state.LabelAddress);
}

void PrintDesignWindow::print(qint32 page)
{
    SavePrintDesign(m_state, page);
    m_printed = page;
    accept();
}

void PrintDesignWindow::open(WeddingState& state, Prompts& prompts, const PrintCommands& commands, QWidget* parent)
{
    qint32 printed = 0;
    {
        PrintDesignWindow window(state, prompts, parent);
        window.exec();
        printed = window.printed();
    }
    const auto& report = printed == LabelsPage ? commands.printLabels : commands.printNotes;
    if (printed && report)
        report();
}

} // namespace velmora::printing::ui
