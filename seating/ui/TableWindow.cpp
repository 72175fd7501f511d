#include "seating/ui/TableWindow.h"

#include "app/Twips.h"

#include <QLabel>
#include <QVBoxLayout>

namespace velmora::ui {

TableWindow::TableWindow(int table, int people, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowCloseButtonHint | Qt::WindowTitleHint), m_table(table)
{
    setObjectName(QStringLiteral("frmTable"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("סידור הושבה בשולחן"));
    setAccessibleName(windowTitle());
    setFixedSize(twipsToPixels(6615), twipsToPixels(4800));
    auto* layout = new QVBoxLayout(this);
    auto* number = new QLabel(QStringLiteral("שולחן מס' ") + QString::number(table), this);
    number->setObjectName(QStringLiteral("lblTableNum"));
    number->setAlignment(Qt::AlignCenter);
    QFont bold = number->font();
    bold.setBold(true);
    bold.setPointSizeF(9.75);
    number->setFont(bold);
    auto* count = new QLabel(QStringLiteral("שולחן של ") + QString::number(people) + QStringLiteral(" מוזמנים"), this);
    count->setObjectName(QStringLiteral("lblNumOfPpl"));
    count->setAlignment(Qt::AlignCenter);
    layout->addStretch(1);
    layout->addWidget(number);
    layout->addWidget(count);
    layout->addStretch(1);
}

} // namespace velmora::ui
