#pragma once

#include "app/Failure.h"

#include <optional>
#include <utility>

namespace velmora {

class Prompts;

// Most operations go on past a failed step and report once at the end. A PendingFailure
// runs each step, keeps the first failure (later ones are mostly its consequences) and
// reports it once.
class PendingFailure {
public:
    // Which failure is reported when several steps failed: most operations name the first,
    // the reports the last, as the engine left it.
    enum class Keep { First, Last };
    explicit PendingFailure(Keep keep = Keep::First) : m_keep(keep) {}

    // Runs one step; a Failure it throws is kept and the step counts as skipped.
    template <class Step>
    bool attempt(Step&& step)
    {
        try {
            std::forward<Step>(step)();
            return true;
        } catch (const Failure& failure) {
            fail(failure);
            return false;
        }
    }

    void fail(const Failure& failure);
    void fail(int number, const QString& text) { fail(Failure(number, text)); }

    bool pending() const { return m_failure.has_value(); }
    explicit operator bool() const { return pending(); }
    const Failure& failure() const { return *m_failure; }
    int count() const { return m_count; }
    void clear();

    // The usual end of an operation: the failure's own text in a box with the warning
    // icon. Returns whether anything was shown; afterwards nothing is pending.
    bool report(Prompts& prompts);

private:
    std::optional<Failure> m_failure;
    int m_count = 0;
    Keep m_keep = Keep::First;
};

} // namespace velmora
