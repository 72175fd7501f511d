#pragma once

#include <QString>

namespace velmora::store {

// A copy of `source` written whole beside `target` under a temporary name: every byte
// written, flushed and synced before anything at `target` changes. Until commit() the
// target is untouched; a copy that is never committed leaves nothing behind.
// Failures throw velmora::Failure.
class StagedCopy {
public:
    StagedCopy(const QString& source, const QString& target);
    ~StagedCopy();
    StagedCopy(const StagedCopy&) = delete;
    StagedCopy& operator=(const StagedCopy&) = delete;

    // Puts the copy in place in one step. Without `overwrite`, an existing target is
    // kept and the copy fails.
    void commit(bool overwrite);

private:
    void write(const QString& source);
    void discard();

    QString m_target;
    QString m_temporary;
};

// The same in one call.
void copyFile(const QString& source, const QString& target, bool overwrite);

} // namespace velmora::store
