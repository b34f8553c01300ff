// Lines are kept with their thread field, and get their tag and time when they are released.
#include "mv_cvx/held_log.h"

namespace mv_cvx {

namespace {

// No more than a pointer: an object with a destructor would keep the library loaded as long as the thread runs.
ILogger*& ofThisThread() {
    static thread_local ILogger* held = nullptr;
    return held;
}

} // namespace

HeldLog::HeldLog() : m_outer(ofThisThread()) { ofThisThread() = this; }

HeldLog::~HeldLog() { stop(); }

void HeldLog::stop() {
    if (!std::exchange(m_isOver, true)) ofThisThread() = m_outer;
}

ILogger* HeldLog::active() { return ofThisThread(); }

void HeldLog::release() {
    stop();
    ILogger* const logger = LoggerHolder::logger();
    for (const auto& [level, text] : std::exchange(m_lines, {})) {
        if (!logger) break;
        logger->lock();
        logger->begin(level) << text;
        logger->endl();
        logger->flush();
        logger->unlock();
    }
}

std::ostream& HeldLog::begin(int level) {
    m_level = level;
    m_line.str({});
    return m_line;
}

void HeldLog::endl() { m_lines.emplace_back(m_level, m_line.str()); }

} // namespace mv_cvx
