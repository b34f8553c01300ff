// Wraps reports into exchange objects and limits how many travel.
#include "convexor/reporter.h"

#include <algorithm>
#include <memory>

#include "zeq_api/exchange_object/messages.h"

namespace zeq::convexor {

void Reporter::advance(double part) {
    using namespace std::chrono_literals;
    const int percent = std::clamp(static_cast<int>(part * 100), 0, 100);
    if (percent == m_percent || Clock::now() - m_sent < 50ms) return;
    m_percent = percent;
    sendProgress();
}

void Reporter::log(ELogEventLevelType level, const std::wstring& line) {
    if (isLogged(level)) m_channel.send(std::make_shared<ExcLog>(line));
}

void Reporter::message(const std::wstring& text) { m_channel.send(std::make_shared<ExcMessage>(text)); }

void Reporter::logTimes() {
    m_watch.end();
    const std::wstring times = m_watch.text();
    if (m_logLevel == ELogEventLevelType::verbose && !times.empty())
        log(ELogEventLevelType::verbose, L"Times: " + times);
}

void Reporter::begin(const std::wstring& stage, bool pulse) {
    m_watch.begin(stage);
    m_stage = stage;
    m_pulse = pulse;
    m_percent = 0;
    sendProgress();
}

void Reporter::sendProgress() {
    const auto progress = std::make_shared<ExcProgress>();
    progress->setProgress(m_percent);
    progress->setPulse(m_pulse);
    progress->setStage(m_stage);
    m_sent = Clock::now();
    m_channel.send(progress);
}

} // namespace zeq::convexor
