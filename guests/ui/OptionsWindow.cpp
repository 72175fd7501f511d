#include "guests/ui/OptionsWindow.h"

#include "app/Settings.h"
#include "app/WeddingState.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace velmora::ui {

OptionsWindow::OptionsWindow(const WeddingState& state, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("הגדרות"));
    setAccessibleName(windowTitle());
    setModal(true);
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    auto add = [&](const QString& label, const QString& value) {
        auto* field = new QLabel(value, this);
        field->setAccessibleName(label);
        form->addRow(label, field);
    };
    add(QStringLiteral("שמות בני הזוג:"), state.CoupleName);
    add(QStringLiteral("משפחת החתן:"), state.HisFamily);
    add(QStringLiteral("משפחת הכלה:"), state.HerFamily);
    add(QStringLiteral("תאריך החתונה:"), values::fromDate(state.WeddingDate));
    add(QStringLiteral("מספר שולחנות:"), QString::number(state.MaxTables));
    add(QStringLiteral("כסאות לשולחן:"), QString::number(state.MaxChairs));
    layout->addLayout(form);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

} // namespace velmora::ui
