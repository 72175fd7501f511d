#include "store/FileCopy.h"

#include "app/Failure.h"

#include <QByteArray>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora::store {

namespace {

// The numbers a file copy has always failed with, and texts the user can act on.
[[noreturn]] void fail(int error, const QString& path)
{
    switch (error) {
    case ENOENT:
        throw Failure(53, QStringLiteral("הקובץ '%1' לא נמצא.").arg(path));
    case EEXIST:
        throw Failure(58, QStringLiteral("הקובץ '%1' כבר קיים.").arg(path));
    case ENOSPC:
    case EFBIG:
    case EDQUOT:
        throw Failure(61, QStringLiteral("אין די מקום בדיסק לקובץ '%1'.").arg(path));
    case EACCES:
    case EPERM:
    case EROFS:
        throw Failure(70, QStringLiteral("אין הרשאת גישה לקובץ '%1'.").arg(path));
    case ENOTDIR:
        throw Failure(76, QStringLiteral("הנתיב '%1' לא נמצא.").arg(path));
    default:
        throw Failure(75, QStringLiteral("שגיאת גישה לקובץ '%1': %2").arg(path, QString::fromLocal8Bit(std::strerror(error))));
    }
}

class Descriptor {
public:
    explicit Descriptor(int fd) : m_fd(fd) {}
    ~Descriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return m_fd; }
    // Closing can report a write that failed late; it counts.
    int release()
    {
        const int result = ::close(m_fd);
        m_fd = -1;
        return result;
    }

private:
    int m_fd;
};

void writeAll(int fd, const char* data, ssize_t size, const QString& path)
{
    while (size > 0) {
        const ssize_t written = ::write(fd, data, size_t(size));
        if (written < 0) {
            if (errno == EINTR)
                continue;
            fail(errno, path);
        }
        data += written;
        size -= written;
    }
}

void syncFolder(const QString& file)
{
    // The rename is only lasting once the folder itself is on disk.
    const QByteArray path = QFile::encodeName(QFileInfo(file).absolutePath());
    const Descriptor folder(::open(path.constData(), O_RDONLY | O_DIRECTORY));
    if (folder.get() >= 0)
        ::fsync(folder.get());
}

} // namespace

StagedCopy::StagedCopy(const QString& source, const QString& target) : m_target(target)
{
    try {
        write(source);
    } catch (...) {
        discard();
        throw;
    }
}

void StagedCopy::discard()
{
    if (!m_temporary.isEmpty())
        ::unlink(QFile::encodeName(m_temporary).constData());
    m_temporary.clear();
}

void StagedCopy::write(const QString& source)
{
    const QString& target = m_target;
    const QByteArray sourceName = QFile::encodeName(source);
    Descriptor in(::open(sourceName.constData(), O_RDONLY | O_CLOEXEC));
    if (in.get() < 0)
        fail(errno, source);
    struct stat info {};
    if (::fstat(in.get(), &info) != 0)
        fail(errno, source);
    if (!S_ISREG(info.st_mode))
        fail(ENOENT, source);

    // Beside the target, so that the rename stays on one file system.
    const QFileInfo place(target);
    QByteArray pattern = QFile::encodeName(place.absolutePath() + QStringLiteral("/.") + place.fileName())
        + ".XXXXXX";
    Descriptor out(::mkstemp(pattern.data()));
    if (out.get() < 0)
        fail(errno == ENOENT ? ENOTDIR : errno, target); // the target's folder isn't there
    m_temporary = QFile::decodeName(pattern);
    ::fchmod(out.get(), info.st_mode & 07777);

    QByteArray buffer(1 << 16, Qt::Uninitialized);
    for (;;) {
        const ssize_t got = ::read(in.get(), buffer.data(), size_t(buffer.size()));
        if (got < 0) {
            if (errno == EINTR)
                continue;
            fail(errno, source);
        }
        if (got == 0)
            break;
        writeAll(out.get(), buffer.constData(), got, target);
    }
    if (::fsync(out.get()) != 0)
        fail(errno, target);
    if (out.release() != 0)
        fail(errno, target);
    // Whole, or not at all: a copy shorter than its source never goes into place.
    struct stat written {};
    if (::stat(pattern.constData(), &written) != 0)
        fail(errno, target);
    if (written.st_size != info.st_size)
        fail(EIO, target);
}

StagedCopy::~StagedCopy()
{
    discard();
}

void StagedCopy::commit(bool overwrite)
{
    const QByteArray from = QFile::encodeName(m_temporary);
    const QByteArray to = QFile::encodeName(m_target);
    if (overwrite) {
        if (::rename(from.constData(), to.constData()) != 0)
            fail(errno, m_target);
    } else {
        // One step that refuses an existing name; a hard link where the file system
        // doesn't offer it.
        if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) != 0) {
            if (errno != EINVAL && errno != ENOSYS)
                fail(errno, m_target);
            if (::link(from.constData(), to.constData()) != 0)
                fail(errno, m_target);
            ::unlink(from.constData());
        }
    }
    m_temporary.clear();
    syncFolder(m_target);
}

void copyFile(const QString& source, const QString& target, bool overwrite)
{
    if (!overwrite && QFileInfo::exists(target))
        fail(EEXIST, target);
    StagedCopy copy(source, target);
    copy.commit(overwrite);
}

} // namespace velmora::store
