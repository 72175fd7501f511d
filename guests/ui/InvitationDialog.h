#pragma once

#include "guests/Invitation.h"
#include "store/Engine.h"

#include <QDialog>

#include <utility>
#include <vector>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace velmora {
class PendingFailure;
class Prompts;
struct WeddingState;
}

namespace velmora::ui {

// What the invitation dialog needs of the main window.
class InvitationHost {
public:
    virtual ~InvitationHost() = default;
    // The refresh after a change: the list, then the table map.
    virtual void refreshList() = 0;
    // SavedTopRow and SavedRow: the grid's first visible row and its current row.
    virtual void rememberGridPosition() = 0;
    // The grid takes the focus and goes back to SavedTopRow and SavedRow.
    virtual void restoreGridPosition() = 0;
    virtual quint8 seatedCount(int table) const = 0;
};

// frmInvDetails: one invitation entered or changed, or the sent flag of several set.
//
// It doesn't block the main window, whose every reload opens the database anew. So the
// dialog keeps a connection and a record set of its own for the row it updates, and the
// name pairs of a multi-row selection as they were when it opened: a reload of the list
// while the dialog is up can neither move its row nor change the rows a save writes to.
class InvitationDialog : public QDialog {
    Q_OBJECT

public:
    InvitationDialog(WeddingState& state, Prompts& prompts, InvitationHost& host, QWidget* parent = nullptr);

    // Loads the dialog for InvMode; `pairs` are the selected rows' names for an update.
    void load(const std::vector<std::pair<QString, QString>>& pairs);
    bool SaveInv();
    void ClearInv();
    void InitMultiSelection(bool multi);

    guests::InvitationForm form() const;
    void setForm(const guests::InvitationForm& form);
    int mode() const { return m_mode; }
    bool rowOpen() const { return m_db.isOpen(); }

    QTabWidget* tabs() const { return m_tabs; }
    QLineEdit* txtFamilyName;
    QLineEdit* txtFirstName;
    QLineEdit* txtPhones;
    QPlainTextEdit* txtAddress;
    QComboBox* cmbInvNum;
    QComboBox* cmbGroup;
    QPlainTextEdit* txtRemark;
    QCheckBox* chkConfirmOk;
    QCheckBox* chkConfirmNotOk;
    QCheckBox* chkConfirmUnkown;
    QComboBox* cmbTableNo;
    QCheckBox* chkInvSent;
    QRadioButton* optPresCheck;
    QRadioButton* optPresCashe;
    QRadioButton* optPresDiff;
    QLineEdit* txtPresent;
    QLabel* lblPresentDesc;
    QLabel* lblShekel;
    QPushButton* cmdOK;
    QPushButton* cmdCancel;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void build();
    bool AddRecord();
    bool UpdateRecord();
    bool updateOne(const guests::InvitationForm& form, int groupIndex);
    bool updateMany(bool sent);
    void finishUpdate();
    void presentOptionChanged();
    void cancel();
    void releaseRow();
    // The whole list, unfiltered and unsorted, as every search for a row opens it.
    void openList(store::Database& db, store::Recordset& rs, PendingFailure& pending) const;

    WeddingState& m_state;
    Prompts& m_prompts;
    InvitationHost& m_host;
    int m_mode = 1;
    bool m_multi = false;
    std::vector<std::pair<QString, QString>> m_pairs;
    store::Database m_db;
    store::Recordset m_rs;
    QTabWidget* m_tabs = nullptr;
    QList<QWidget*> m_multiHidden;
    // A field whose typed characters are filtered, and what it takes.
    struct KeyFilter {
        const QObject* field;
        bool (*takes)(const QString& typed);
    };
    std::vector<KeyFilter> m_keyFilters;
};

} // namespace velmora::ui
