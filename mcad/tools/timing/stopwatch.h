// Where the time of a process goes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zeq::timing {

/// Adds up time by stages, one of which is under way at a time.
class Stopwatch {
public:
    /// Ends the stage under way and begins this one, or goes on with it.
    void begin(std::wstring_view stage);
    void end();
    /// The stage under way; empty for none.
    const std::wstring& stage() const { return m_stage; }

    /// "Reading 1.23 s (CPU 2.31 s), Sending ...": in the order in which the stages began, those that took a
    /// hundredth of a second or more. CPU is that of all threads of the process.
    std::wstring text() const;

private:
    struct Total {
        std::wstring stage;
        double wall = 0; ///< in seconds
        double cpu = 0;
    };
    struct Moment {
        double wall = 0;
        double cpu = 0;
    };
    static Moment now();

    std::vector<Total> m_totals;
    std::wstring m_stage;
    Moment m_begin;
};

/// Another stage, for as long as it lives; then the one before goes on.
class Lap {
public:
    Lap(Stopwatch& watch, std::wstring_view stage) : m_watch(watch), m_before(watch.stage()) {
        watch.begin(stage);
    }
    Lap(const Lap&) = delete;
    Lap& operator=(const Lap&) = delete;
    ~Lap() {
        if (m_before.empty())
            m_watch.end();
        else
            m_watch.begin(m_before);
    }

private:
    Stopwatch& m_watch;
    std::wstring m_before;
};

} // namespace zeq::timing
