#pragma once

#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <map>
#include <string>
#include <time.h>

/// Seconds that `work` takes.
template <class Work>
double secondsOf(Work&& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Seconds of this thread's own time that `work` takes: for work that waits for nothing, so that
/// what else the machine does counts less.
template <class Work>
double cpuSecondsOf(Work&& work)
{
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
    };
    const double start = now();
    work();
    return now() - start;
}

/// Gathers both sides of a comparison over the iterations of one benchmark and reports them: time
/// and nanoseconds an item of ours, the ratio to the plain form in the same run, and over the sizes
/// the growth exponent (1 is linear), beside which the plain form's own tells how much of the
/// growth is the machine's: what is small stays in its cache.
class Comparison {
public:
    Comparison(benchmark::State& state, std::string name, double items)
        : m_state(state), m_name(std::move(name)), m_items(items)
    {
    }
    /// One round: ours is the benchmark's own time.
    void round(double ours, double plain)
    {
        m_state.SetIterationTime(ours);
        m_ours = m_rounds == 0 ? ours : std::min(m_ours, ours);
        m_plain = m_rounds == 0 ? plain : std::min(m_plain, plain);
        ++m_rounds;
    }
    ~Comparison()
    {
        m_state.counters["ns_each"] = m_ours * 1e9 / m_items;
        m_state.counters["plain_ns_each"] = m_plain * 1e9 / m_items;
        m_state.counters["ours/plain"] = m_ours / m_plain;
        auto& seen = times()[m_name];
        if (!seen.empty()) {
            const auto& [n, before] = *seen.begin();
            const double growth = std::log(m_items / n);
            m_state.counters["exponent"] = std::log(m_ours / before.ours) / growth;
            m_state.counters["plain_exponent"] = std::log(m_plain / before.plain) / growth;
        }
        seen[m_items] = {m_ours, m_plain};
    }
    Comparison(const Comparison&) = delete;
    Comparison& operator=(const Comparison&) = delete;

private:
    struct Seconds {
        double ours = 0.0;
        double plain = 0.0;
    };

    static std::map<std::string, std::map<double, Seconds>>& times()
    {
        static std::map<std::string, std::map<double, Seconds>> all;
        return all;
    }
    benchmark::State& m_state;
    std::string m_name;
    double m_items;
    double m_ours = 0.0;
    double m_plain = 0.0;
    int m_rounds = 0;
};

/// How many times the figure of the smallest size this one is: 1 does not grow with the drawing.
inline double timesSmallest(const std::string& name, double figure)
{
    static std::map<std::string, double> smallest;
    return figure / smallest.try_emplace(name, figure).first->second;
}
