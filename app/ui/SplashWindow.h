#pragma once

#include <QLabel>
#include <QWidget>

namespace velmora::ui {

// The start-up window: the days left to the wedding and the program's version.
class SplashWindow : public QWidget {
    Q_OBJECT

public:
    explicit SplashWindow(QWidget* parent = nullptr);

    QLabel* lblWeddingCount;
    QLabel* lblVersion;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace velmora::ui
