#include "seating/ui/TableMapWindow.h"

#include "app/IniFile.h"
#include "app/PendingFailure.h"
#include "app/Prompts.h"
#include "app/Settings.h"
#include "app/Twips.h"
#include "app/Wedding.h"
#include "app/WeddingState.h"
#include "app/ui/HebrewText.h"
#include "seating/TableIcons.h"
#include "seating/TableMap.h"
#include "seating/ui/TableWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QHeaderView>
#include <QIcon>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStackedWidget>
#include <QStyle>
#include <QStyleOptionGraphicsItem>
#include <QToolBar>
#include <QTreeWidget>

namespace velmora::ui {

namespace {

constexpr int IconSize = 32;
const QSizeF Cell(84, 58);

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

// ---- TableMapItem ----

TableMapItem::TableMapItem(int number, const QPixmap& icon) : m_number(number), m_icon(icon), m_text(QString::number(number))
{
    setFlags(ItemIsMovable | ItemIsSelectable | ItemSendsGeometryChanges);
}

void TableMapItem::setText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    update();
}

QPointF TableMapItem::twips() const
{
    return QPointF(pixelsToTwipsF(pos().x()), pixelsToTwipsF(pos().y()));
}

void TableMapItem::setTwips(const QPointF& twips)
{
    setPos(twipsToPixelsF(twips.x()), twipsToPixelsF(twips.y()));
}

QSizeF TableMapItem::cellSize()
{
    return Cell;
}

QRectF TableMapItem::boundingRect() const
{
    return QRectF(QPointF(0, 0), Cell);
}

void TableMapItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget*)
{
    painter->drawPixmap(QPointF((Cell.width() - IconSize) / 2, 2), m_icon);
    const QRectF caption(0, IconSize + 4, Cell.width(), Cell.height() - IconSize - 4);
    const QPalette& palette = option->palette;
    QFont font = painter->font();
    font.setPointSize(8);
    painter->setFont(font);
    const QRectF textRect = painter->boundingRect(caption, Qt::AlignHCenter | Qt::AlignTop, m_text).adjusted(-2, 0, 2, 0);
    if (isSelected()) {
        painter->fillRect(textRect, palette.color(QPalette::Highlight));
        painter->setPen(palette.color(QPalette::HighlightedText));
    } else {
        painter->fillRect(textRect, QColor(255, 255, 255, 200));
        painter->setPen(Qt::black);
    }
    painter->drawText(caption, Qt::AlignHCenter | Qt::AlignTop, m_text);
}

QVariant TableMapItem::itemChange(GraphicsItemChange change, const QVariant& value)
{
    // A table can't be dragged off the top or the left of the garden.
    if (change == ItemPositionChange) {
        QPointF at = value.toPointF();
        at.setX(std::max(0.0, at.x()));
        at.setY(std::max(0.0, at.y()));
        return at;
    }
    return QGraphicsItem::itemChange(change, value);
}

// ---- TableMapView ----

TableMapView::TableMapView(QWidget* parent) : QGraphicsView(parent)
{
    // A picture of the garden is not mirrored: the map reads left to right.
    setLayoutDirection(Qt::LeftToRight);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    setDragMode(QGraphicsView::NoDrag);
    setViewportUpdateMode(QGraphicsView::FullViewportUpdate);
    setBackgroundBrush(Qt::white);
}

void TableMapView::setBackgroundPicture(const QPixmap& picture)
{
    m_picture = picture;
    if (scene()) {
        const QRectF wanted = scene()->itemsBoundingRect().united(QRectF(QPointF(0, 0), m_picture.size()));
        scene()->setSceneRect(wanted.united(QRectF(0, 0, 1, 1)).united(scene()->sceneRect()));
    }
    viewport()->update();
}

void TableMapView::clearBackgroundPicture()
{
    m_picture = QPixmap();
    viewport()->update();
}

TableMapItem* TableMapView::itemNumber(int number) const
{
    for (QGraphicsItem* item : scene()->items()) {
        auto* table = dynamic_cast<TableMapItem*>(item);
        if (table && table->number() == number)
            return table;
    }
    return nullptr;
}

void TableMapView::drawBackground(QPainter* painter, const QRectF& rect)
{
    painter->fillRect(rect, Qt::white);
    if (!m_picture.isNull())
        painter->drawPixmap(QPointF(0, 0), m_picture);
}

void TableMapView::mousePressEvent(QMouseEvent* event)
{
    QGraphicsView::mousePressEvent(event);
    for (QGraphicsItem* item : items(event->position().toPoint())) {
        if (auto* table = dynamic_cast<TableMapItem*>(item)) {
            emit itemPressed(table->number());
            break;
        }
    }
}

void TableMapView::mouseReleaseEvent(QMouseEvent* event)
{
    QGraphicsView::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton)
        emit clicked();
}

void TableMapView::mouseDoubleClickEvent(QMouseEvent* event)
{
    QGraphicsView::mouseDoubleClickEvent(event);
    for (QGraphicsItem* item : items(event->position().toPoint())) {
        if (auto* table = dynamic_cast<TableMapItem*>(item)) {
            // The click that opens every double click sets the table first.
            emit itemPressed(table->number());
            emit clicked();
            emit doubleClicked();
            break;
        }
    }
}

void TableMapView::contextMenuEvent(QContextMenuEvent* event)
{
    emit contextMenuWanted(event->globalPos());
}

void TableMapView::focusInEvent(QFocusEvent* event)
{
    QGraphicsView::focusInEvent(event);
    if (event->reason() != Qt::PopupFocusReason)
        emit focusGained();
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
    m_scene = new QGraphicsScene(this);
    m_map = new TableMapView(m_stack);
    m_map->setObjectName(QStringLiteral("lvwTableMap"));
    m_map->setAccessibleName(QStringLiteral("מפת השולחנות"));
    m_map->setScene(m_scene);
    m_details = new QTreeWidget(m_stack);
    m_details->setObjectName(QStringLiteral("lvwTableDetails"));
    m_details->setAccessibleName(QStringLiteral("רשימה מפורטת של השולחנות"));
    m_details->setRootIsDecorated(false);
    m_details->setUniformRowHeights(true);
    m_details->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_details->setContextMenuPolicy(Qt::CustomContextMenu);
    m_details->installEventFilter(this);
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
    connect(popupAction(QStringLiteral("popSaveMap")), &QAction::triggered, this, &TableMapWindow::SaveTablePositions);
    connect(popupAction(QStringLiteral("popSetDefaultMap")), &QAction::triggered, this, &TableMapWindow::SetDefTableMap);
    connect(popupAction(QStringLiteral("popTableMap")), &QAction::triggered, this, [this] { ChangeTableViewMode(1); });
    connect(popupAction(QStringLiteral("popDetailed")), &QAction::triggered, this, [this] { ChangeTableViewMode(2); });

    connect(m_map, &TableMapView::itemPressed, this, [this](int number) {
        m_selected = number;
        syncSelection();
    });
    connect(m_map, &TableMapView::clicked, this, [this] {
        syncSelection();
        onClick();
    });
    connect(m_map, &TableMapView::doubleClicked, this, &TableMapWindow::ViewTable);
    connect(m_map, &TableMapView::contextMenuWanted, this, [this](const QPoint& at) { m_popup->popup(at); });
    // Gaining the focus forgets the table until the next click on the list.
    connect(m_map, &TableMapView::focusGained, this, [this] { m_state.CurTable = 0; });
    connect(m_details, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* row) {
        m_selected = m_details->indexOfTopLevelItem(row) + 1;
        syncSelection();
        onClick();
    });
    connect(m_details, &QTreeWidget::itemDoubleClicked, this, [this] { ViewTable(); });
    connect(m_details, &QTreeWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { m_popup->popup(m_details->viewport()->mapToGlobal(at)); });
}

TableMapWindow::~TableMapWindow() = default;

QAction* TableMapWindow::popupAction(const QString& name) const
{
    return m_popup->findChild<QAction*>(name);
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

TableMapItem* TableMapWindow::item(int table) const
{
    return table >= 1 && table <= itemCount() ? m_items[size_t(table - 1)] : nullptr;
}

QString TableMapWindow::itemText(int table) const
{
    const TableMapItem* found = item(table);
    return found ? found->text() : QString();
}

QString TableMapWindow::itemNames(int table) const
{
    QTreeWidgetItem* row = m_details->topLevelItem(table - 1);
    return row ? row->text(1) : QString();
}

quint8 TableMapWindow::SeatedCount(int table) const
{
    return seating::SeatedCount(itemText(table));
}

std::vector<QPointF> TableMapWindow::itemPositions() const
{
    std::vector<QPointF> positions;
    positions.reserve(m_items.size());
    for (const TableMapItem* table : m_items)
        positions.push_back(table->twips());
    return positions;
}

QPointF TableMapWindow::automaticPosition(int index) const
{
    // Rows from the right, in number order, as a right-to-left icon list sets new icons.
    const double width = twipsToPixels(10575) - 24;
    const int columns = std::max(1, int(width / Cell.width()));
    const int row = index / columns;
    const int column = index % columns;
    const double x = width - (column + 1) * Cell.width();
    return QPointF(pixelsToTwipsF(std::max(0.0, x)), pixelsToTwipsF(4 + row * Cell.height()));
}

void TableMapWindow::syncSelection()
{
    for (TableMapItem* table : m_items)
        table->setSelected(table->number() == m_selected);
    if (QTreeWidgetItem* row = m_details->topLevelItem(m_selected - 1))
        m_details->setCurrentItem(row);
}

void TableMapWindow::InitTableSetting()
{
    ensureLoaded();
    m_stack->setCurrentWidget(m_map);
    m_scene->clear();
    m_items.clear();
    m_details->clear();
    m_details->setColumnCount(2);
    m_details->setHeaderLabels({QStringLiteral("מספר השולחן"), QStringLiteral("רשימת האנשים")});
    const int listWidth = m_stack->width();
    m_details->setColumnWidth(0, listWidth / 4);
    m_details->header()->setStretchLastSection(true);

    for (int number = 1; number <= m_state.MaxTables; ++number) {
        const QPixmap icon = QPixmap::fromImage(seating::tableNumberIcon(number, IconSize));
        auto* table = new TableMapItem(number, icon);
        table->setTwips(automaticPosition(number - 1));
        m_scene->addItem(table);
        m_items.push_back(table);
        auto* row = new QTreeWidgetItem(m_details, {table->text(), QString()});
        row->setIcon(0, QIcon(icon));
    }
    m_selected = m_items.empty() ? 0 : 1;
    syncSelection();
    onClick();
    ChangeTableViewMode(1);
}

void TableMapWindow::InitTableView(int viewMode)
{
    ensureLoaded();
    // A failure to read is passed over: the list's own load reports what is wrong with the file.
    PendingFailure pending;
    const bool overFull = seating::CountTables(m_state, pending);
    for (TableMapItem* table : m_items) {
        const auto number = size_t(table->number());
        const TableRecord record = number < m_state.TableInfo.size() ? m_state.TableInfo[number] : TableRecord{};
        table->setText(seating::TableCaption(record.PeopleCount));
        QTreeWidgetItem* row = m_details->topLevelItem(table->number() - 1);
        row->setText(0, table->text());
        if (viewMode == 2)
            row->setText(1, record.PeopleNames);
    }
    m_scene->update();
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
    m_selected = table;
    syncSelection();
    onClick();
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
    default:
        break; // printing the map arrives with the printouts
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
    m_tableWindow = new TableWindow(m_state.CurTable, m_state.CurTableChairs, this);
    connect(m_tableWindow, &QObject::destroyed, this, [this, window = m_tableWindow] {
        if (m_tableWindow == window)
            m_tableWindow = nullptr;
    });
    m_tableWindow->show();
}

void TableMapWindow::LoadTablePositions()
{
    const IniSnapshot ini(m_state.iniFile());
    GardenMapFile = ini.value(keys::GardenMapBackground.section, keys::GardenMapBackground.name, QString());
    for (TableMapItem* table : m_items) {
        const auto stored = seating::storedPosition(ini, table->number());
        if (!stored)
            continue;
        bool leftOk = false, topOk = false;
        const float left = stored->left.toFloat(&leftOk);
        const float top = stored->top.toFloat(&topOk);
        if (leftOk && topOk)
            table->setTwips(QPointF(left, top));
    }
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

bool TableMapWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_details && event->type() == QEvent::FocusIn
        && static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason)
        m_state.CurTable = 0;
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
