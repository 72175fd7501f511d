#pragma once

#include <QDialog>

namespace velmora {
struct WeddingState;
}

namespace velmora::ui {

// The wedding's options, opened modally from the menu, the toolbar, the status bar and
// after a first start. The tabs arrive with the options work; until then the window
// shows what the wedding is set to.
class OptionsWindow : public QDialog {
    Q_OBJECT

public:
    explicit OptionsWindow(const WeddingState& state, QWidget* parent = nullptr);
};

} // namespace velmora::ui
