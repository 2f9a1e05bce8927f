#include "host/vextool/progress.h"

#include <chrono>
#include <iostream>
#include <unistd.h>
#include <utility>

Progress::Progress(std::string what, bool quiet) : m_what(std::move(what))
{
    if (!quiet && isatty(STDERR_FILENO) != 0) {
        m_teller = std::thread([this] { tell(); });
    }
}

Progress::~Progress()
{
    if (!m_teller.joinable()) {
        return;
    }
    {
        const std::lock_guard lock(m_mutex);
        m_over = true;
    }
    m_wake.notify_one();
    m_teller.join();
}

void Progress::tell()
{
    std::unique_lock lock(m_mutex);
    for (int seconds = 1;
         !m_wake.wait_for(lock, std::chrono::seconds(1), [this] { return m_over; }); ++seconds) {
        std::cerr << "\rvextool: " << m_what << ", " << seconds << " s" << std::flush;
    }
    std::cerr << "\r\033[K" << std::flush;
}
