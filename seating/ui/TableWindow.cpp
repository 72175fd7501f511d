#include "seating/ui/TableWindow.h"

#include "printing/ui/WindowPrint.h"

#include "app/Product.h"
#include "app/Prompts.h"
#include "app/Twips.h"
#include "app/WeddingState.h"
#include "app/ui/HebrewText.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <tuple>

namespace velmora::ui {

namespace {

const QColor TableBlue(0xC0, 0xC0, 0xFF);
const QColor LegendText(40, 40, 40);

// The program's logo: two rings and the name, in the upper part of its box, since the
// count of people runs along its foot.
QPixmap logoPicture(QSize size)
{
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal band = size.height() * 0.6;
    const qreal ring = band * 0.8;
    const qreal top = (band - ring) / 2;
    painter.setPen(QPen(QColor(0xC8, 0x9B, 0x3C), qMax(1.2, ring / 9)));
    painter.drawEllipse(QRectF(2, top, ring, ring));
    painter.drawEllipse(QRectF(2 + ring * 0.55, top, ring, ring));
    QFont font(QStringLiteral("Liberation Serif"));
    font.setItalic(true);
    font.setBold(true);
    font.setPixelSize(qMax(8, int(band * 1.05)));
    painter.setFont(font);
    painter.setPen(QColor(0x80, 0, 0));
    const QRectF name(4 + ring * 1.6, 0, size.width() - ring * 1.6 - 4, band);
    painter.drawText(name, Qt::AlignAbsolute | Qt::AlignLeft | Qt::AlignVCenter, product::Title);
    return picture;
}


QString shownChairText(const QString& text)
{
    QString shown = text;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return shown;
}

} // namespace

ChairBox::ChairBox(Prompts& prompts, QWidget* parent) : QLabel(parent), m_prompts(prompts)
{
    setFocusPolicy(Qt::ClickFocus); // not a tab stop
    setFrameShape(QFrame::Box);
    setLineWidth(1);
    setAlignment(Qt::AlignCenter);
    setTextFormat(Qt::PlainText);
    setAutoFillBackground(true);
}

void ChairBox::keyPressEvent(QKeyEvent* event)
{
    event->accept();
    // Every key that types something, Escape and Enter included, and Delete: the chair stays as it is.
    if (!event->text().isEmpty() || event->key() == Qt::Key_Delete)
        m_prompts.beep();
}

// A circle, not an ellipse: as wide as its box is high, centred in the box.
QRect TableWindow::discRect()
{
    const QRect box = twipsRect(2160, 1200, 2175, 1695);
    const int side = std::min(box.width(), box.height());
    QRect circle(0, 0, side, side);
    circle.moveCenter(box.center());
    return circle;
}

QRect TableWindow::confirmedSwatchRect()
{
    return twipsRect(2160, 4000, 255, 135);
}

QRect TableWindow::unsureSwatchRect()
{
    return twipsRect(2160, 4230, 255, 135);
}

TableWindow::TableWindow(WeddingState& state, Prompts& prompts, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      m_table(state.CurTable), m_prompts(prompts)
{
    setObjectName(QStringLiteral("frmTable"));
    setAttribute(Qt::WA_DeleteOnClose);
    setHebrewTitle(this, QStringLiteral("סידור הושבה בשולחן"));
    setFixedSize(twipsToPixels(6615), twipsToPixels(4800));
    QPalette background = palette();
    background.setColor(QPalette::Window, QGuiApplication::palette().color(QPalette::HighlightedText));
    setPalette(background);
    setAutoFillBackground(true);

    m_plan = seating::LoadTablePlan(state, prompts);
    for (const seating::Chair& chair : m_plan.chairs()) {
        auto* box = new ChairBox(prompts, this);
        box->setObjectName(QStringLiteral("txtChair%1").arg(m_chairs.size()));
        box->setText(shownChairText(chair.text));
        QPalette colours = box->palette();
        colours.setColor(QPalette::Window, chair.colour);
        colours.setColor(QPalette::WindowText, Qt::black);
        box->setPalette(colours);
        box->setGeometry(twipsRect(chair.place.x(), chair.place.y(), chair.place.width(), chair.place.height()));
        box->setVisible(chair.visible);
        m_chairs.push_back(box);
    }

    const auto absolute = [](Qt::Alignment alignment) { return alignment | Qt::AlignAbsolute; };
    QLabel* number = addLabel("lblTableNum", QRect(2760, 1800, 975, 495),
                              QStringLiteral("שולחן מס' ") + QString::number(state.CurTable), Qt::AlignCenter);
    QFont bold = number->font();
    bold.setBold(true);
    bold.setPointSizeF(9.75);
    number->setFont(bold);
    // The number stays on the one line with its caption: where the font here is wider than
    // the box, the box grows to both sides alike, so the text stays centred on the disc.
    const int needed = number->fontMetrics().horizontalAdvance(number->text()) + 6;
    if (needed > number->width())
        number->setGeometry(number->geometry().adjusted(-(needed - number->width() + 1) / 2, 0,
                                                        (needed - number->width() + 1) / 2, 0));

    // The labels reach 135 twips under their swatches: the text ends a little short of them.
    const int legendGap = twipsToPixels(135 + 90);
    for (auto [name, rect, text] : {std::tuple{"Label1", QRect(480, 3960, 1815, 255), "אורח שאישר כי יגיע"},
                                    std::tuple{"Label2", QRect(240, 4200, 2055, 255), "אורח שלא ידוע אם יגיע"}}) {
        QLabel* legend = addLabel(name, rect, QString::fromUtf8(text), absolute(Qt::AlignRight | Qt::AlignVCenter));
        legend->setContentsMargins(0, 0, legendGap, 0);
        QPalette grey = legend->palette();
        grey.setColor(QPalette::WindowText, LegendText);
        legend->setPalette(grey);
    }
    addLabel("lblNumOfPpl", QRect(3120, 4200, 2775, 255),
             QStringLiteral("שולחן של ") + QString::number(state.CurTableChairs) + QStringLiteral(" מוזמנים"),
             absolute(Qt::AlignRight | Qt::AlignVCenter));

    auto* logo = new QLabel(this);
    logo->setObjectName(QStringLiteral("imgLogo"));
    logo->setGeometry(twipsRect(4080, 3960, 1800, 405));
    logo->setPixmap(logoPicture(logo->size()));
    logo->setAccessibleName(product::Title);
    logo->lower(); // the count of people may lie over its foot

    m_print = new PrintIcon(QStringLiteral("לחץ פעמיים להדפסת סידור ההושבה לשולחן זה"), this);
    m_print->setObjectName(QStringLiteral("imgPrint"));
    m_print->setGeometry(twipsRect(6000, 3840, 480, 480));
    connect(m_print, &PrintIcon::clicked, this, &TableWindow::imgPrint_DblClick);

    addLabel("Label63", QRect(120, 4560, 2655, 255), product::Title, absolute(Qt::AlignLeft | Qt::AlignVCenter));
    addLabel("Label3", QRect(3840, 4560, 2655, 255), product::WebAddress, absolute(Qt::AlignRight | Qt::AlignVCenter));
    keepOnScreen(true);
}

QLabel* TableWindow::addLabel(const char* name, const QRect& twips, const QString& text, Qt::Alignment alignment)
{
    auto* label = new QLabel(this);
    label->setObjectName(QString::fromLatin1(name));
    label->setGeometry(twipsRect(twips.x(), twips.y(), twips.width(), twips.height()));
    label->setAlignment(alignment);
    setHebrewText(label, text);
    return label;
}

void TableWindow::imgPrint_DblClick()
{
    printWindowWithDialog(*this, {m_print}, m_prompts, QStringLiteral("סידור ההושבה לשולחן הודפס"));
}

void TableWindow::paintEvent(QPaintEvent* event)
{
    QWidget::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(TableBlue);
    painter.drawEllipse(discRect());
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(Qt::black);
    painter.setBrush(seating::ConfirmedChair);
    painter.drawRect(confirmedSwatchRect().adjusted(0, 0, -1, -1));
    painter.setBrush(seating::UnsureChair);
    painter.drawRect(unsureSwatchRect().adjusted(0, 0, -1, -1));
    painter.setPen(palette().color(QPalette::Mid));
    const int rule = twipsToPixels(4560);
    painter.drawLine(0, rule, twipsToPixels(6600), rule);
}

void TableWindow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    QTimer::singleShot(0, this, [this] { keepOnScreen(false); }); // once the frame is known
}

// Whole on the screen of the window that opened it, title bar and frame included.
void TableWindow::keepOnScreen(bool overOpener)
{
    QScreen* screen = parentWidget() ? parentWidget()->screen() : this->screen();
    if (!screen)
        return;
    const QRect free = screen->availableGeometry();
    QRect frame = frameGeometry();
    if (frame.size() == size()) // not framed yet: leave room for a title bar and borders
        frame.adjust(-4, -32, 4, 4);
    const QPoint inner = geometry().topLeft() - frame.topLeft();
    if (overOpener && parentWidget())
        frame.moveCenter(parentWidget()->frameGeometry().center());
    frame.moveLeft(qBound(free.left(), frame.left(), qMax(free.left(), free.right() - frame.width() + 1)));
    frame.moveTop(qBound(free.top(), frame.top(), qMax(free.top(), free.bottom() - frame.height() + 1)));
    const QPoint place = frame.topLeft() + inner;
    if (place != geometry().topLeft())
        setGeometry(QRect(place, size()));
}

} // namespace velmora::ui
