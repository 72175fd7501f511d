#include "app/ui/MainWindow.h"

#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/TextNumbers.h"
#include "app/Twips.h"
#include "app/Wedding.h"
#include "app/WeddingState.h"
#include "app/WindowPlacement.h"
#include "app/ui/HebrewText.h"
#include "app/ui/TypedKeys.h"
#include "budget/BudgetCsv.h"
#include "desktop/ui/AboutWindow.h"
#include "desktop/ui/HelpWindow.h"
#include "desktop/ui/WheelHook.h"
#include "guests/GuestCsv.h"
#include "guests/Removal.h"
#include "guests/ui/ImportWindow.h"
#include "guests/ui/OptionsWindow.h"
#include "printing/GuestReport.h"
#include "printing/PrintDesign.h"
#include "printing/ui/GuestReportPreview.h"
#include "printing/ui/LabelPreviews.h"
#include "printing/ui/PrintDesignWindow.h"
#include "seating/TableIcons.h"
#include "seating/ui/AutoSeatWindow.h"
#include "seating/ui/TableMapWindow.h"
#include "store/ExportImport.h"
#include "store/Schema.h"
#include "telephony/ui/DialerWindow.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QMouseEvent>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QStyle>
#include <QTableView>
#include <QToolBar>
#include <QTimer>

namespace velmora::ui {

namespace {

constexpr int DesignedWidth = 11790; // client area, twips
constexpr int DesignedHeight = 6255;
constexpr int ToolbarHeight = 810;
constexpr int StatusHeight = 255;

struct MenuEntry {
    const char* name;
    const char* caption; // nullptr: a separator
};

struct MenuDef {
    const char* name;
    const char* caption;
    std::vector<MenuEntry> entries;
};

const std::vector<MenuDef>& menuBarDefinition()
{
    static const std::vector<MenuDef> menus = {
        {"mnuInv", "הזמנה",
         {{"mnuAdd", "הוסף הזמנה חדשה לרשימה"}, {"mnuUpdate", "עדכן פרטי הזמנה ברשימה"}, {"mnu6", nullptr},
          {"mnuRemove", "הסר הזמנה מרשימה"}}},
        {"mnuView", "תצוגה",
         {{"mnuIgnoreCnfNotOk", "הסתר מוזמנים שלא מגיעים וודאית"}, {"mnuIgnoreNotCnf", "הסתר מוזמנים שלא אישרו עדיין"},
          {"mnu1", nullptr}, {"mnuShowTablesMap", "הצג מפת שולחנות"}}},
        {"mnuTools", "כלים",
         {{"mnuDial", "חייג מספר..."}, {"mnu3", nullptr}, {"mnuImportDB", "יבוא מבנה נתונים..."},
          {"mnuExportDB", "יצוא מבנה נתונים..."}, {"mnu2", nullptr}, {"mnuPrintEnvLables", "הדפסת מדבקות..."},
          {"mnuPrintReport", "הדפסת רשימה..."}, {"mnuPrintSittingNotes", "הדפסת פתקי הושבה..."}, {"mnu4", nullptr},
          {"mnuSetting", "הגדרות..."}}},
        {"mnuHelp", "עזרה", {{"mnuProgramHelp", "עזרה..."}, {"mnu5", nullptr}, {"mnuAboutProgram", "על התוכנה..."}}},
    };
    return menus;
}

struct ButtonDef {
    const char* caption; // nullptr: a separator
    const char* toolTip;
    const char* icon;    // a name of the desktop's icon theme
    QStyle::StandardPixmap fallback;
};

const std::array<ButtonDef, 14>& toolbarDefinition()
{
    static const std::array<ButtonDef, 14> buttons = {{
        {"הוסף", "הוספת פרטי הזמנה חדשה למערכת", "contact-new", QStyle::SP_FileDialogNewFolder},
        {"עדכן", "עידכון פרטי הזמנה נוכחית במערכת", "document-properties", QStyle::SP_FileDialogDetailedView},
        {"הסר", "הסרת הזמנה נוכחית ממערכת", "edit-delete", QStyle::SP_TrashIcon},
        {nullptr, nullptr, nullptr, QStyle::SP_CustomBase},
        {"חייג", "חיוג אוטומטי למספר הטלפון", "call-start", QStyle::SP_DialogYesButton},
        {"תקציב", "ניהול תקציב הוצאות", "accessories-calculator", QStyle::SP_FileDialogInfoView},
        {"מדבקות", "הפקת מדבקות למעטפות", "mail-message-new", QStyle::SP_FileIcon},
        {"רשימות", "הדפסת רשימת מוזמנים", "document-print", QStyle::SP_FileDialogListView},
        {"פתקים", "הפקת פתקי הושבה", "document-print-preview", QStyle::SP_FileDialogContentsView},
        {"שולחנות", "הדפסת מפת שולחנות", nullptr, QStyle::SP_DesktopIcon},
        {nullptr, nullptr, nullptr, QStyle::SP_CustomBase},
        {"הגדרות", "הגדרות מערכת", "preferences-system", QStyle::SP_ComputerIcon},
        {"על התוכנה", "על התוכנה", "help-about", QStyle::SP_MessageBoxInformation},
        {"עזרה", "עזרה מכוונת", "help-browser", QStyle::SP_DialogHelpButton},
    }};
    return buttons;
}

QIcon buttonIcon(const ButtonDef& def, const QStyle* style)
{
    if (!def.icon)
        return QIcon(QPixmap::fromImage(seating::roundTableIcon(48))); // button 10: the map
    const QIcon themed = QIcon::fromTheme(QString::fromLatin1(def.icon));
    return themed.isNull() ? style->standardIcon(def.fallback) : themed;
}

// A control's designed place, kept as "left top width height " in twips.
void setDesigned(QWidget* control, int left, int top, int width, int height)
{
    control->setProperty("tag", QStringLiteral("%1 %2 %3 %4 ").arg(left).arg(top).arg(width).arg(height));
    control->setGeometry(twipsRect(left, top - ToolbarHeight, width, height));
}

} // namespace

MainWindow::MainWindow(WeddingState& state, Prompts& prompts, QWidget* parent)
    : QMainWindow(parent), m_state(state), m_prompts(prompts)
{
    setObjectName(QStringLiteral("frmVelmora"));
    setWindowTitle(QStringLiteral("רשימת מוזמנים"));
    setAccessibleName(windowTitle());
    // The design's widths were made for a small sans serif; Arial is metric-compatible here.
    setFont(QFont(QStringLiteral("Arial"), 8));
    buildMenus();
    buildToolbar();
    buildControls();
    buildStatusBar();
    resize(twipsToPixels(DesignedWidth), twipsToPixels(DesignedHeight) + menuBar()->sizeHint().height());
    wireCommands();

    m_tmrDelay = new QTimer(this);
    m_tmrDelay->setObjectName(QStringLiteral("tmrDelay"));
    m_tmrDelay->setInterval(300);
    connect(m_tmrDelay, &QTimer::timeout, this, &MainWindow::onDelayTick);
}

void MainWindow::wireCommands()
{
    auto on = [this](const char* name, auto&& handler) {
        connect(action(QString::fromLatin1(name)), &QAction::triggered, this, handler);
    };
    on("mnuSetting", [this] { openOptions(); });
    on("mnuAdd", [this] { AddNewInv(); });
    on("mnuUpdate", [this] { UpdateInv(); });
    on("popAdd", [this] { AddNewInv(); });
    on("popUpdate", [this] { UpdateInv(); });
    connect(m_grid, &QTableView::clicked, this, [this](const QModelIndex& index) { m_lastColumn = index.column(); });
    connect(m_grid, &QTableView::doubleClicked, this, [this](const QModelIndex&) { UpdateInv(); });
    connect(m_grid->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) { m_lastColumn = column; });
    connect(m_grid->horizontalHeader(), &QHeaderView::sectionDoubleClicked, this, [this](int column) {
        m_lastColumn = column; // the header clicked is the column that counts
        sortByColumn(m_lastColumn);
    });
    on("mnuShowTablesMap", [this] {
        // The tick is the map's state: ShowHideTablesMap sets it.
        QAction* tick = action(QStringLiteral("mnuShowTablesMap"));
        tick->setChecked(!tick->isChecked());
        ShowHideTablesMap();
    });
    on("mnuIgnoreCnfNotOk", [this] { toggleFilter(true); });
    on("popIgnoreCnfNotOk", [this] { toggleFilter(true); });
    on("mnuIgnoreNotCnf", [this] { toggleFilter(false); });
    on("popIgnoreNotCnf", [this] { toggleFilter(false); });
    on("mnuRemove", [this] { RemoveRecord(); });
    on("popDelete", [this] { RemoveRecord(); });
    on("popOptions", [this] { openOptions(); });
    on("mnuDial", [this] { DialNum(); });
    on("mnuPrintReport", [this] { PrintReport(m_state, m_prompts, m_model, m_lblList->text(), this); });
    on("mnuPrintEnvLables", [this] { openPrintDesign(printing::LabelsPage); });
    on("mnuPrintSittingNotes", [this] { openPrintDesign(printing::NotesPage); });
    on("popShowTablesMap", [this] {
        QAction* tick = action(QStringLiteral("popShowTablesMap"));
        tick->setChecked(!tick->isChecked());
        ShowHideTablesMap();
    });
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] { followCurrentRow(); });
    m_grid->viewport()->installEventFilter(this);
    m_cmbUserGroups->installEventFilter(this);
    connect(m_toolbar, &QToolBar::actionTriggered, this, &MainWindow::onToolbar);
    connect(m_cmbUserGroups, &QComboBox::activated, this, [this](int index) {
        const QString group = m_cmbUserGroups->itemText(index);
        if (group == m_state.CurGroup)
            return;
        m_state.CurGroup = group;
        refreshList();
    });
    for (QLabel* panel : m_panels)
        panel->installEventFilter(this);

    on("mnuExportDB", [this] { store::ExportWedding(m_state, m_prompts); });
    on("mnuImportDB", [this] {
        store::ImportWedding(m_state, m_prompts, [this] {
            InitList(m_state.CurGroup, m_state.ListOrder);
            if (m_endRequested)
                return false;
            // An open ledger still holds the file the import replaced: it moves to the new one.
            if (m_budget)
                m_budget->reopen();
            if (m_tableMap) {
                m_tableMap->InitTableSetting();
                m_tableMap->ChangeTableViewMode(1);
            }
            return true;
        });
    });
    // Guest lists and the budget to and from spreadsheets, beside the wedding's own export.
    auto* tools = findChild<QMenu*>(QStringLiteral("mnuTools"));
    for (const auto& [name, caption] : {std::pair{"mnuExportListCsv", "יצוא רשימת המוזמנים לגיליון (CSV)..."},
                                        std::pair{"mnuImportListCsv", "יבוא רשימת מוזמנים מגיליון (CSV)..."},
                                        std::pair{"mnuExportBudgetCsv", "יצוא התקציב לגיליון (CSV)..."}}) {
        auto* act = new QAction(hebrewParagraph(QString::fromUtf8(caption)), tools);
        act->setObjectName(QString::fromLatin1(name));
        tools->insertAction(action(QStringLiteral("mnu2")), act);
    }
    on("mnuExportListCsv", [this] { guests::ExportGuestList(m_state, m_prompts, m_model); });
    on("mnuImportListCsv", [this] { ImportGuestList(m_state, m_prompts, [this] { refreshList(); }, this); });
    on("mnuExportBudgetCsv", [this] { budget::ExportBudget(m_state, m_prompts); });
    auto showHelp = [this] { desktop::ui::ShowHelp(*this, m_helpFile); };
    on("mnuProgramHelp", showHelp);
    on("popHelp", showHelp);
    connect(new QShortcut(QKeySequence::HelpContents, this, nullptr, nullptr, Qt::ApplicationShortcut),
            &QShortcut::activated, this, showHelp);
    on("mnuAboutProgram", [this] {
        desktop::ui::AboutWindow about(m_prompts, this);
        about.exec();
    });
}

void MainWindow::onToolbar(QAction* button)
{
    // Button 10 follows the menu's tick whatever was pressed, then the press is dispatched.
    m_buttons[9]->setChecked(action(QStringLiteral("mnuShowTablesMap"))->isChecked());
    m_toolbar->update();
    const auto index = std::find(m_buttons.begin(), m_buttons.end(), button) - m_buttons.begin() + 1;
    switch (index) {
    case 1:
        AddNewInv();
        break;
    case 2:
        UpdateInv();
        break;
    case 3:
        RemoveRecord();
        break;
    case 5:
        DialNum();
        break;
    case 6:
        openBudget();
        break;
    case 7:
        openPrintDesign(printing::LabelsPage);
        break;
    case 8:
        PrintReport(m_state, m_prompts, m_model, m_lblList->text(), this);
        break;
    case 9:
        openPrintDesign(printing::NotesPage);
        break;
    case 10:
        ShowHideTablesMap();
        break;
    case 12:
        openOptions();
        break;
    case 13:
        action(QStringLiteral("mnuAboutProgram"))->trigger();
        break;
    case 14:
        action(QStringLiteral("mnuProgramHelp"))->trigger();
        break;
    default:
        break; // commands of parts still to come
    }
}

void MainWindow::ShowHideTablesMap()
{
    if (!m_tableMap)
        return;
    QAction* tick = action(QStringLiteral("mnuShowTablesMap"));
    if (!tick->isChecked()) {
        m_tableMap->show();
        tick->setChecked(true);
        action(QStringLiteral("popShowTablesMap"))->setChecked(true);
        m_buttons[9]->setChecked(true);
    } else {
        m_tableMap->close(); // asks to save the layout, then hides
        mapHidden();
    }
    m_toolbar->update();
}

void MainWindow::openPrintDesign(qint32 page)
{
    m_state.PrintPage = page;
    printing::ui::PrintDesignWindow::open(m_state, m_prompts, {[this] { PrintLabels(); }, [this] { PrintSittingNote(); }},
                                          this);
}

void MainWindow::PrintLabels()
{
    ui::PrintLabels(m_state, m_prompts, m_model, this);
}

void MainWindow::PrintSittingNote()
{
    ui::PrintSittingNote(m_state, m_prompts, m_model, this);
}

void MainWindow::openBudget()
{
    // One ledger at a time: a second press brings it forward with what is typed in it.
    if (!m_budget) {
        m_budget = new BudgetWindow(m_state, m_prompts, this);
        m_budget->show();
    }
    m_budget->raise();
    m_budget->activateWindow();
}

InvitationDialog& MainWindow::invitation()
{
    if (!m_invDialog)
        m_invDialog = new InvitationDialog(m_state, m_prompts, *this, this);
    return *m_invDialog;
}

void MainWindow::AddNewInv()
{
    // The dialog is one window: while it is up, a new request only brings it forward.
    if (m_invDialog && m_invDialog->isVisible()) {
        m_invDialog->raise();
        m_invDialog->activateWindow();
        return;
    }
    m_state.InvMode = 1;
    invitation().load({});
    m_invDialog->show();
}

std::pair<int, int> MainWindow::selectionEnds() const
{
    const int current = std::max(0, m_grid->currentIndex().row());
    int end = current;
    const QModelIndexList rows = m_grid->selectionModel()->selectedRows();
    for (const QModelIndex& row : rows) {
        if (std::abs(row.row() - current) > std::abs(end - current))
            end = row.row();
    }
    return {current + 1, end + 1};
}

void MainWindow::makeCurrentRow(int row)
{
    // Through the selection model: the view's own selectRow() misses the columns when
    // the grid is laid out right to left and narrower than its window.
    // The empty row of an empty list is current but not highlighted.
    m_grid->selectionModel()->setCurrentIndex(m_model.index(row, 2),
                                              m_model.hasInvitations()
                                                  ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                                                  : QItemSelectionModel::Clear);
}

void MainWindow::toggleFilter(bool notComing)
{
    // The two entries of a pair are one setting.
    const QString menu = notComing ? QStringLiteral("mnuIgnoreCnfNotOk") : QStringLiteral("mnuIgnoreNotCnf");
    const QString popup = notComing ? QStringLiteral("popIgnoreCnfNotOk") : QStringLiteral("popIgnoreNotCnf");
    bool& filter = notComing ? m_view.hideNotComing : m_view.hideNotConfirmed;
    filter = !filter;
    action(menu)->setChecked(filter);
    action(popup)->setChecked(filter);
    refreshList();
}

void MainWindow::followCurrentRow()
{
    const int row = m_grid->currentIndex().row();
    if (row < 0)
        return;
    m_buttons[4]->setEnabled(m_model.hasInvitations() && !Trim(m_model.cellText(row + 1, 2)).isEmpty());
}

void MainWindow::RemoveRecord()
{
    const auto [current, end] = selectionEnds();
    if (current != end) {
        m_prompts.message(QStringLiteral("לא ניתן למחוק קבוצה של מוזמנים, בחר הזמנה אחת בלבד למחיקה."));
        return;
    }
    m_state.CurFamilyName = m_model.cellText(current, 0);
    m_state.CurFirstName = m_model.cellText(current, 1);
    if (m_prompts.question(QStringLiteral("האם למחוק את ההזמנה ל") + m_state.CurFamilyName + u' ' + m_state.CurFirstName
                           + u'?')
        != PromptAnswer::Yes)
        return;
    rememberGridPosition();
    if (!guests::RemoveInvitation(m_state, m_prompts, m_state.CurFamilyName, m_state.CurFirstName))
        return;
    refreshList();
    restoreGridPosition();
}

void MainWindow::UpdateInv()
{
    if (m_invDialog && m_invDialog->isVisible()) {
        m_invDialog->raise();
        m_invDialog->activateWindow();
        return;
    }
    // The selection runs from the current row to its other end, up or down.
    const auto [current, end] = selectionEnds();
    m_state.InvRowFrom = std::min(current, end);
    m_state.InvRowTo = std::max(current, end);
    m_state.InvMulti = m_state.InvRowFrom != m_state.InvRowTo;
    QString question;
    if (!m_state.InvMulti) {
        m_state.CurFamilyName = m_model.cellText(m_state.InvRowFrom, 0);
        m_state.CurFirstName = m_model.cellText(m_state.InvRowFrom, 1);
        question = QStringLiteral("האם לעדכן את ההזמנה ל") + m_state.CurFamilyName + u' ' + m_state.CurFirstName + u'?';
    } else {
        question = QStringLiteral("האם לעדכן את קבוצת המוזמנים?");
    }
    if (m_prompts.question(question) != PromptAnswer::Yes)
        return;
    std::vector<std::pair<QString, QString>> pairs;
    for (int row = m_state.InvRowFrom; row <= m_state.InvRowTo; ++row)
        pairs.emplace_back(m_model.cellText(row, 0), m_model.cellText(row, 1));
    m_state.InvMode = 2;
    invitation().load(pairs);
    m_invDialog->show();
}

void MainWindow::rememberGridPosition()
{
    m_state.SavedTopRow = std::max(0, m_grid->rowAt(0)) + 1;
    m_state.SavedRow = std::max(0, m_grid->currentIndex().row()) + 1;
}

void MainWindow::restoreGridPosition()
{
    m_grid->setFocus();
    const int rows = m_model.rowCount();
    if (m_state.SavedTopRow >= 1 && m_state.SavedTopRow <= rows)
        m_grid->scrollTo(m_model.index(m_state.SavedTopRow - 1, 0), QAbstractItemView::PositionAtTop);
    if (m_state.SavedRow >= 1 && m_state.SavedRow <= rows)
        makeCurrentRow(m_state.SavedRow - 1);
}

quint8 MainWindow::seatedCount(int table) const
{
    return m_tableMap ? m_tableMap->SeatedCount(table) : 0;
}

void MainWindow::sortByColumn(int column)
{
    m_state.ListOrder = guests::listColumns()[size_t(std::clamp(column, 0, guests::ColumnCount - 1))].field;
    m_view.sortDirection = m_view.sortDirection == u"ASC" ? QStringLiteral("DESC") : QStringLiteral("ASC");
    InitList(m_state.CurGroup, m_state.ListOrder); // the map's counts don't depend on the order
}

void MainWindow::mapHidden()
{
    action(QStringLiteral("mnuShowTablesMap"))->setChecked(false);
    action(QStringLiteral("popShowTablesMap"))->setChecked(false);
    m_buttons[9]->setChecked(false);
}

void MainWindow::refreshList()
{
    InitList(m_state.CurGroup, m_state.ListOrder);
    if (m_tableMap && !m_endRequested)
        m_tableMap->InitTableView(m_state.TableViewMode);
}

void MainWindow::openOptions()
{
    OptionsWindow options(
        m_state, m_prompts, [this](int table) { return seatedCount(table); },
        [this] {
            // The group box and the day count follow, and the map takes the new number of tables.
            InitEvent();
            if (m_tableMap) {
                m_tableMap->InitTableSetting();
                m_tableMap->InitTableView(m_state.TableViewMode);
            }
        },
        this);
    options.exec();
}

void MainWindow::onDelayTick()
{
    if (!m_state.OptionsPending)
        return;
    m_state.OptionsPending = false;
    openOptions();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    // The group is chosen from the list only: typed keys are dropped, silently.
    if (watched == m_cmbUserGroups && event->type() == QEvent::KeyPress && TypesCharacter(static_cast<QKeyEvent*>(event)))
        return true;
    // The right button leaves the selection as it was and opens the pop-up menu.
    if (watched == m_grid->viewport()) {
        const auto type = event->type();
        if ((type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick)
            && static_cast<QMouseEvent*>(event)->button() == Qt::RightButton)
            return true;
        if (type == QEvent::MouseButtonRelease && static_cast<QMouseEvent*>(event)->button() == Qt::RightButton) {
            m_popup->popup(static_cast<QMouseEvent*>(event)->globalPosition().toPoint());
            return true;
        }
        if (type == QEvent::ContextMenu)
            return true;
    }
    if (event->type() == QEvent::MouseButtonDblClick) {
        auto* panel = qobject_cast<QLabel*>(watched);
        if (panel && std::find(m_panels.begin(), m_panels.end(), panel) != m_panels.end() && panel->text().isEmpty()) {
            openOptions();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::buildMenus()
{
    for (const MenuDef& def : menuBarDefinition()) {
        QMenu* menu = menuBar()->addMenu(hebrewParagraph(QString::fromUtf8(def.caption)));
        menu->setObjectName(QString::fromLatin1(def.name));
        for (const MenuEntry& entry : def.entries) {
            QAction* act =
                entry.caption ? menu->addAction(hebrewParagraph(QString::fromUtf8(entry.caption))) : menu->addSeparator();
            act->setObjectName(QString::fromLatin1(entry.name));
        }
    }
    for (const char* name : {"mnuIgnoreCnfNotOk", "mnuIgnoreNotCnf", "mnuShowTablesMap"})
        action(QString::fromLatin1(name))->setCheckable(true);

    // The list's pop-up twins that the list's state enables and disables.
    for (const auto& [name, caption] : {std::pair{"popAdd", "הוסף הזמנה חדשה לרשימה"},
                                        std::pair{"popUpdate", "עדכן פרטי הזמנה ברשימה"},
                                        std::pair{"popDelete", "הסר הזמנה מרשימה"},
                                        std::pair{"popShowTablesMap", "הצג מפת שולחנות..."}}) {
        auto* act = new QAction(hebrewParagraph(QString::fromUtf8(caption)), this);
        act->setObjectName(QString::fromLatin1(name));
    }
    action(QStringLiteral("popShowTablesMap"))->setCheckable(true);
    for (const auto& [name, caption] : {std::pair{"popIgnoreCnfNotOk", "הסתר מוזמנים שלא מגיעים וודאית"},
                                        std::pair{"popIgnoreNotCnf", "הסתר מוזמנים שלא אישרו עדיין"},
                                        std::pair{"popOptions", "...הגדרות"}, std::pair{"popHelp", "...עזרה"}}) {
        auto* act = new QAction(hebrewParagraph(QString::fromUtf8(caption)), this);
        act->setObjectName(QString::fromLatin1(name));
    }
    action(QStringLiteral("popIgnoreCnfNotOk"))->setCheckable(true);
    action(QStringLiteral("popIgnoreNotCnf"))->setCheckable(true);

    m_popup = new QMenu(this);
    m_popup->setObjectName(QStringLiteral("mnuPopMenu"));
    for (const char* name : {"popIgnoreCnfNotOk", "popIgnoreNotCnf", "-", "popAdd", "popUpdate", "-", "popDelete", "-",
                             "popShowTablesMap", "-", "popOptions", "popHelp"}) {
        if (*name == '-')
            m_popup->addSeparator();
        else
            m_popup->addAction(action(QString::fromLatin1(name)));
    }
}

void MainWindow::buildToolbar()
{
    m_toolbar = addToolBar(QStringLiteral("Toolbar1"));
    m_toolbar->setObjectName(QStringLiteral("Toolbar1"));
    m_toolbar->setAccessibleName(QStringLiteral("סרגל כלים"));
    m_toolbar->setMovable(false);
    m_toolbar->setFloatable(false);
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    m_toolbar->setFixedHeight(twipsToPixels(ToolbarHeight));
    m_toolbar->setIconSize(QSize(24, 24));
    m_toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
    const auto& buttons = toolbarDefinition();
    for (size_t i = 0; i < buttons.size(); ++i) {
        const ButtonDef& def = buttons[i];
        QAction* act = def.caption ? m_toolbar->addAction(buttonIcon(def, style()), QString::fromUtf8(def.caption))
                                   : m_toolbar->addSeparator();
        act->setObjectName(QStringLiteral("Toolbar1_%1").arg(i + 1));
        if (def.toolTip)
            act->setToolTip(QString::fromUtf8(def.toolTip));
        m_buttons[i] = act;
    }
    m_buttons[9]->setCheckable(true);
}

void MainWindow::buildControls()
{
    m_client = new QWidget(this);
    m_client->setObjectName(QStringLiteral("client"));
    m_client->setAutoFillBackground(true);
    QPalette palette = m_client->palette();
    palette.setColor(QPalette::Window, QColor(128, 128, 128)); // an inactive title bar's grey
    palette.setColor(QPalette::WindowText, Qt::white);
    m_client->setPalette(palette);
    setCentralWidget(m_client);

    m_lblWeddingCount = new QLabel(m_client);
    m_lblWeddingCount->setObjectName(QStringLiteral("lblWeddingCount"));
    QFont countFont(QStringLiteral("Arial"));
    countFont.setPointSizeF(9.75);
    countFont.setBold(true);
    m_lblWeddingCount->setFont(countFont);
    m_lblWeddingCount->setStyleSheet(QStringLiteral("color: rgb(255, 224, 192);"));
    setDesigned(m_lblWeddingCount, 240, 840, 3615, 255);

    m_lblSelUserGroups = new QLabel(m_client);
    m_lblSelUserGroups->setObjectName(QStringLiteral("LblSelUserGroups"));
    setHebrewText(m_lblSelUserGroups, QStringLiteral(":קבוצת מוזמנים להצגה"));
    setDesigned(m_lblSelUserGroups, 9720, 840, 1935, 255);

    m_lblList = new QLabel(m_client);
    m_lblList->setObjectName(QStringLiteral("lblList"));
    QFont listFont(QStringLiteral("MS Sans Serif"), 12, QFont::Bold);
    m_lblList->setFont(listFont);
    m_lblList->setAlignment(Qt::AlignCenter);
    setDesigned(m_lblList, 240, 960, 11415, 375);

    m_cmbUserGroups = new QComboBox(m_client);
    m_cmbUserGroups->setObjectName(QStringLiteral("cmbUserGroups"));
    m_cmbUserGroups->setToolTip(QStringLiteral("סיווג האורח על-פי קבוצת שייכות"));
    m_lblSelUserGroups->setBuddy(m_cmbUserGroups); // what a screen reader names the box by
    setDesigned(m_cmbUserGroups, 9480, 1080, 2175, 315);
    m_lblList->lower();

    m_grid = new QTableView(m_client);
    m_grid->setObjectName(QStringLiteral("MSFlexGrid1"));
    m_grid->setAccessibleName(QStringLiteral("רשימת המוזמנים"));
    m_grid->setModel(&m_model);
    m_grid->verticalHeader()->hide();
    m_grid->verticalHeader()->setDefaultSectionSize(twipsToPixels(255));
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::ContiguousSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setWordWrap(false);
    m_grid->horizontalHeader()->setHighlightSections(false);
    m_grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    setDesigned(m_grid, 120, 1440, 11535, 4455);
}

void MainWindow::buildStatusBar()
{
    QStatusBar* bar = statusBar();
    bar->setObjectName(QStringLiteral("stb"));
    bar->setSizeGripEnabled(false);
    bar->setAccessibleName(QStringLiteral("שורת מצב"));
    auto* panels = new QWidget(bar);
    auto* layout = new QHBoxLayout(panels);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    static const std::array<int, 7> widths = {800, 1400, 2200, 1900, 1900, 1600, 400};
    static const std::array<const char*, 7> titles = {"תאריך", "מתנות", "לא מגיעים", "ממתינים לאישור", "מגיעים",
                                                      "מספר ההזמנות", "הגדרות"};
    for (size_t i = 0; i < m_panels.size(); ++i) {
        auto* label = new QLabel(panels);
        label->setObjectName(QStringLiteral("stbPanel%1").arg(i + 1));
        // A screen reader hears the panel's text, title and value alike; a name would hide it.
        label->setAccessibleDescription(QString::fromUtf8(titles[i]));
        label->setFrameShape(QFrame::StyledPanel);
        label->setFrameShadow(QFrame::Sunken);
        label->setFixedWidth(twipsToPixels(widths[i]));
        label->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
        layout->addWidget(label);
        m_panels[i] = label;
    }
    m_panels[6]->setPixmap(style()->standardIcon(QStyle::SP_ComputerIcon).pixmap(12, 12));
    m_panels[6]->setAccessibleName(m_panels[6]->accessibleDescription()); // a picture without text
    layout->addStretch(1);
    bar->addWidget(panels, 1);
    bar->setFixedHeight(twipsToPixels(StatusHeight) + 6);
}

QAction* MainWindow::action(const QString& name) const
{
    return findChild<QAction*>(name);
}

bool MainWindow::load(TableMapWindow& tableMap)
{
    m_tableMap = &tableMap;
    connect(m_tableMap, &TableMapWindow::hiddenByClose, this, &MainWindow::mapHidden);
    m_tableMap->setListReload([this] {
        refreshList();
        restoreGridPosition();
    });
    // Automatic seating, from the Tools menu and from the map's pop-up.
    m_autoSeat = new AutoSeatWindow(m_state, m_prompts, [this] { refreshList(); }, this);
    AddAutoSeatEntries(*m_autoSeat, findChild<QMenu*>(QStringLiteral("mnuTools")), action(QStringLiteral("mnu4")),
                       QStringLiteral("mnu"));
    AddAutoSeatEntries(*m_autoSeat, m_tableMap->popupMenu(), nullptr, QStringLiteral("pop"));
    m_state.CrLf = QStringLiteral("\r\n");
    m_state.OptionsPending = false;
    // The size as built is the size the controls' places were designed for.
    m_designedSize = size();

    // Placement from the per-user store, brought onto the screens there are now. What was
    // never stored stays as built: on a first start the window system chooses the place.
    auto storedPixels = [&](const keys::Key& key) -> std::optional<int> {
        if (const auto twips = values::toNumber(m_store.read(key)))
            return twipsToPixels(*twips);
        return std::nullopt;
    };
    m_storedPlacement = {storedPixels(keys::MainLeft), storedPixels(keys::MainTop), storedPixels(keys::MainWidth),
                         storedPixels(keys::MainHeight)};
    placeOnScreens({});
    const QString savedState = m_store.read(keys::Window, QStringLiteral("0"));
    if (savedState == u"2")
        setWindowState(Qt::WindowMaximized);
    for (int column = 0; column < guests::ColumnCount; ++column)
        m_savedWidths[size_t(column)] = m_store.read(keys::ColWidth, column);

    m_state.AllGuests = QStringLiteral("כל האורחים");
    ReadWeddingOptions(m_state, m_store);
    m_state.DialerFree = true;
    m_state.DialPending = false;
    if (!FileExists(m_state.databaseFile()) && !CreateNewDatabase())
        return false;
    m_helpFile = m_state.AppPath + QStringLiteral("velmora.chm");
    quint8 mode = 1;
    ChangeMode(mode);
    m_panels[0]->setText(QDate::currentDate().toString(QStringLiteral("dd/MM/yy")));
    InitEvent();
    m_view.sortDirection.clear();
    m_state.ListOrder.clear();
    m_state.CurGroup = m_state.AllGuests;
    InitList(m_state.CurGroup, m_state.ListOrder);
    if (m_endRequested)
        return false;
    m_tableMap->InitTableSetting();
    m_tableMap->ChangeTableViewMode(1);
    desktop::ui::HookMouseWheel(*m_grid);
    m_loaded = true;
    m_tmrDelay->start();
    return true;
}

bool MainWindow::CreateNewDatabase()
{
    if (store::CreateNewDatabase(m_state, m_prompts))
        return true;
    endProgram();
    return false;
}

void MainWindow::ChangeMode(quint8& mode)
{
    m_state.InvMode = mode;
    for (const char* name : {"mnuUpdate", "mnuAdd", "mnuRemove", "popUpdate", "popAdd", "popDelete"})
        action(QString::fromLatin1(name))->setEnabled(true);
    m_buttons[2]->setEnabled(true);
}

void MainWindow::InitEvent()
{
    m_cmbUserGroups->clear();
    m_cmbUserGroups->addItems({m_state.AllGuests, m_state.CoupleName, m_state.HisFamily, m_state.HerFamily});
    m_cmbUserGroups->setCurrentIndex(0);
    for (qsizetype position = 3; position < m_state.UserGroups.size(); ++position)
        m_cmbUserGroups->addItem(m_state.UserGroups[position]);
    m_lblWeddingCount->setText(QStringLiteral("עוד ") + DaysToWedding(m_state) + QStringLiteral(" ימים לחתונה..."));
}

int MainWindow::columnWidthTwips(int column) const
{
    const QString& saved = m_savedWidths[size_t(column)];
    if (saved != keys::NoValue) {
        if (const auto width = values::toNumber(saved))
            return *width;
    }
    return guests::listColumns()[size_t(column)].defaultWidth;
}

void MainWindow::InitList(const QString& group, const QString& order)
{
    const guests::ListOutcome outcome = guests::InitList(m_state, m_prompts, m_model, group, order, m_view);
    if (outcome.endProgram) {
        endProgram();
        return;
    }
    m_lblList->setText(outcome.caption);
    for (int column = guests::ColumnCount - 1; column >= 0; --column)
        m_grid->setColumnWidth(column, twipsToPixels(columnWidthTwips(column)));
    for (const char* name : {"mnuUpdate", "mnuRemove", "mnuPrintEnvLables", "mnuPrintReport", "mnuPrintSittingNotes",
                             "popUpdate", "popDelete"})
        action(QString::fromLatin1(name))->setEnabled(outcome.hasRows);
    for (int button : {2, 3, 7, 8, 9})
        m_buttons[size_t(button - 1)]->setEnabled(outcome.hasRows);
    m_buttons[4]->setEnabled(outcome.hasRows && outcome.dialEnabled);
    for (int number = 2; number <= 6; ++number)
        m_panels[size_t(number - 1)]->setText(outcome.panels[size_t(number - 1)]);
    makeCurrentRow(0);
    m_grid->scrollToTop();
}

void MainWindow::ResizeForm()
{
    if (isMinimized() || !m_designedSize.isValid())
        return;
    const int dw = pixelsToTwips(width() - m_designedSize.width());
    const int dh = pixelsToTwips(height() - m_designedSize.height());
    // A control's designed place from its tag; a part that is missing counts 0, a part
    // that isn't a number stops the layout where it got.
    auto designed = [](QWidget* control) {
        std::array<int, 4> place{};
        const QStringList parts = control->property("tag").toString().split(u' ');
        for (size_t i = 0; i < place.size() && qsizetype(i) < parts.size(); ++i) {
            bool ok = parts[qsizetype(i)].isEmpty();
            place[i] = ok ? 0 : parts[qsizetype(i)].toInt(&ok);
            if (!ok)
                throw Failure(13, QStringLiteral("אי התאמה בסוג הנתונים."));
        }
        return place;
    };
    PendingFailure pending;
    pending.attempt([&] {
        const auto grid = designed(m_grid);
        m_grid->setGeometry(twipsRect(grid[0], grid[1] - ToolbarHeight, grid[2] + dw, grid[3] + dh));
        for (QWidget* control : {static_cast<QWidget*>(m_lblSelUserGroups), static_cast<QWidget*>(m_cmbUserGroups)}) {
            const auto place = designed(control);
            control->setGeometry(twipsRect(place[0] + dw, place[1] - ToolbarHeight, place[2], place[3]));
        }
        const auto list = designed(m_lblList);
        m_lblList->setGeometry(twipsRect(list[0], list[1] - ToolbarHeight, list[2] + dw, list[3]));
    });
    pending.report(m_prompts);
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    ResizeForm();
}

void MainWindow::endProgram()
{
    m_endRequested = true;
    close();
}

void MainWindow::placeOnScreens(const QMargins& frame)
{
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    const Placement placement = PlaceOnScreens(m_storedPlacement, m_designedSize, minimumSizeHint(), screens, frame);
    resize(placement.size);
    if (placement.position)
        move(*placement.position); // the outer corner, title bar included
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (!std::exchange(m_shownOnce, true))
        m_awaitingFrame = true;
}

void MainWindow::moveEvent(QMoveEvent* event)
{
    QMainWindow::moveEvent(event);
    // The window system's frame is known only once it has put the shown window in place:
    // the stored placement is then brought in again, so that a window that fills the screen
    // keeps both its title bar and its status bar on it.
    if (!m_awaitingFrame)
        return;
    const QRect outer = frameGeometry();
    const QRect inner = geometry();
    const QMargins frame(inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
                         outer.bottom() - inner.bottom());
    if (frame.isNull())
        return;
    m_awaitingFrame = false;
    if (windowState() == Qt::WindowNoState)
        placeOnScreens(frame);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_loaded) {
        if (isMaximized()) {
            m_store.write(keys::Window, QStringLiteral("2"));
        } else if (!isMinimized()) {
            m_store.write(keys::Window, QStringLiteral("0"));
            // Only a window the window system has shown has a real position; some
            // systems never tell it.
            if (isVisible() && !QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
                m_store.write(keys::MainLeft, QString::number(pixelsToTwips(frameGeometry().x())));
                m_store.write(keys::MainTop, QString::number(pixelsToTwips(frameGeometry().y())));
            }
            m_store.write(keys::MainWidth, QString::number(pixelsToTwips(width())));
            m_store.write(keys::MainHeight, QString::number(pixelsToTwips(height())));
        }
        for (int column = 0; column < guests::ColumnCount; ++column)
            m_store.write(keys::ColWidth, column, QString::number(pixelsToTwips(m_grid->columnWidth(column))));
    }
    desktop::ui::UnhookMouseWheel(*m_grid);
    m_tmrDelay->stop();
    printing::releaseReport(m_state, m_state.ReportRs);
    if (m_tableMap)
        m_tableMap->ProgramClosing = true;
    // Every other window goes, the last opened first.
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (auto it = windows.rbegin(); it != windows.rend(); ++it) {
        if (*it != this && (*it)->isVisible())
            (*it)->close();
    }
    if (m_tableMap)
        m_tableMap->close();
    event->accept();
    QApplication::quit();
}

void MainWindow::DialNum()
{
    const int row = m_grid->currentIndex().row();
    if (row >= 0)
        velmora::ui::DialNum(m_state, m_prompts, *this, m_model.cellText(row + 1, 2));
}

} // namespace velmora::ui
