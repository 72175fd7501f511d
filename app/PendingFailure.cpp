#include "app/PendingFailure.h"

#include "app/Prompts.h"

namespace velmora {

void PendingFailure::fail(const Failure& failure)
{
    if (!m_failure || m_keep == Keep::Last)
        m_failure = failure;
    ++m_count;
}

void PendingFailure::clear()
{
    m_failure.reset();
    m_count = 0;
}

bool PendingFailure::report(Prompts& prompts)
{
    if (!m_failure)
        return false;
    const Failure failure = *m_failure;
    clear();
    prompts.warning(failure.text());
    return true;
}

} // namespace velmora
