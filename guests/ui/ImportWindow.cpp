#include "guests/ui/ImportWindow.h"

#include "app/Prompts.h"
#include "app/WeddingState.h"
#include "app/ui/HebrewText.h"

#include <QAbstractTableModel>
#include <QButtonGroup>
#include <QCheckBox>
#include <QColor>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QVBoxLayout>

#include <memory>

namespace velmora::ui {

using guests::ImportField;
using guests::ImportRow;

namespace {

QString encodingName(store::CsvEncoding encoding)
{
    switch (encoding) {
    case store::CsvEncoding::Utf8Bom:
        return QStringLiteral("UTF-8 עם סימן BOM");
    case store::CsvEncoding::Utf16:
        return QStringLiteral("UTF-16");
    case store::CsvEncoding::Windows1255:
        return QStringLiteral("Windows-1255");
    case store::CsvEncoding::Utf8:
        break;
    }
    return QStringLiteral("UTF-8");
}

QString separatorName(QChar separator)
{
    return separator == u'\t' ? QStringLiteral("טאב") : separator == u';' ? QStringLiteral("נקודה-פסיק")
                                                                            : QStringLiteral("פסיק");
}

QString statusText(const ImportRow& row)
{
    switch (row.kind) {
    case ImportRow::Kind::Add:
        return QStringLiteral("תתווסף");
    case ImportRow::Kind::Update:
        return QStringLiteral("תעדכן הזמנה קיימת");
    case ImportRow::Kind::Skip:
        return QStringLiteral("תדולג: ") + row.reason;
    case ImportRow::Kind::Refused:
        break;
    }
    return QStringLiteral("נדחתה: ") + row.reason;
}

} // namespace

// The file's rows as they are, each with what the import makes of it in the first column.
class ImportPreviewModel : public QAbstractTableModel {
public:
    ImportPreviewModel(const store::CsvTable& table, QObject* parent) : QAbstractTableModel(parent), m_table(table)
    {
        for (const QStringList& row : table.rows)
            m_width = std::max(m_width, int(row.size()));
    }

    void setVerdicts(const std::vector<ImportRow>* rows, bool headerRow)
    {
        beginResetModel();
        m_rows = rows;
        m_first = headerRow ? 1 : 0;
        endResetModel();
    }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() || !m_rows ? 0 : int(m_rows->size());
    }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : m_width + 1; }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid() || !m_rows || index.row() >= int(m_rows->size()))
            return {};
        const ImportRow& verdict = (*m_rows)[size_t(index.row())];
        const QStringList& cells = m_table.rows[size_t(index.row() + m_first)];
        const bool status = index.column() == 0;
        switch (role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole:
            if (status)
                return statusText(verdict);
            return index.column() - 1 < cells.size() ? cells[index.column() - 1] : QString();
        case Qt::ForegroundRole:
            if (verdict.kind == ImportRow::Kind::Refused)
                return QColor(160, 0, 0);
            return verdict.kind == ImportRow::Kind::Skip ? QVariant(QColor(110, 110, 110)) : QVariant();
        case Qt::BackgroundRole:
            return verdict.kind == ImportRow::Kind::Refused ? QVariant(QColor(255, 228, 228)) : QVariant();
        default:
            return {};
        }
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (role != Qt::DisplayRole)
            return {};
        if (orientation == Qt::Vertical) // the file's own line, for finding the row in it
            return section + m_first < int(m_table.lines.size()) ? m_table.lines[size_t(section + m_first)] : 0;
        if (section == 0)
            return QStringLiteral("מצב השורה");
        const QStringList& header = m_table.rows.front();
        return m_first && section - 1 < header.size() ? header[section - 1]
                                                      : QStringLiteral("עמודה %1").arg(section);
    }

private:
    const store::CsvTable& m_table;
    const std::vector<ImportRow>* m_rows = nullptr;
    int m_width = 0;
    int m_first = 1;
};

ImportWindow::ImportWindow(const WeddingState& state, Prompts& prompts, store::CsvTable table, QWidget* parent)
    : QDialog(parent), m_state(state), m_prompts(prompts), m_table(std::move(table)), m_import(state)
{
    setObjectName(QStringLiteral("frmImportList"));
    setHebrewTitle(this, QStringLiteral("יבוא רשימת מוזמנים"));
    {
        store::Database db = store::Database::open(state.databaseFile());
        store::Recordset list = db.openRecordset(QStringLiteral("select * from VELMORA_LIST"));
        m_import.readList(list);
        list.close();
        db.close();
    }

    auto* layout = new QVBoxLayout(this);
    auto* file = new QLabel(this);
    file->setObjectName(QStringLiteral("lblFile"));
    setHebrewText(file, QStringLiteral("קידוד: %1; מפריד: %2; שורות: %3")
                            .arg(encodingName(m_table.encoding), separatorName(m_table.separator))
                            .arg(m_table.rows.size()));
    layout->addWidget(file);

    auto* mapping = new QGroupBox(hebrewParagraph(QStringLiteral("עמודות הקובץ לפרטי ההזמנה")), this);
    mapping->setObjectName(QStringLiteral("framColumns"));
    auto* grid = new QGridLayout(mapping);
    const QStringList& header = m_table.rows.front();
    int width = 0;
    for (const QStringList& row : m_table.rows)
        width = std::max(width, int(row.size()));
    const guests::ColumnMap guessed = guests::GuessColumns(header);
    for (int f = 0; f < guests::ImportFieldCount; ++f) {
        auto* box = new QComboBox(mapping);
        box->setObjectName(QStringLiteral("cmbColumn%1").arg(f));
        box->addItem(QStringLiteral("(אין)"), -1);
        for (int c = 0; c < width; ++c) {
            const QString caption = c < header.size() && !header[c].trimmed().isEmpty() ? header[c] : QString();
            box->addItem(QStringLiteral("עמודה %1").arg(c + 1) + (caption.isEmpty() ? QString() : QStringLiteral(": ") + caption), c);
        }
        box->setCurrentIndex(box->findData(guessed[size_t(f)]));
        auto* label = new QLabel(mapping);
        setHebrewText(label, guests::ImportFieldCaption(ImportField(f)));
        label->setBuddy(box);
        m_columns[size_t(f)] = box;
        grid->addWidget(label, f / 4, (f % 4) * 2);
        grid->addWidget(box, f / 4, (f % 4) * 2 + 1);
        connect(box, &QComboBox::currentIndexChanged, this, &ImportWindow::recheck);
    }
    layout->addWidget(mapping);

    auto* options = new QHBoxLayout;
    chkHeader = new QCheckBox(hebrewParagraph(QStringLiteral("השורה הראשונה היא כותרת")), this);
    chkHeader->setObjectName(QStringLiteral("chkHeader"));
    chkHeader->setChecked(guests::AnyColumn(guessed));
    optSkip = new QRadioButton(hebrewParagraph(QStringLiteral("דלג על הזמנות שכבר קיימות ברשימה")), this);
    optSkip->setObjectName(QStringLiteral("optSkip"));
    optUpdate = new QRadioButton(hebrewParagraph(QStringLiteral("עדכן הזמנות שכבר קיימות ברשימה")), this);
    optUpdate->setObjectName(QStringLiteral("optUpdate"));
    auto* group = new QButtonGroup(this);
    group->addButton(optSkip);
    group->addButton(optUpdate);
    optSkip->setChecked(true);
    for (QWidget* w : std::initializer_list<QWidget*>{chkHeader, optSkip, optUpdate})
        options->addWidget(w);
    options->addStretch(1);
    layout->addLayout(options);
    connect(chkHeader, &QCheckBox::toggled, this, &ImportWindow::recheck);
    connect(optSkip, &QRadioButton::toggled, this, &ImportWindow::recheck);

    this->grid = new QTableView(this);
    this->grid->setObjectName(QStringLiteral("grdPreview"));
    this->grid->setAccessibleName(QStringLiteral("שורות הקובץ"));
    m_model = new ImportPreviewModel(m_table, this);
    this->grid->setModel(m_model);
    this->grid->setWordWrap(false);
    this->grid->horizontalHeader()->setStretchLastSection(true);
    this->grid->verticalHeader()->setDefaultSectionSize(this->grid->fontMetrics().height() + 6);
    layout->addWidget(this->grid, 1);

    lblSummary = new QLabel(this);
    lblSummary->setObjectName(QStringLiteral("lblSummary"));
    layout->addWidget(lblSummary);

    auto* buttons = new QHBoxLayout;
    cmdImport = new QPushButton(hebrewParagraph(QStringLiteral("יבא")), this);
    cmdImport->setObjectName(QStringLiteral("cmdImport"));
    cmdCancel = new QPushButton(hebrewParagraph(QStringLiteral("בטל")), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    buttons->addWidget(cmdImport);
    buttons->addWidget(cmdCancel);
    buttons->addStretch(1);
    layout->addLayout(buttons);
    connect(cmdImport, &QPushButton::clicked, this, [this] {
        if (importRows())
            accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);

    resize(980, 560);
    recheck();
    this->grid->resizeColumnsToContents();
}

ImportWindow::~ImportWindow() = default;

guests::ColumnMap ImportWindow::columnMap() const
{
    guests::ColumnMap map;
    for (size_t f = 0; f < map.size(); ++f)
        map[f] = m_columns[f]->currentData().toInt();
    return map;
}

void ImportWindow::recheck()
{
    if (!lblSummary) // still being built
        return;
    const bool header = chkHeader->isChecked();
    m_model->setVerdicts(nullptr, header);
    m_rows = m_import.check(m_table, columnMap(), header,
                            optUpdate->isChecked() ? guests::Duplicates::Update : guests::Duplicates::Skip);
    m_counts = guests::Count(m_rows);
    m_model->setVerdicts(&m_rows, header);
    setHebrewText(lblSummary, QStringLiteral("ייווספו: %1; יעודכנו: %2; ידולגו: %3; נדחו: %4")
                                  .arg(m_counts.add)
                                  .arg(m_counts.update)
                                  .arg(m_counts.skip)
                                  .arg(m_counts.refused));
    cmdImport->setEnabled(m_counts.add + m_counts.update > 0);
    this->grid->resizeColumnToContents(0); // another mapping brings other, maybe longer, reasons
}

bool ImportWindow::importRows()
{
    try {
        m_counts = guests::ImportGuests(m_state, m_table, columnMap(), chkHeader->isChecked(),
                                        optUpdate->isChecked() ? guests::Duplicates::Update : guests::Duplicates::Skip);
        return true;
    } catch (const Failure& failure) {
        m_prompts.message(QStringLiteral("ארעה שגיאה ביבוא הרשימה; אף הזמנה לא נשמרה.") + m_state.CrLf
                          + failure.text());
        return false;
    }
}

void ImportGuestList(WeddingState& state, Prompts& prompts, const std::function<void()>& refresh, QWidget* parent)
{
    FileRequest request;
    request.initialDir = state.AppPath;
    request.filter = QStringLiteral("גיליון או טקסט (*.csv;*.txt;*.tsv)|*.csv;*.txt;*.tsv|כל הקבצים (*.*)|*.*");
    const PromptResult<QString> source = prompts.openFile(request);
    if (!source)
        return;
    store::CsvParse parsed = store::ReadCsvFile(*source);
    if (!parsed.table) {
        prompts.message(parsed.error);
        return;
    }
    std::unique_ptr<ImportWindow> window;
    try {
        window = std::make_unique<ImportWindow>(state, prompts, std::move(*parsed.table), parent);
    } catch (const Failure& failure) {
        prompts.warning(failure.text());
        return;
    }
    if (window->exec() != QDialog::Accepted)
        return;
    const guests::ImportCounts done = window->counts();
    window.reset();
    refresh();
    prompts.information(QStringLiteral("היבוא הסתיים. הזמנות שנוספו: %1; הזמנות שעודכנו: %2.").arg(done.add).arg(done.update));
}

} // namespace velmora::ui
