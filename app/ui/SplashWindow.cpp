#include "app/ui/SplashWindow.h"

#include "app/Product.h"
#include "app/Twips.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>

namespace velmora::ui {

namespace {
const QString Subtitle = QStringLiteral("מתכננים חתונה");
}

SplashWindow::SplashWindow(QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint)
{
    setObjectName(QStringLiteral("frmSplash"));
    setAccessibleName(QStringLiteral("מסך פתיחה"));
    setAccessibleDescription(product::Title + u'\n' + Subtitle); // painted, so told here
    setFixedSize(twipsToPixels(10050), twipsToPixels(3840));
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());

    lblWeddingCount = new QLabel(this);
    lblWeddingCount->setObjectName(QStringLiteral("lblWeddingCount"));
    lblWeddingCount->setGeometry(twipsRect(600, 2400, 8850, 500));
    lblWeddingCount->setAlignment(Qt::AlignCenter);
    QFont countFont(QStringLiteral("Arial"), 16, QFont::Bold);
    lblWeddingCount->setFont(countFont);
    lblWeddingCount->setStyleSheet(QStringLiteral("color: rgb(255, 251, 240);"));

    lblVersion = new QLabel(this);
    lblVersion->setObjectName(QStringLiteral("lblVersion"));
    lblVersion->setGeometry(twipsRect(240, 3360, 3000, 300));
    lblVersion->setLayoutDirection(Qt::LeftToRight);
    lblVersion->setStyleSheet(QStringLiteral("color: rgb(255, 224, 192);"));
    lblVersion->setText(QStringLiteral("Version ") + product::version());
}

void SplashWindow::paintEvent(QPaintEvent*)
{
    // Image1: drawn here rather than shipped as a picture.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient gradient(rect().topLeft(), rect().bottomRight());
    gradient.setColorAt(0, QColor(110, 10, 30));
    gradient.setColorAt(1, QColor(50, 0, 15));
    painter.fillRect(rect(), gradient);
    painter.setPen(QPen(QColor(255, 224, 192), 2));
    painter.drawRect(rect().adjusted(8, 8, -9, -9));
    QFont title(QStringLiteral("Liberation Serif"), 44, QFont::Bold);
    painter.setFont(title);
    painter.setPen(QColor(255, 251, 240));
    painter.drawText(QRect(0, twipsToPixels(500), width(), twipsToPixels(1100)), Qt::AlignCenter, product::Title);
    QFont subtitle(QStringLiteral("Arial"), 14);
    painter.setFont(subtitle);
    painter.setPen(QColor(255, 224, 192));
    painter.drawText(QRect(0, twipsToPixels(1650), width(), twipsToPixels(500)), Qt::AlignCenter, Subtitle);
}

void SplashWindow::keyPressEvent(QKeyEvent* event)
{
    event->accept();
    close();
}

} // namespace velmora::ui
