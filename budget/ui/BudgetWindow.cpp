#include "budget/ui/BudgetWindow.h"

#include "app/Failure.h"
#include "app/Product.h"
#include "app/Settings.h"
#include "app/Prompts.h"
#include "app/Twips.h"
#include "app/WeddingState.h"
#include "printing/ui/WindowPrint.h"
#include "store/Schema.h"

#include <QFrame>
#include <QIcon>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>

namespace velmora::ui {

namespace {

constexpr int ClientWidth = 10350; // twips
constexpr int ClientHeight = 9780;
constexpr int BoxWidth = 2895;
constexpr int RowHeight = 375;
constexpr int TotalTop = 8520;
constexpr int FooterTop = 9480;

const QString Title = QStringLiteral("מאזן תקציבי");
const QString SumCaption = QStringLiteral("ס\"כ הוצאות");
const QString PrintTip = QStringLiteral("לחץ פעמיים להדפסת המאזן התקציבי");

int rowTop(int row) // rows count from 1
{
    return 960 + 480 * (row - 1);
}

QLabel* label(QWidget* parent, const QString& text, QRect place)
{
    auto* control = new QLabel(text, parent);
    control->setGeometry(place);
    return control;
}

QLabel* shekel(QWidget* parent, int left, int top)
{
    QLabel* sign = label(parent, QStringLiteral("₪"), twipsRect(left, top, 240, RowHeight));
    sign->setAlignment(Qt::AlignCenter);
    return sign;
}

} // namespace

BudgetWindow::BudgetWindow(WeddingState& state, Prompts& prompts, QWidget* parent)
    : QWidget(parent, Qt::Window), m_state(state), m_prompts(prompts)
{
    setObjectName(QStringLiteral("frmBudget"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(Title);
    setLayoutDirection(Qt::RightToLeft);
    setFont(QFont(QStringLiteral("Arial"), 9));
    setFixedSize(twipsToPixels(ClientWidth), twipsToPixels(ClientHeight));
    build();
    reopen();
}

void BudgetWindow::reopen()
{
    m_ledger.close();
    try {
        m_ledger.open(m_state.databaseFile());
    } catch (const Failure& failure) {
        m_prompts.warning(failure.text());
    }
    LoadBudget();
}

BudgetWindow::~BudgetWindow()
{
    m_ledger.close();
}

void BudgetWindow::build()
{
    lblTitle = label(this, Title, twipsRect(480, 360, 9615, 375));
    lblTitle->setObjectName(QStringLiteral("lblTitle"));
    QFont titleFont = font();
    titleFont.setPointSizeF(13.5);
    titleFont.setBold(true);
    lblTitle->setFont(titleFont);
    lblTitle->setAlignment(Qt::AlignCenter);
    lblTitle->setFrameShape(QFrame::Panel);
    lblTitle->setFrameShadow(QFrame::Raised);
    lblTitle->setAutoFillBackground(true);
    lblTitle->setBackgroundRole(QPalette::Button);

    lblDate = label(this, {}, twipsRect(600, 480, 1095, 255));
    lblDate->setObjectName(QStringLiteral("lblDate"));
    lblDate->setAlignment(Qt::AlignCenter);

    const std::vector<store::BudgetBranch>& branches = store::budgetBranches();
    for (int i = 0; i < budget::BranchCount; ++i) {
        const bool right = i < 15;
        const int top = rowTop(right ? i + 1 : i - 14);
        auto* box = new QLineEdit(this);
        box->setObjectName(QStringLiteral("txtBudgetBranch_%1").arg(i));
        box->setGeometry(twipsRect(right ? 5640 : 480, top, BoxWidth, RowHeight));
        box->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
        box->setLayoutDirection(Qt::RightToLeft);
        txtBudgetBranch[size_t(i)] = box;
        QLabel* caption = label(this, u' ' + branches[size_t(i)].label, twipsRect(right ? 8520 : 3360, top, 1575, RowHeight));
        caption->setObjectName(QStringLiteral("lblBranch_%1").arg(i));
        caption->setBuddy(box);
        shekel(this, right ? 5400 : 240, top);
    }

    // The grey band first, so that the total line lies on it.
    auto* shape1 = new QFrame(this);
    shape1->setObjectName(QStringLiteral("Shape1"));
    shape1->setGeometry(twipsRect(120, TotalTop - 120, ClientWidth - 240, 720));
    shape1->setAutoFillBackground(true);
    QPalette grey = shape1->palette();
    grey.setColor(QPalette::Window, QColor(0xE0, 0xE0, 0xE0));
    shape1->setPalette(grey);

    QFont bold = font();
    bold.setBold(true);
    QLabel* sumCaption = label(this, SumCaption, twipsRect(8640, TotalTop, 1575, RowHeight));
    sumCaption->setObjectName(QStringLiteral("lblSumCaption"));
    sumCaption->setFont(bold);
    lblSum = label(this, {}, twipsRect(5640, TotalTop, BoxWidth, RowHeight));
    lblSum->setObjectName(QStringLiteral("lblSum"));
    lblSum->setFont(bold);
    lblSum->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    lblSum->setFrameShape(QFrame::StyledPanel);
    lblSum->setFrameShadow(QFrame::Sunken);
    lblSum->setMargin(2);
    sumCaption->setBuddy(lblSum);
    shekel(this, 5400, TotalTop);

    imgPrint = new PrintIcon(PrintTip, this);
    imgPrint->setObjectName(QStringLiteral("imgPrint"));
    imgPrint->setGeometry(twipsRect(2400, TotalTop, 480, 480));
    connect(imgPrint, &PrintIcon::clicked, this, &BudgetWindow::imgPrint_DblClick);

    cmdUpdate = new QPushButton(QStringLiteral("עדכן הוצאות"), this);
    cmdUpdate->setObjectName(QStringLiteral("cmdUpdate"));
    cmdUpdate->setGeometry(twipsRect(720, TotalTop, 1455, RowHeight));
    connect(cmdUpdate, &QPushButton::clicked, this, &BudgetWindow::cmdUpdate_Click);

    auto* line = new QFrame(this);
    line->setObjectName(QStringLiteral("Line1"));
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    line->setGeometry(0, twipsToPixels(FooterTop) - 1, width(), 2);
    label(this, product::Title, twipsRect(120, FooterTop, 2655, 255))->setLayoutDirection(Qt::LeftToRight);
    label(this, product::WebAddress, twipsRect(7560, FooterTop, 2655, 255))->setLayoutDirection(Qt::LeftToRight);

    QWidget* previous = txtBudgetBranch[0];
    for (size_t i = 1; i < txtBudgetBranch.size(); ++i) {
        setTabOrder(previous, txtBudgetBranch[i]);
        previous = txtBudgetBranch[i];
    }
    setTabOrder(previous, cmdUpdate);
    setTabOrder(cmdUpdate, imgPrint);
    txtBudgetBranch[0]->setFocus();
}

QStringList BudgetWindow::boxTexts() const
{
    QStringList texts;
    for (const QLineEdit* box : txtBudgetBranch)
        texts << box->text();
    return texts;
}

void BudgetWindow::LoadBudget()
{
    // Without a connection (told when the window opened) the boxes stay as they are.
    if (m_ledger.isOpen()) {
        try {
            const QStringList boxes = m_ledger.load(m_state.SqlText);
            for (size_t i = 0; i < txtBudgetBranch.size(); ++i)
                txtBudgetBranch[i]->setText(boxes.value(int(i)));
        } catch (const Failure& failure) {
            m_prompts.warning(failure.text());
        }
    }
    lblSum->setText(budget::SumText(SumOfBudget()));
    lblDate->setText(values::fromDate(QDate::currentDate()));
}

store::Currency BudgetWindow::SumOfBudget()
{
    return budget::SumOfBudget(boxTexts(), m_prompts);
}

void BudgetWindow::cmdUpdate_Click()
{
    const auto result = m_ledger.save(boxTexts(), m_prompts,
                                      [this](int box) { txtBudgetBranch[size_t(box)]->setFocus(); });
    if (result == budget::BudgetLedger::Outcome::Saved)
        LoadBudget();
}

void BudgetWindow::imgPrint_DblClick()
{
    printWindowWithDialog(*this, {imgPrint}, m_prompts, budget::messages::Printed);
}

} // namespace velmora::ui
