#pragma once

#include <QAbstractButton>

namespace velmora::ui {

// The print icon of a window that prints itself: a picture of a printer that prints on a
// double click. A single click does nothing, so that a stray one prints nothing; from the
// keyboard it is a tab stop that Space or Enter presses, and a screen reader reads it as a
// button named by its tool tip and can press it. Every way in emits clicked().
class PrintIcon : public QAbstractButton {
    Q_OBJECT

public:
    PrintIcon(const QString& toolTip, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace velmora::ui
