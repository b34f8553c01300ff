// Reads the log file back: tag, date and thread are cut off, the level is told from the tag.
#include "support/log_capture.h"

#include <array>
#include <fstream>
#include <ostream>
#include <string_view>

#include "mv_cvx/logger.h"

namespace zeq::test {

namespace {

constexpr std::array<std::string_view, 6> tags{"[FATAL]   ", "[ERROR]   ", "[WARNING] ",
                                               "[INFO]    ", "[DEBUG]   ", "[TRACE]   "};

/// Level of a line by its tag; 0 for the further lines of a message that contains line ends.
int levelOf(std::string_view line) {
    for (std::size_t i = 0; i < tags.size(); ++i) {
        if (line.starts_with(tags[i])) return static_cast<int>(i) + 1;
    }
    return 0;
}

std::string messageOf(const std::string& line) {
    const std::size_t date = line.find("] [", tags.front().size());
    const std::size_t thread = date == std::string::npos ? date : line.find("] ", date + 3);
    return thread == std::string::npos ? "<no thread field> " + line : line.substr(thread + 2);
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const LogLine& line) {
    return stream << '{' << line.level << ", \"" << line.text << "\"}";
}

LogCapture::LogCapture(int level) : m_path(m_dir.file("log")) {
    mv_cvx::LoggerHolder::initLogger(level, m_path);
    m_taken = static_cast<std::streamoff>(std::filesystem::file_size(m_path));
}

LogCapture::~LogCapture() {
    mv_cvx::LoggerHolder::initLogger(mv_cvx::Fatal, ""); // no such file: off
}

std::vector<LogLine> LogCapture::take() {
    std::ifstream file(m_path, std::ios::binary);
    file.seekg(m_taken);
    std::vector<LogLine> lines;
    for (std::string line; std::getline(file, line);) {
        m_taken += static_cast<std::streamoff>(line.size()) + 1;
        if (const int level = levelOf(line)) {
            lines.push_back({level, messageOf(line)});
        } else if (!lines.empty()) {
            lines.back().text += '\n' + line;
        }
    }
    return lines;
}

} // namespace zeq::test
