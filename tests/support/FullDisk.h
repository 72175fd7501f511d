#pragma once

#include <csignal>
#include <sys/resource.h>

namespace velmora::test {

// While it lives, no file may grow past `bytes`: a write beyond fails with EFBIG, as on a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes = 0)
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        m_handler = std::signal(SIGXFSZ, SIG_IGN); // the write fails instead of killing the test
        rlimit limit = m_old;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_old{};
    void (*m_handler)(int) = nullptr;
};

} // namespace velmora::test
