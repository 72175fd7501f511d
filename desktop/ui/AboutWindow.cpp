#include "desktop/ui/AboutWindow.h"

#include "app/Product.h"
#include "desktop/About.h"
#include "desktop/Links.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QVBoxLayout>

namespace velmora::desktop::ui {

namespace {

const QColor Wine(128, 0, 0);
const QColor Gold(212, 175, 55);

void drawRings(QPainter& painter, const QRectF& box, qreal pen)
{
    painter.setPen(QPen(Gold, pen));
    painter.setBrush(Qt::NoBrush);
    const qreal d = box.height() * 0.62;
    const qreal y = box.center().y() - d / 2;
    painter.drawEllipse(QRectF(box.center().x() - d * 0.8, y, d, d));
    painter.setPen(QPen(Gold.lighter(125), pen));
    painter.drawEllipse(QRectF(box.center().x() - d * 0.2, y, d, d));
}

// The program's logo, 276 by 54: two rings and the name.
QPixmap logo()
{
    QPixmap pixmap(276, 54);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient ground(0, 0, 276, 0);
    ground.setColorAt(0, Wine);
    ground.setColorAt(1, QColor(190, 80, 90));
    painter.fillRect(pixmap.rect(), ground);
    drawRings(painter, QRectF(6, 0, 54, 54), 3);
    QFont font(QStringLiteral("DejaVu Serif"), 22, QFont::Bold);
    font.setItalic(true);
    painter.setFont(font);
    painter.setPen(QColor(255, 251, 240));
    painter.drawText(QRectF(70, 0, 200, 54), Qt::AlignVCenter | Qt::AlignLeft, product::Title);
    return pixmap;
}

// The second picture: the rings alone, large, on cream.
QPixmap rings()
{
    QPixmap pixmap(64, 64);
    pixmap.fill(QColor(255, 251, 240));
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    drawRings(painter, QRectF(0, 0, 64, 64), 4);
    return pixmap;
}

// The small pictures beside the links: wine lines on a light orange fill.
template <class Draw>
QPixmap linkPicture(Draw&& draw)
{
    QPixmap pixmap(20, 20);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Wine, 1.5));
    painter.setBrush(QColor(255, 224, 192));
    draw(painter);
    return pixmap;
}

QPixmap house()
{
    return linkPicture([](QPainter& painter) {
        painter.drawPolygon(QPolygonF({QPointF(2, 10), QPointF(10, 2), QPointF(18, 10)}));
        painter.drawRect(QRectF(4.5, 10, 11, 8));
        painter.setBrush(Wine);
        painter.drawRect(QRectF(8.5, 13, 3, 5));
    });
}

QPixmap envelope()
{
    return linkPicture([](QPainter& painter) {
        painter.drawRect(QRectF(2, 5, 16, 11));
        painter.drawPolyline(QPolygonF({QPointF(2, 5), QPointF(10, 11.5), QPointF(18, 5)}));
    });
}

// A painter starts with the application's direction, not its widget's: without this an
// English button text in this right-to-left program shows as "...System Info".
class EnglishButton : public QPushButton {
public:
    EnglishButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {}

protected:
    void paintEvent(QPaintEvent*) override
    {
        QStylePainter painter(this);
        painter.setLayoutDirection(layoutDirection());
        QStyleOptionButton option;
        initStyleOption(&option);
        painter.drawControl(QStyle::CE_PushButton, option);
    }
};

QLabel* picture(const QString& name, const QPixmap& pixmap, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setPixmap(pixmap);
    label->setFixedSize(pixmap.size());
    return label;
}

} // namespace

AboutWindow::AboutWindow(Prompts& prompts, QWidget* parent) : QDialog(parent), m_prompts(prompts)
{
    setObjectName(QStringLiteral("frmAbout"));
    // Its texts are English: the box reads left to right.
    setLayoutDirection(Qt::LeftToRight);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setAttribute(Qt::WA_DeleteOnClose, false);
    setWindowTitle(AboutCaption());

    auto* title = new QLabel(product::Title, this);
    title->setObjectName(QStringLiteral("lblTitle"));
    QFont titleFont = title->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.8);
    titleFont.setBold(true);
    title->setFont(titleFont);

    auto* version = new QLabel(VersionText(), this);
    version->setObjectName(QStringLiteral("lblVersion"));
    QFont bold = version->font();
    bold.setBold(true);
    version->setFont(bold);

    auto* description = new QLabel(DescriptionText(), this);
    description->setObjectName(QStringLiteral("lblDescription"));
    description->setWordWrap(true);

    m_web = link(QStringLiteral("lblWeb"), product::WebAddress, WebLink);
    m_mail = link(QStringLiteral("lblMail"), product::SupportMail, MailLink);

    auto* ok = new EnglishButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    auto* sysInfo = new EnglishButton(QStringLiteral("&System Info..."), this);
    sysInfo->setObjectName(QStringLiteral("cmdSysInfo"));
    connect(sysInfo, &QPushButton::clicked, this, [this] { StartSysInfo(m_prompts); });

    auto* top = new QHBoxLayout;
    top->addWidget(picture(QStringLiteral("imgLogo"), logo(), this));
    top->addStretch(1);
    top->addWidget(picture(QStringLiteral("Image4"), rings(), this));

    auto* links = new QGridLayout;
    links->addWidget(picture(QStringLiteral("imgHome"), house(), this), 0, 0);
    links->addWidget(m_web, 0, 1, Qt::AlignLeft);
    links->addWidget(picture(QStringLiteral("imgEmail"), envelope(), this), 1, 0);
    links->addWidget(m_mail, 1, 1, Qt::AlignLeft);
    links->setColumnStretch(1, 1);

    auto* line = new QFrame(this);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(ok);
    buttons->addWidget(sysInfo);
    buttons->addStretch(1);
    auto* bottom = new QHBoxLayout;
    bottom->addLayout(links, 1);
    bottom->addLayout(buttons);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(title);
    layout->addWidget(version);
    layout->addWidget(description);
    layout->addSpacing(6);
    layout->addWidget(line);
    layout->addLayout(bottom);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QLabel* AboutWindow::link(const QString& name, const QString& address, quint8 kind)
{
    auto* label = new QLabel(QStringLiteral("<a href=\"%1\">%1</a>").arg(address.toHtmlEscaped()), this);
    label->setObjectName(name);
    label->setTextFormat(Qt::RichText);
    label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    label->setOpenExternalLinks(false);
    label->setCursor(Qt::PointingHandCursor);
    connect(label, &QLabel::linkActivated, this, [address, kind] { OpenLink(address, kind); });
    return label;
}

} // namespace velmora::desktop::ui
