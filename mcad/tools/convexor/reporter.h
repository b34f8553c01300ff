// Tells the host how the work goes on: stages, progress, log lines and messages.
#pragma once

#include <chrono>
#include <string>

#include "convexor/channel.h"
#include "timing/stopwatch.h"
#include "zeq_api/format_options/common_options.h"

namespace zeq::convexor {

/// Reports of one command. A stage is named as soon as it begins; its progress then travels at most twenty
/// times a second, however often the work calls.
class Reporter {
public:
    explicit Reporter(Channel& channel) : m_channel(channel) {}

    /// Begins a stage whose progress cannot be measured.
    void beginPulse(const std::wstring& stage) { begin(stage, true); }
    /// Begins a stage that calls advance().
    void beginStage(const std::wstring& stage) { begin(stage, false); }
    /// `part` of the stage, 0 to 1, is done.
    void advance(double part);

    /// Keeps back log lines that are less grave than `level`; `unknown`, as at first, keeps back none.
    void limitLog(ELogEventLevelType level) { m_logLevel = level; }
    bool isLogged(ELogEventLevelType level) const {
        return m_logLevel == ELogEventLevelType::unknown || level <= m_logLevel;
    }
    /// A line for the log.
    void log(ELogEventLevelType level, const std::wstring& line);
    /// A text for the user.
    void message(const std::wstring& text);

    /// Measures the stages, and whatever within them is to be told by itself.
    timing::Stopwatch& watch() { return m_watch; }
    /// A log line with the times of the stages, only for who asks for all lines.
    void logTimes();

private:
    using Clock = std::chrono::steady_clock;

    void begin(const std::wstring& stage, bool pulse);
    void sendProgress();

    Channel& m_channel;
    timing::Stopwatch m_watch;
    ELogEventLevelType m_logLevel = ELogEventLevelType::unknown;
    std::wstring m_stage;
    bool m_pulse = false;
    int m_percent = 0;
    Clock::time_point m_sent;
};

} // namespace zeq::convexor
