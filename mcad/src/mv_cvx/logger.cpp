// The layout of log lines, and the change from one log file to another.
#include "mv_cvx/logger.h"

#include <ctime>
#include <iomanip>
#include <thread>

#include "mv_cvx/held_log.h"

namespace mv_cvx {

namespace {

/// Every tag has 10 characters, so that the text after it is aligned.
const char* tagOf(int level) {
    switch (level) {
    case Fatal:
        return "[FATAL]   ";
    case Error:
        return "[ERROR]   ";
    case Warning:
        return "[WARNING] ";
    case Info:
        return "[INFO]    ";
    case Debug:
        return "[DEBUG]   ";
    case Trace:
        return "[TRACE]   ";
    default:
        return "[UNKNOWN] ";
    }
}

} // namespace

Logger::Logger(int /*level: the threshold lives in LoggerHolder*/, const std::string& path)
    : m_stream(path, std::ios::out | std::ios::app) {}

Logger::~Logger() = default;

bool Logger::isValid() const { return m_stream.is_open(); }

std::ostream& Logger::begin(int level) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return m_stream << tagOf(level) << '[' << std::put_time(&local, "%d.%m.%Y %T") << "] ";
}

void Logger::lock() { m_mutex.lock(); }
void Logger::unlock() { m_mutex.unlock(); }
void Logger::flush() { m_stream.flush(); }
void Logger::endl() { m_stream << std::endl; }

int LoggerHolder::s_level = 0;
std::unique_ptr<ILogger> LoggerHolder::s_pLogger;

void LoggerHolder::initLogger(int level, const std::string& path) {
    if (level <= 0) return;
    s_level = level;
    s_pLogger = std::make_unique<Logger>(level, path);
    if (!s_pLogger->isValid()) {
        s_pLogger.reset();
        return;
    }
    s_pLogger->begin(Info) << std::string(102, '=');
    s_pLogger->endl();
    s_pLogger->begin(Info) << "Logger initialized with level " << level;
    s_pLogger->endl();
}

ILogger* LoggerHolder::logger() {
    ILogger* const held = HeldLog::active();
    return held ? held : s_pLogger.get();
}

MTLogger::MTLogger(ILogger& logger) : m_logger(logger) { m_logger.lock(); }

MTLogger::~MTLogger() {
    m_logger.endl();
    m_logger.flush();
    m_logger.unlock();
}

std::ostream& MTLogger::begin(int level) {
    return m_logger.begin(level) << '[' << std::hex << std::this_thread::get_id() << std::dec << "] ";
}

} // namespace mv_cvx
