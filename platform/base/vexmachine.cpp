#include "platform/base/vexmachine.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <pwd.h>
#include <string>
#include <unistd.h>

namespace {

CVexMachine* installedMachine = nullptr;

VexMoment momentOf(const std::tm& terms, int millisecond)
{
    return {terms.tm_year + 1900, terms.tm_mon + 1, terms.tm_mday, terms.tm_hour,
            terms.tm_min,         terms.tm_sec,     millisecond};
}

// The clock's time through `split`, which is gmtime_r or localtime_r.
VexMoment nowBy(std::tm* (*split)(const std::time_t*, std::tm*))
{
    std::timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    std::tm terms = {};
    split(&now.tv_sec, &terms);
    return momentOf(terms, static_cast<int>(now.tv_nsec / 1'000'000));
}

} // namespace

VexMoment CVexMachine::utcNow() const
{
    return nowBy(gmtime_r);
}

VexMoment CVexMachine::localNow() const
{
    return nowBy(localtime_r);
}

double CVexMachine::steadySeconds() const
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

CString CVexMachine::computerName() const
{
    std::array<char, 256> name = {};
    if (gethostname(name.data(), name.size() - 1) != 0) {
        return CString();
    }
    return CString::fromUtf8(name.data());
}

CString CVexMachine::userName() const
{
    // A machine may know a user by number only, as containers do; the session's name stands in.
    const passwd* const entry = getpwuid(geteuid());
    if (entry != nullptr && entry->pw_name != nullptr) {
        return CString::fromUtf8(entry->pw_name);
    }
    const char* const name = std::getenv("LOGNAME");
    return name == nullptr ? CString() : CString::fromUtf8(name);
}

CString CVexMachine::modulePath() const
{
    constexpr std::size_t kLongestPath = std::size_t{1} << 16;
    for (std::string path(256, '\0'); path.size() <= kLongestPath; path.resize(2 * path.size())) {
        const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
        if (length < 0) {
            return CString();
        }
        if (static_cast<std::size_t>(length) < path.size()) {
            path.resize(static_cast<std::size_t>(length));
            return CString::fromUtf8(path);
        }
    }
    return CString();
}

std::uint64_t CVexMachine::identifierSeed() const
{
    const VexMoment now = utcNow();
    std::uint64_t seed = 0;
    for (const int term :
         {now.year - 2000, now.month, now.day, now.hour, now.minute, now.second, now.millisecond}) {
        seed = (seed << 8) + static_cast<std::uint64_t>(std::max(term, 0));
    }
    return std::max<std::uint64_t>(seed, 1);
}

bool CVexMachine::mayAllocate(std::size_t) const
{
    return true;
}

void CVexMachine::report(const CString& message)
{
    std::fprintf(stderr, "%s\n", message.utf8().c_str());
}

CVexFileLayer& CVexMachine::files()
{
    static CVexFileLayer layer;
    return layer;
}

CVexMachine& CVexMachine::current()
{
    static CVexMachine real;
    return installedMachine != nullptr ? *installedMachine : real;
}

CVexMachine* CVexMachine::install(CVexMachine* machine)
{
    CVexMachine* const before = installedMachine;
    installedMachine = machine;
    return before;
}
