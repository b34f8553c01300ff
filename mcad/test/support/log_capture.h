// Lets a test see what the library logs.
#pragma once

#include <ios>
#include <iosfwd>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace zeq::test {

/// One message of the log: its level by its tag, and what follows the thread field.
struct LogLine {
    int level;
    std::string text;

    bool operator==(const LogLine&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const LogLine& line);

/// Logs into a file of its own while it lives, and turns logging off at its end.
class LogCapture {
public:
    explicit LogCapture(int level = 6);
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    ~LogCapture();

    /// The messages since the last call, without the logger's own start lines.
    std::vector<LogLine> take();

private:
    TempDir m_dir;
    std::string m_path;
    std::streamoff m_taken = 0;
};

} // namespace zeq::test
