#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

/// Says what is being done, and for how long by now, once it has taken a second and standard error
/// is a terminal; wipes the line when it is over.
class Progress {
public:
    Progress(std::string what, bool quiet);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

private:
    void tell();

    std::string m_what;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_over = false;
    std::thread m_teller; // none when there is nobody to tell
};
