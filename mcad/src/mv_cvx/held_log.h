// Log lines that are written later, or never. Internal.
#pragma once

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "mv_cvx/logger.h"

namespace mv_cvx {

/// While it lives, what its thread logs is kept; release() passes that on, and what was not released is dropped. For
/// work that may turn out not to have been done.
class HeldLog : private ILogger {
public:
    HeldLog();
    HeldLog(const HeldLog&) = delete;
    HeldLog& operator=(const HeldLog&) = delete;
    ~HeldLog() override;

    /// Keeps nothing more.
    void stop();
    /// The same, and passes on what was kept.
    void release();

    /// The one that keeps the lines of this thread; null without one.
    static ILogger* active();

private:
    bool isValid() const override { return true; }
    std::ostream& begin(int level) override;
    void lock() override {}
    void unlock() override {}
    void flush() override {}
    void endl() override;

    ILogger* m_outer;
    bool m_isOver = false;
    int m_level = 0;
    std::ostringstream m_line;
    std::vector<std::pair<int, std::string>> m_lines;
};

} // namespace mv_cvx
