#pragma once

#include "guests/Options.h"

#include <QDialog>

#include <functional>

class QDateEdit;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTabWidget;

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::ui {

// frmOptions: the couple, the date, the limits and the guest groups. Nothing reaches the
// wedding until Apply has passed its checks.
class OptionsWindow : public QDialog {
    Q_OBJECT

public:
    // `applied` runs after a successful Apply, so that the main window and the map follow.
    OptionsWindow(WeddingState& state, Prompts& prompts, guests::SeatedCountFn seatedCount,
                  std::function<void()> applied, QWidget* parent = nullptr);

    void CancelUpdate();
    bool apply();
    guests::OptionsForm form() const;
    int groupMode() const { return m_groupMode; }

    QTabWidget* SSTab1;
    QLineEdit* txtCouple;
    QLineEdit* txtHisFamily;
    QLineEdit* txtHerFamily;
    QDateEdit* DTPickWedding;
    QLineEdit* txtNewGroup;
    QPushButton* cmdAddUpdateGroup;
    QListWidget* lstGroups;
    QPushButton* cmdDelGroup;
    QPushButton* cmdCancelUpdate;
    QLineEdit* txtMaxTable;
    QLineEdit* txtMaxChairs;
    QPushButton* cmdOK;
    QPushButton* cmdCancel;
    QPushButton* cmdApply;

private:
    void build();
    void load();
    void addOrUpdateGroup();
    void deleteGroup();
    void groupDoubleClicked();
    // The row of the selected entry, -1 when none is.
    int selectedGroup() const;
    void tabSelected(int tab);

    WeddingState& m_state;
    Prompts& m_prompts;
    guests::SeatedCountFn m_seatedCount;
    std::function<void()> m_applied;
    int m_groupMode = 1;
};

} // namespace velmora::ui
