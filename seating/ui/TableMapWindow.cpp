#include "seating/ui/TableMapWindow.h"

#include "app/IniFile.h"
#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/Settings.h"
#include "app/Twips.h"
#include "app/Wedding.h"
#include "app/WeddingState.h"
#include "app/ui/HebrewText.h"
#include "printing/ui/CanvasPrint.h"
#include "seating/TableIcons.h"
#include "seating/MapPrintout.h"
#include "seating/TableMap.h"
#include "seating/TableRenumber.h"
#include "seating/ui/TableWindow.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QHeaderView>
#include <QIcon>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QToolBar>
#include <QTreeView>

#include <cmath>

namespace velmora::ui {

namespace {

constexpr int IconSize = 32;
const QSize Cell(72, 50);

struct ButtonDef {
    const char* caption; // nullptr: a separator
    const char* toolTip;
    const char* image;   // the design's image key
};

const std::array<ButtonDef, 10>& toolbarDefinition()
{
    static const std::array<ButtonDef, 10> buttons = {{
        {"שמור", "שמור מפת שולחנות", "Save"},
        {"טען", "טען רקע של מפת גן ארועים", "Load"},
        {"אפס", "אפס מפת שולחנות לבררת מחדל", "Clear"},
        {nullptr, nullptr, nullptr},
        {"שולחן", "הצג סידורי הושבה בשולחן", "View Table"},
        {nullptr, nullptr, nullptr},
        {"מפה", "הצג מפה של שולחנות", "View Map"},
        {"רשימה", "הצג פירוט של שולחנות", "View List"},
        {nullptr, nullptr, nullptr},
        {"הדפס", "הדפס מפת שולחנות", "Print"},
    }};
    return buttons;
}

QIcon toolbarImage(const QString& key)
{
    if (key == u"View Map")
        return QIcon(QPixmap::fromImage(seating::mapViewIcon(16)));
    if (key == u"View List")
        return QIcon(QPixmap::fromImage(seating::listViewIcon(16)));
    if (key == u"View Table")
        return QIcon(QPixmap::fromImage(seating::roundTableIcon(16)));
    const char* themed = key == u"Save" ? "document-save" : key == u"Load" ? "document-open"
                       : key == u"Clear" ? "edit-clear" : "document-print";
    return QIcon::fromTheme(QString::fromLatin1(themed));
}

const QString OverFull = QStringLiteral("לא ניתן להושיב יותר מ- %1 איש בשולחן");

} // namespace

// ---- TableMapView ----

namespace {

const int PlaceRole = Qt::UserRole + 1; // QPointF, twips
constexpr int CaptionTop = 33;           // the caption stands 500 twips below the place

// Paints a table as the map shows it: the icon, and under it the caption on a white ground,
// so that it reads over any picture and covers what lies beneath.
class TableItemDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override { return Cell; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        painter->save();
        const QRect cell = option.rect;
        index.data(Qt::DecorationRole).value<QIcon>().paint(painter, TableMapView::iconRect().translated(cell.topLeft()));
        QFont font = option.font;
        font.setPointSize(8);
        painter->setFont(font);
        painter->setLayoutDirection(Qt::RightToLeft); // the caption is Hebrew with a number at its end
        const QRect caption(cell.left(), cell.top() + CaptionTop, cell.width(), cell.height() - CaptionTop);
        const QString text = index.data().toString();
        const QRect ground = painter->boundingRect(caption, Qt::AlignHCenter | Qt::AlignTop, text).adjusted(-2, 0, 2, 0);
        const bool selected = option.state & QStyle::State_Selected;
        painter->fillRect(ground, selected ? option.palette.color(QPalette::Highlight) : QColor(Qt::white));
        painter->setPen(selected ? option.palette.color(QPalette::HighlightedText) : QColor(Qt::black));
        painter->drawText(caption, Qt::AlignHCenter | Qt::AlignTop, text);
        if (option.state & QStyle::State_HasFocus) {
            painter->setPen(QPen(option.palette.color(QPalette::Text), 1, Qt::DotLine));
            painter->drawRect(ground.adjusted(0, 0, -1, -1));
        }
        painter->restore();
    }
};

} // namespace

TableMapView::TableMapView(QWidget* parent) : QListView(parent)
{
    // A picture of the garden is not mirrored: the map reads left to right.
    setLayoutDirection(Qt::LeftToRight);
    setViewMode(IconMode);
    setMovement(Free);
    // Tables are moved here, not by a platform drag: the table follows the mouse and lands
    // exactly where it is let go.
    setDragEnabled(false);
    viewport()->setAcceptDrops(false);
    setResizeMode(Fixed);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setIconSize(QSize(IconSize, IconSize));
    setItemDelegate(new TableItemDelegate(this));
    setContextMenuPolicy(Qt::CustomContextMenu);
    QPalette ground = palette();
    ground.setColor(QPalette::Base, Qt::white);
    setPalette(ground);
}

QSize TableMapView::cellSize()
{
    return Cell;
}

QRect TableMapView::iconRect()
{
    return QRect(20, 0, IconSize, IconSize); // 300 twips right of the caption's start
}

void TableMapView::setBackgroundPicture(const QPixmap& picture)
{
    m_picture = picture;
    updateGeometries();
    viewport()->update();
}

void TableMapView::clearBackgroundPicture()
{
    setBackgroundPicture(QPixmap());
}

QPointF TableMapView::place(int row) const
{
    return model()->index(row, modelColumn()).data(PlaceRole).toPointF();
}

void TableMapView::setPlace(int row, const QPointF& twips)
{
    model()->setData(model()->index(row, modelColumn()), twips, PlaceRole);
    applyPlace(row);
}

void TableMapView::applyPlace(int row)
{
    const QModelIndex index = model()->index(row, modelColumn());
    const QVariant twips = index.data(PlaceRole);
    if (!twips.isValid())
        return;
    const QPointF at = twips.toPointF();
    setPositionForIndex(QPoint(int(std::lround(twipsToPixelsF(at.x()))), int(std::lround(twipsToPixelsF(at.y())))), index);
}

void TableMapView::fitScrollArea()
{
    updateGeometries();
}

void TableMapView::doItemsLayout()
{
    // The list lays its items out afresh on many occasions (a new model, a change of font
    // or style); every table goes straight back to its place, and the view where it was.
    const QPoint scrolled(horizontalScrollBar()->value(), verticalScrollBar()->value());
    QListView::doItemsLayout();
    if (!model())
        return;
    for (int row = 0; row < model()->rowCount(); ++row)
        applyPlace(row);
    updateGeometries();
    horizontalScrollBar()->setValue(scrolled.x());
    verticalScrollBar()->setValue(scrolled.y());
}

void TableMapView::updateGeometries()
{
    // The list's own ranges leave out the picture: keep the position through them.
    const QPoint scrolled(horizontalScrollBar()->value(), verticalScrollBar()->value());
    QListView::updateGeometries();
    // The scrolling area is what the picture and the tables cover now, from the origin.
    QRect covered(QPoint(0, 0), m_picture.size());
    if (model()) {
        for (int row = 0; row < model()->rowCount(); ++row)
            covered |= rectForIndex(model()->index(row, modelColumn()));
    }
    horizontalScrollBar()->setRange(0, std::max(0, covered.right() + 1 - viewport()->width()));
    verticalScrollBar()->setRange(0, std::max(0, covered.bottom() + 1 - viewport()->height()));
    horizontalScrollBar()->setValue(scrolled.x());
    verticalScrollBar()->setValue(scrolled.y());
}

void TableMapView::paintEvent(QPaintEvent* event)
{
    if (!m_picture.isNull()) {
        QPainter painter(viewport());
        painter.drawPixmap(QPoint(-horizontalOffset(), -verticalOffset()), m_picture);
    }
    QListView::paintEvent(event);
    const QModelIndex top = model() ? model()->index(m_topRow, modelColumn()) : QModelIndex();
    if (!top.isValid() || !visualRect(top).intersects(event->rect()))
        return;
    QPainter painter(viewport());
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(top);
    if (selectionModel()->isSelected(top))
        option.state |= QStyle::State_Selected;
    if (hasFocus() && currentIndex() == top)
        option.state |= QStyle::State_HasFocus;
    itemDelegate()->paint(&painter, option, top);
}

void TableMapView::mousePressEvent(QMouseEvent* event)
{
    QListView::mousePressEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !index.isValid())
        return;
    m_dragRow = index.row();
    m_dragging = false;
    m_grab = event->position().toPoint();
    m_dragStart = rectForIndex(index).topLeft();
    m_topRow = index.row();
    viewport()->update();
}

void TableMapView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_dragRow < 0 || !(event->buttons() & Qt::LeftButton)) {
        QListView::mouseMoveEvent(event);
        return;
    }
    const QPoint moved = event->position().toPoint() - m_grab;
    if (!m_dragging && moved.manhattanLength() < QApplication::startDragDistance())
        return;
    m_dragging = true;
    // A table can't be dragged off the top or the left of the garden.
    const QPoint to(std::max(0, m_dragStart.x() + moved.x()), std::max(0, m_dragStart.y() + moved.y()));
    setPlace(m_dragRow, QPointF(pixelsToTwipsF(to.x()), pixelsToTwipsF(to.y())));
}

void TableMapView::mouseReleaseEvent(QMouseEvent* event)
{
    const bool dragged = m_dragging;
    m_dragRow = -1;
    m_dragging = false;
    if (dragged)
        updateGeometries();
    QListView::mouseReleaseEvent(event);
}

// ---- TableMapWindow ----

TableMapWindow::TableMapWindow(WeddingState& state, Prompts& prompts, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowCloseButtonHint | Qt::WindowTitleHint), m_state(state), m_prompts(prompts)
{
    setObjectName(QStringLiteral("frmTableMap"));
    setWindowTitle(QStringLiteral("מפת השולחנות של כול האורחים"));
    setAccessibleName(windowTitle());
    setFixedSize(twipsToPixels(10815), twipsToPixels(6030));

    m_toolbar = new QToolBar(this);
    m_toolbar->setObjectName(QStringLiteral("Toolbar1"));
    m_toolbar->setAccessibleName(QStringLiteral("סרגל כלים של המפה"));
    m_toolbar->setGeometry(0, 0, width(), twipsToPixels(570) + 4);
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_toolbar->setIconSize(QSize(16, 16));
    const auto& buttons = toolbarDefinition();
    for (size_t i = 0; i < buttons.size(); ++i) {
        QAction* act = buttons[i].caption
            ? m_toolbar->addAction(toolbarImage(QString::fromLatin1(buttons[i].image)), QString::fromUtf8(buttons[i].caption))
            : m_toolbar->addSeparator();
        act->setObjectName(QStringLiteral("Toolbar1_%1").arg(i + 1));
        m_buttons[i] = act;
    }
    m_buttons[6]->setCheckable(true);
    m_buttons[7]->setCheckable(true);
    connect(m_toolbar, &QToolBar::actionTriggered, this, &TableMapWindow::onToolbar);

    m_stack = new QStackedWidget(this);
    m_stack->setObjectName(QStringLiteral("lvwTable"));
    m_stack->setGeometry(twipsRect(120, 720, 10575, 5175));
    m_model = new QStandardItemModel(this);
    m_map = new TableMapView(m_stack);
    m_map->setObjectName(QStringLiteral("lvwTableMap"));
    m_map->setAccessibleName(QStringLiteral("מפת השולחנות"));
    m_map->setModel(m_model);
    m_details = new QTreeView(m_stack);
    m_details->setObjectName(QStringLiteral("lvwTableDetails"));
    m_details->setAccessibleName(QStringLiteral("רשימה מפורטת של השולחנות"));
    m_details->setModel(m_model);
    m_details->setSelectionModel(m_map->selectionModel()); // one selection for both views
    m_details->setRootIsDecorated(false);
    m_details->setUniformRowHeights(true);
    m_details->setItemsExpandable(false);
    m_details->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_details->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_details->setContextMenuPolicy(Qt::CustomContextMenu);
    m_stack->addWidget(m_map);
    m_stack->addWidget(m_details);

    m_popup = new QMenu(this);
    m_popup->setObjectName(QStringLiteral("mnuPopTable"));
    for (const auto& [name, caption] : {std::pair{"popTableSitView", "...סידור הושבה בשולחן"}, std::pair{"pop1", ""},
                                        std::pair{"popUpdateTableNum", "...שינוי מספר שולחן"},
                                        std::pair{"popSaveMap", "שמור מפת שולחנות"},
                                        std::pair{"popSetDefaultMap", "אפס סידור שולחנות"},
                                        std::pair{"popPrintMap", "...הדפס מפת שולחנות"}, std::pair{"pop2", ""},
                                        std::pair{"popTableMap", "מפת שולחנות"}, std::pair{"popDetailed", "רשימה מפורטת"}}) {
        QAction* act = *caption ? m_popup->addAction(hebrewParagraph(QString::fromUtf8(caption))) : m_popup->addSeparator();
        act->setObjectName(QString::fromLatin1(name));
    }
    popupAction(QStringLiteral("popTableMap"))->setCheckable(true);
    popupAction(QStringLiteral("popDetailed"))->setCheckable(true);
    connect(popupAction(QStringLiteral("popTableSitView")), &QAction::triggered, this, &TableMapWindow::ViewTable);
    connect(popupAction(QStringLiteral("popUpdateTableNum")), &QAction::triggered, this, &TableMapWindow::UpdateTableNum);
    connect(popupAction(QStringLiteral("popPrintMap")), &QAction::triggered, this, &TableMapWindow::PrintTableMap);
    connect(popupAction(QStringLiteral("popSaveMap")), &QAction::triggered, this, &TableMapWindow::SaveTablePositions);
    connect(popupAction(QStringLiteral("popSetDefaultMap")), &QAction::triggered, this, &TableMapWindow::SetDefTableMap);
    connect(popupAction(QStringLiteral("popTableMap")), &QAction::triggered, this, [this] { ChangeTableViewMode(1); });
    connect(popupAction(QStringLiteral("popDetailed")), &QAction::triggered, this, [this] { ChangeTableViewMode(2); });

    // Whatever is highlighted, by mouse (either button), keys or a screen reader, is the
    // table that the commands act on.
    connect(m_map->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        const QModelIndexList chosen = m_map->selectionModel()->selectedIndexes();
        m_selected = chosen.isEmpty() ? 0 : chosen.first().row() + 1;
        onClick();
    });
    for (QAbstractItemView* view : {static_cast<QAbstractItemView*>(m_map), static_cast<QAbstractItemView*>(m_details)}) {
        connect(view, &QAbstractItemView::doubleClicked, this, &TableMapWindow::ViewTable);
        connect(view, &QWidget::customContextMenuRequested, this, [this, view](const QPoint& at) { showPopup(view, at); });
        view->installEventFilter(this);
    }
}

TableMapWindow::~TableMapWindow() = default;

QAction* TableMapWindow::popupAction(const QString& name) const
{
    return m_popup->findChild<QAction*>(name);
}

void TableMapWindow::showPopup(QAbstractItemView* view, const QPoint& at)
{
    m_popup->popup(view->viewport()->mapToGlobal(at));
}

void TableMapWindow::ensureLoaded()
{
    if (m_loaded)
        return;
    m_loaded = true;
    ProgramClosing = false;
    // The main window builds and refreshes the items right after this load; the picture's
    // path is read here so that the first change to the map view shows the picture.
    GardenMapFile = SettingsFile(m_state.iniFile()).text(keys::GardenMapBackground);
    const auto& buttons = toolbarDefinition();
    for (size_t i = 0; i < buttons.size(); ++i) {
        if (buttons[i].toolTip)
            m_buttons[i]->setToolTip(QString::fromUtf8(buttons[i].toolTip));
    }
}

int TableMapWindow::itemCount() const
{
    return m_model->rowCount();
}

QString TableMapWindow::itemText(int table) const
{
    return m_model->index(table - 1, 0).data().toString();
}

QString TableMapWindow::itemNames(int table) const
{
    return m_model->index(table - 1, 1).data().toString();
}

quint8 TableMapWindow::SeatedCount(int table) const
{
    return seating::SeatedCount(itemText(table));
}

QPointF TableMapWindow::tablePlace(int table) const
{
    return m_map->place(table - 1);
}

void TableMapWindow::setTablePlace(int table, const QPointF& twips)
{
    m_map->setPlace(table - 1, twips);
    m_map->fitScrollArea();
}

std::vector<QPointF> TableMapWindow::itemPositions() const
{
    std::vector<QPointF> positions;
    positions.reserve(size_t(itemCount()));
    for (int row = 0; row < itemCount(); ++row)
        positions.push_back(m_map->place(row));
    return positions;
}

QPointF TableMapWindow::automaticPosition(int index) const
{
    // Rows from the right, in number order, as a right-to-left icon list sets new icons.
    const int width = twipsToPixels(10575) - 24;
    const int columns = std::max(1, width / Cell.width());
    const int row = index / columns;
    const int column = index % columns;
    const int x = width - (column + 1) * Cell.width();
    return QPointF(pixelsToTwipsF(std::max(0, x)), pixelsToTwipsF(4 + row * Cell.height()));
}

void TableMapWindow::InitTableSetting()
{
    ensureLoaded();
    m_stack->setCurrentWidget(m_map);
    m_model->clear();
    m_model->setHorizontalHeaderLabels({QStringLiteral("מספר השולחן"), QStringLiteral("רשימת האנשים")});
    m_details->setColumnWidth(0, m_stack->width() / 4);
    m_details->header()->setStretchLastSection(true);

    for (int number = 1; number <= m_state.MaxTables; ++number) {
        auto* caption = new QStandardItem(QIcon(QPixmap::fromImage(seating::tableNumberIcon(number, IconSize))),
                                          QString::number(number));
        auto* names = new QStandardItem();
        for (QStandardItem* cell : {caption, names})
            cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable); // the count is read back: no editing
        m_model->appendRow({caption, names});
    }
    for (int row = 0; row < itemCount(); ++row)
        m_map->setPlace(row, automaticPosition(row));
    m_map->fitScrollArea();
    // A new model forgets the selection without a word: the first table is chosen afresh.
    m_selected = 0;
    selectTable(itemCount() > 0 ? 1 : 0);
    ChangeTableViewMode(1);
}

void TableMapWindow::InitTableView(int viewMode)
{
    ensureLoaded();
    // A failure to read is passed over: the list's own load reports what is wrong with the file.
    PendingFailure pending;
    const bool overFull = seating::CountTables(m_state, pending);
    for (int row = 0; row < itemCount(); ++row) {
        const auto number = size_t(row + 1);
        const TableRecord record = number < m_state.TableInfo.size() ? m_state.TableInfo[number] : TableRecord{};
        QStandardItem* caption = m_model->item(row, 0);
        caption->setText(seating::TableCaption(record.PeopleCount));
        // A screen reader hears the table's number, which only its icon shows, with the caption.
        caption->setData(QStringLiteral("שולחן מס' %1, %2").arg(number).arg(caption->text()), Qt::AccessibleTextRole);
        if (viewMode == 2)
            m_model->item(row, 1)->setText(record.PeopleNames);
    }
    m_state.CurTable = quint8(m_selected);
    enableTableCommands(SeatedCount(m_selected) != 0);
    LoadTablePositions();
    if (overFull)
        m_prompts.message(OverFull.arg(m_state.MaxChairs));
}

void TableMapWindow::ChangeTableViewMode(int viewMode)
{
    ensureLoaded();
    const int previous = m_state.TableViewMode;
    m_state.TableViewMode = quint8(viewMode);
    const bool map = viewMode != 2;
    if (!map) {
        if (previous == 1 && isVisible() && TablePositionsChanged())
            askToSavePositions();
        m_map->clearBackgroundPicture();
        m_stack->setCurrentWidget(m_details);
    } else {
        if (FileExists(GardenMapFile)) {
            QPixmap picture;
            if (picture.load(GardenMapFile.trimmed())) // a file that is no picture leaves the map as it is
                m_map->setBackgroundPicture(picture);
        }
        m_stack->setCurrentWidget(m_map);
    }
    popupAction(QStringLiteral("popTableMap"))->setChecked(map);
    popupAction(QStringLiteral("popDetailed"))->setChecked(!map);
    m_buttons[6]->setChecked(map);
    m_buttons[7]->setChecked(!map);
    m_toolbar->update();
    InitTableView(m_state.TableViewMode);
}

void TableMapWindow::onClick()
{
    m_state.CurTable = quint8(m_selected);
    enableTableCommands(SeatedCount(m_selected) != 0);
    m_toolbar->update();
}

void TableMapWindow::enableTableCommands(bool enabled)
{
    popupAction(QStringLiteral("popUpdateTableNum"))->setEnabled(enabled);
    popupAction(QStringLiteral("popTableSitView"))->setEnabled(enabled);
    m_buttons[4]->setEnabled(enabled);
}

void TableMapWindow::selectTable(int table)
{
    const QModelIndex index = m_model->index(table - 1, 0);
    if (!index.isValid()) {
        m_map->selectionModel()->clear();
        m_selected = 0;
        onClick();
        return;
    }
    m_map->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void TableMapWindow::onToolbar(QAction* button)
{
    m_buttons[6]->setChecked(m_state.TableViewMode == 1);
    m_buttons[7]->setChecked(m_state.TableViewMode == 2);
    m_toolbar->update();
    const auto index = std::find(m_buttons.begin(), m_buttons.end(), button) - m_buttons.begin() + 1;
    switch (index) {
    case 1:
        SaveTablePositions();
        break;
    case 2:
        LoadGardenMap();
        break;
    case 3:
        SetDefTableMap();
        break;
    case 5:
        ViewTable();
        break;
    case 7:
        ChangeTableViewMode(1);
        break;
    case 8:
        ChangeTableViewMode(2);
        break;
    case 10:
        PrintTableMap();
        break;
    default:
        break;
    }
}

void TableMapWindow::ViewTable()
{
    if (m_state.CurTable == 0)
        return;
    m_state.CurTableChairs = SeatedCount(m_selected);
    if (m_state.CurTableChairs > m_state.MaxChairs) {
        m_prompts.message(OverFull.arg(m_state.MaxChairs));
        return;
    }
    if (m_state.CurTableChairs == 0) {
        m_prompts.message(QStringLiteral(".שולחן ריק מאנשים"));
        return;
    }
    if (m_tableWindow)
        m_tableWindow->close();
    m_tableWindow = new TableWindow(m_state, m_prompts, this);
    m_tableWindow->show();
}

void TableMapWindow::LoadTablePositions()
{
    const IniSnapshot ini(m_state.iniFile());
    GardenMapFile = ini.value(keys::GardenMapBackground.section, keys::GardenMapBackground.name, QString());
    for (int row = 0; row < itemCount(); ++row) {
        if (const auto place = seating::storedPlace(ini, row + 1))
            m_map->setPlace(row, *place);
    }
    m_map->fitScrollArea();
}

void TableMapWindow::SaveTablePositions()
{
    seating::SaveTablePositions(m_state.iniFile(), GardenMapFile, itemPositions());
}

bool TableMapWindow::TablePositionsChanged() const
{
    return seating::TablePositionsChanged(m_state.iniFile(), itemPositions());
}

void TableMapWindow::askToSavePositions()
{
    MessageRequest question;
    question.title = QStringLiteral("אזהרת שמירה");
    question.text = QStringLiteral("?האם ברצונך לשמור מיקומי מפת השולחנות ביציאה");
    question.buttons = PromptButtons::OkCancel;
    question.defaultButton = PromptAnswer::Ok;
    if (m_prompts.show(question) == PromptAnswer::Ok)
        SaveTablePositions();
}

void TableMapWindow::SetDefTableMap()
{
    MessageRequest question;
    question.icon = PromptIcon::Warning;
    question.title = QStringLiteral("אזהרת מערכת");
    question.text = QStringLiteral("פעולה זו תאפס את מפת השולחנות") + m_state.CrLf
        + QStringLiteral("?למיקומי בררת המחדל של המערכת");
    question.buttons = PromptButtons::OkCancel;
    question.defaultButton = PromptAnswer::Ok;
    if (m_prompts.show(question) != PromptAnswer::Ok)
        return;
    GardenMapFile.clear();
    ClearIniSection(m_state.iniFile(), keys::TableNum.section);
    InitTableSetting();
}

void TableMapWindow::LoadGardenMap()
{
    FileRequest request;
    request.filter = QStringLiteral("GIF Image (*.gif)|*.gif");
    request.initialDir = m_state.AppPath;
    const PromptResult<QString> chosen = m_prompts.openFile(request);
    if (!chosen) {
        if (chosen.failure.number() != CancelFailureNumber)
            m_prompts.warning(chosen.failure.text());
        return;
    }
    const QString name = chosen.value->trimmed();
    if (!FileExists(name)) {
        m_prompts.message(QStringLiteral(".קובץ לא נמצא"));
        return;
    }
    GardenMapFile = name;
    if (m_state.TableViewMode == 1) {
        QPixmap picture;
        if (picture.load(name))
            m_map->setBackgroundPicture(picture);
    }
    SettingsFile(m_state.iniFile()).setText(keys::GardenMapBackground, GardenMapFile);
}

void TableMapWindow::UpdateTableNum()
{
    if (m_selected == 0 || !seating::UpdateTableNum(m_state, m_prompts, quint8(m_selected)))
        return;
    // The places belong to the numbers: the icons stay where they are.
    if (m_reloadList)
        m_reloadList();
    else
        InitTableView(m_state.TableViewMode);
}

void TableMapWindow::PrintTableMap()
{
    std::vector<seating::MapTable> tables;
    tables.reserve(size_t(itemCount()));
    for (int table = 1; table <= itemCount(); ++table) {
        // The icon's size on the screen, in four times the dots, so that its number prints sharp.
        QImage icon = seating::tableNumberIcon(table, IconSize * 4);
        icon.setDevicePixelRatio(4);
        tables.push_back({tablePlace(table), itemText(table), icon});
    }
    const QImage garden = m_map->backgroundPicture().toImage();
    printCanvasWithDialog(
        m_prompts, [&](printing::PrinterCanvas& printer) { seating::DrawTableMap(printer, m_state.CurGroup, garden, tables); },
        QStringLiteral("הודפסה מפת השולחנות."));
}

bool TableMapWindow::eventFilter(QObject* watched, QEvent* event)
{
    // Coming into the list by mouse or by Tab forgets the table until the next choice in it;
    // the highlight goes with it. A pop-up closing or the window coming back keeps both.
    if ((watched == m_map || watched == m_details) && event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason) {
            m_map->selectionModel()->clearSelection();
            m_state.CurTable = 0;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void TableMapWindow::closeEvent(QCloseEvent* event)
{
    if (m_loaded && m_state.TableViewMode == 1 && TablePositionsChanged())
        askToSavePositions();
    if (ProgramClosing) {
        event->accept();
        return;
    }
    event->ignore();
    hide();
    emit hiddenByClose();
}

} // namespace velmora::ui
