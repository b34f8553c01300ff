// From the option group to the library's logger.
#include "convexor/log_file.h"

#include <filesystem>
#include <system_error>

#include "mv_cvx/logger.h"
#include "transport/utf8.h"

namespace zeq::convexor {

namespace {

int loggerLevel(ELogEventLevelType level) {
    switch (level) {
    case ELogEventLevelType::none:
        return 0;
    case ELogEventLevelType::abort:
        return mv_cvx::Fatal;
    case ELogEventLevelType::error:
        return mv_cvx::Error;
    case ELogEventLevelType::warning:
        return mv_cvx::Warning;
    case ELogEventLevelType::verbose:
        return mv_cvx::Trace;
    case ELogEventLevelType::information:
    case ELogEventLevelType::unknown:
        break;
    }
    return mv_cvx::Info;
}

} // namespace

void startLog(const OptionsGeneral& options) {
    if (options.logFileName().empty()) return;
    const std::filesystem::path path =
        std::filesystem::path(transport::toUtf8(options.loggingOutputDirectory())) /
        transport::toUtf8(options.logFileName());
    if (std::error_code ignored; options.loggingMode() == ELoggingModeType::atomic)
        std::filesystem::remove(path, ignored);
    mv_cvx::LoggerHolder::initLogger(loggerLevel(options.logEventLevel()), path.string());
}

} // namespace zeq::convexor
