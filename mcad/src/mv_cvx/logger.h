// The one process-wide file logger. Nothing is recorded until LoggerHolder::initLogger is called.
#pragma once

#include <fstream>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>

namespace mv_cvx {

/// Levels of log lines; a line is recorded when its level is not above the logger's.
enum Level : int {
    Fatal = 1,
    Error = 2,
    Warning = 3,
    Info = 4,
    Debug = 5,
    Trace = 6
};

/// A sink of log lines.
class ILogger {
public:
    virtual ~ILogger() = default;
    virtual bool isValid() const = 0;
    /// Starts a line with its tag and time and returns the stream to write the rest into.
    virtual std::ostream& begin(int level) = 0;
    virtual void lock() = 0;
    virtual void unlock() = 0;
    virtual void flush() = 0;
    /// Ends the line and flushes.
    virtual void endl() = 0;
};

/// Appends lines to a file; a file that cannot be opened makes an invalid logger, not an error.
class Logger : public ILogger {
public:
    Logger(int level, const std::string& path);
    ~Logger() override;

    bool isValid() const override;
    std::ostream& begin(int level) override;
    void lock() override;
    void unlock() override;
    void flush() override;
    void endl() override;

private:
    std::ofstream m_stream;
    std::mutex m_mutex;
};

/// Owner of the process's logger and of the level up to which lines are recorded.
class LoggerHolder {
public:
    /// Starts logging to `path`, or moves it there. A level below 1 changes nothing; a file that cannot be
    /// opened turns logging off. To be called early, before other threads log.
    static void initLogger(int level, const std::string& path);
    static bool levelEnabled(int level) { return level <= s_level && s_pLogger && s_pLogger->isValid(); }
    /// The current logger; null while logging is off.
    static ILogger* logger();

private:
    static int s_level;
    static std::unique_ptr<ILogger> s_pLogger;
};

/// One line: holds the logger's lock from construction to destruction, which ends the line.
class MTLogger {
public:
    explicit MTLogger(ILogger& logger);
    MTLogger(const MTLogger&) = delete;
    MTLogger& operator=(const MTLogger&) = delete;
    ~MTLogger();

    /// Starts the line with tag, time and thread identifier.
    std::ostream& begin(int level);

private:
    ILogger& m_logger;
};

} // namespace mv_cvx

/// `ZEQ_LOG(Error) << ...;` writes one line; nothing to the right is evaluated when the level is off. What is
/// evaluated there must not log itself: the logger is locked.
#define ZEQ_LOG(level)                                                                                       \
    switch (0) /* one statement: an else after it belongs to the if before it */                             \
    default:                                                                                                 \
        if (!::mv_cvx::LoggerHolder::levelEnabled(::mv_cvx::level)) {                                        \
        } else                                                                                               \
            ::mv_cvx::MTLogger(*::mv_cvx::LoggerHolder::logger()).begin(::mv_cvx::level)
