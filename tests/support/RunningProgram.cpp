#include "RunningProgram.h"

#include "app/ui/MainWindow.h"
#include "seating/ui/TableMapWindow.h"

#include <QComboBox>

namespace velmora::test {

bool RunningProgram::start(const QString& folder)
{
    stop();
    state = WeddingState();
    windows = ui::Main(state, prompts, folder);
    return bool(windows);
}

void RunningProgram::stop()
{
    if (windows && windows->main->isVisible()) {
        windows->tableMap->SaveTablePositions();
        windows->main->close();
    }
    windows.reset();
}

void RunningProgram::finish()
{
    stop();
    prompts.verifyDone();
}

ui::MainWindow& RunningProgram::main() const { return *windows->main; }
ui::TableMapWindow& RunningProgram::map() const { return *windows->tableMap; }

void RunningProgram::chooseGroup(int index) const
{
    main().cmbUserGroups()->setCurrentIndex(index);
    emit main().cmbUserGroups()->activated(index);
}

} // namespace velmora::test
