#include "printing/ui/WindowPrint.h"

#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/Twips.h"
#include "printing/ui/PrinterTarget.h"

#include <QImage>
#include <QPainter>
#include <QPrinter>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <vector>

namespace velmora::ui {

namespace {

const QString PrintFailed = QStringLiteral("ארעה שגיאת הדפסה");

// Hides widgets for as long as it lives, then gives each back the visibility it had.
class HiddenWhile {
public:
    explicit HiddenWhile(const QList<QWidget*>& widgets)
    {
        for (QWidget* widget : widgets) {
            if (widget && !widget->isHidden()) {
                widget->hide();
                m_hidden.push_back(widget);
            }
        }
    }
    ~HiddenWhile()
    {
        for (QWidget* widget : m_hidden)
            widget->show();
    }
    HiddenWhile(const HiddenWhile&) = delete;
    HiddenWhile& operator=(const HiddenWhile&) = delete;

private:
    std::vector<QWidget*> m_hidden;
};

} // namespace

void printWindowPicture(QWidget& window, QPrinter& printer, const QList<QWidget*>& hidden)
{
    const QSize size = window.size();
    const int dpi = printer.resolution();
    // Taken at up to four times the screen's detail, so that text stays sharp on paper.
    const qreal detail = std::clamp(std::ceil(qreal(dpi) / ScreenDpi), 1.0, 4.0);
    QImage picture(size * detail, QImage::Format_RGB32);
    picture.setDevicePixelRatio(detail);
    picture.fill(window.palette().color(window.backgroundRole()));
    {
        HiddenWhile leftOut(hidden);
        window.render(&picture, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    }

    QSizeF onPage(twipsToPixelsF(pixelsToTwipsF(size.width()), dpi), twipsToPixelsF(pixelsToTwipsF(size.height()), dpi));
    const qreal fit = std::min({1.0, printer.width() / onPage.width(), printer.height() / onPage.height()});
    onPage *= fit;

    QPainter painter;
    beginPrinting(painter, printer);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(QPointF(0, 0), onPage), picture);
    endPrinting(painter, printer);
}

void printWindowWithDialog(QWidget& window, const QList<QWidget*>& hidden, Prompts& prompts, const QString& printed)
{
    const std::optional<PrinterRequest> choice = askForPrinter(prompts);
    if (!choice)
        return;
    PendingFailure pending;
    pending.attempt([&] {
        const std::unique_ptr<QPrinter> printer = printerFor(*choice);
        printWindowPicture(window, *printer, hidden);
    });
    prompts.message(pending ? PrintFailed : printed);
}

} // namespace velmora::ui
