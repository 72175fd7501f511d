#include "desktop/ui/HelpWindow.h"

#include "desktop/Help.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace velmora::desktop::ui {

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("עזרה"));
    setLayoutDirection(Qt::RightToLeft);
    setModal(false);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowFlag(Qt::WindowMinMaxButtonsHint, true);

    m_browser = new QTextBrowser(this);
    m_browser->setObjectName(QStringLiteral("txtHelp"));
    m_browser->setAccessibleName(windowTitle());
    m_browser->setOpenExternalLinks(true);
    m_browser->setSource(QUrl(ManualUrl));

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* contents = buttons->addButton(QStringLiteral("תוכן העניינים"), QDialogButtonBox::ActionRole);
    contents->setObjectName(QStringLiteral("cmdContents"));
    QPushButton* close = buttons->addButton(QStringLiteral("סגור"), QDialogButtonBox::RejectRole);
    close->setObjectName(QStringLiteral("cmdClose"));
    connect(contents, &QPushButton::clicked, m_browser, &QTextBrowser::home);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_browser);
    layout->addWidget(buttons);
    resize(720, 600);
}

HelpWindow* ShowHelp(QWidget& owner, const QString& helpFile)
{
    if (OpenHelpFile(helpFile))
        return nullptr;
    if (!QFile::exists(ManualResource))
        return nullptr;
    auto* window = owner.findChild<HelpWindow*>(QString(), Qt::FindDirectChildrenOnly);
    if (!window)
        window = new HelpWindow(&owner);
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

} // namespace velmora::desktop::ui
