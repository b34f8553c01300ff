// What the trace lines of the log say.
#pragma once

#include <string>
#include <vector>

#include "mv_cvx/logger.h"
#include "support/log_capture.h"

namespace zeq::test {

/// The signatures that trace lines give for functions of this area; any other line in full.
inline std::vector<std::string> signaturesOf(const std::vector<LogLine>& lines, const std::string& area) {
    std::vector<std::string> signatures;
    for (const LogLine& line : lines) {
        const std::size_t end = line.text.find("): ");
        const bool isTrace = line.level == mv_cvx::Trace && line.text.starts_with(area + "(");
        signatures.push_back(isTrace && end != std::string::npos ? line.text.substr(end + 3) : line.text);
    }
    return signatures;
}

} // namespace zeq::test
