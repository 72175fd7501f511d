#pragma once

#include "guests/GuestCsv.h"

#include <QDialog>

#include <array>
#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QTableView;

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::ui {

class ImportPreviewModel;

// A spreadsheet's guest list before it comes in: its rows, which column fills which
// field of the invitation, and what becomes of every row. Nothing is stored before
// "יבא", and then all accepted rows at once.
class ImportWindow : public QDialog {
    Q_OBJECT

public:
    // Reads the list as it stands; a failure is thrown.
    ImportWindow(const WeddingState& state, Prompts& prompts, store::CsvTable table, QWidget* parent = nullptr);
    ~ImportWindow() override;

    // Stores the accepted rows; false (and told) when nothing could be stored.
    bool importRows();
    const std::vector<guests::ImportRow>& rows() const { return m_rows; }
    guests::ImportCounts counts() const { return m_counts; }

    QComboBox* columnBox(guests::ImportField field) const { return m_columns[size_t(field)]; }
    QCheckBox* chkHeader = nullptr;
    QRadioButton* optSkip = nullptr;
    QRadioButton* optUpdate = nullptr;
    QTableView* grid = nullptr;
    QLabel* lblSummary = nullptr;
    QPushButton* cmdImport = nullptr;
    QPushButton* cmdCancel = nullptr;

private:
    void recheck();
    guests::ColumnMap columnMap() const;

    const WeddingState& m_state;
    Prompts& m_prompts;
    store::CsvTable m_table;
    guests::GuestImport m_import;
    std::vector<guests::ImportRow> m_rows;
    guests::ImportCounts m_counts;
    std::array<QComboBox*, guests::ImportFieldCount> m_columns{};
    ImportPreviewModel* m_model = nullptr;
};

// Tools menu: asks for a file, reads it, shows the window; `refresh` runs after a stored import.
void ImportGuestList(WeddingState& state, Prompts& prompts, const std::function<void()>& refresh, QWidget* parent);

} // namespace velmora::ui
