// What stands in the log file, and when nothing does.
#include "mv_cvx/logger.h"

#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

#include "mv_cvx/held_log.h"
#include "support/log_capture.h"
#include "support/temp_dir.h"

namespace {

using mv_cvx::LoggerHolder;
using zeq::test::LogCapture;
using zeq::test::LogLine;
using zeq::test::TempDir;

const std::string date = R"( *\[\d\d\.\d\d\.\d{4} \d\d:\d\d:\d\d\] )";

std::vector<std::string> linesOf(const std::string& path) {
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
}

void expectMatch(const std::string& line, const std::string& pattern) {
    EXPECT_TRUE(std::regex_match(line, std::regex(pattern))) << line << "\nis not " << pattern;
}

void turnOff() { LoggerHolder::initLogger(1, ""); }

TEST(Logger, IsOffUntilInitialisedWithAPositiveLevel) {
    const TempDir dir;
    for (const int level : {0, -1}) {
        LoggerHolder::initLogger(level, dir.file("log"));
        EXPECT_FALSE(LoggerHolder::levelEnabled(1));
        EXPECT_EQ(LoggerHolder::logger(), nullptr);
    }
    EXPECT_FALSE(std::filesystem::exists(dir.file("log")));
}

TEST(Logger, StartLinesHaveNoThreadFieldAndPassAnyLevel) {
    const TempDir dir;
    LoggerHolder::initLogger(3, dir.file("log"));
    turnOff();
    const auto lines = linesOf(dir.file("log"));
    ASSERT_EQ(lines.size(), 2u);
    expectMatch(lines[0], R"(\[INFO\]    \[[\d.]{10} [\d:]{8}\] ={102})");
    expectMatch(lines[1], R"(\[INFO\]    \[[\d.]{10} [\d:]{8}\] Logger initialized with level 3)");
}

TEST(Logger, LevelsUpToItsOwnAreEnabled) {
    const LogCapture log(3);
    for (int level = 1; level <= 7; ++level)
        EXPECT_EQ(LoggerHolder::levelEnabled(level), level <= 3) << level;
}

TEST(Logger, ALevelThatChangesNothingKeepsTheLogger) {
    LogCapture log(2);
    LoggerHolder::initLogger(0, "/nowhere/log");
    ZEQ_LOG(Error) << "still here";
    EXPECT_EQ(log.take(), (std::vector<LogLine>{{2, "still here"}}));
}

TEST(Logger, LineIsTagDateThreadMessage) {
    const TempDir dir;
    LoggerHolder::initLogger(6, dir.file("log"));
    ZEQ_LOG(Fatal) << "a";
    ZEQ_LOG(Error) << "b";
    ZEQ_LOG(Warning) << "c";
    ZEQ_LOG(Info) << "d";
    ZEQ_LOG(Debug) << "e";
    ZEQ_LOG(Trace) << "number " << 26;
    mv_cvx::MTLogger(*LoggerHolder::logger()).begin(7) << "g";
    turnOff();

    std::ostringstream thread;
    thread << R"(\[)" << std::hex << std::this_thread::get_id() << R"(\] )";
    auto lines = linesOf(dir.file("log"));
    lines.erase(lines.begin(), lines.begin() + 2);
    const char* expected[][2] = {{"[FATAL]   ", "a"}, {"[ERROR]   ", "b"}, {"[WARNING] ", "c"},
                                 {"[INFO]    ", "d"}, {"[DEBUG]   ", "e"}, {"[TRACE]   ", "number 26"},
                                 {"[UNKNOWN] ", "g"}};
    ASSERT_EQ(lines.size(), std::size(expected));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].substr(0, 11), expected[i][0] + std::string("["));
        expectMatch(lines[i].substr(10), date + thread.str() + expected[i][1]);
    }
}

TEST(Logger, NothingIsEvaluatedWhenTheLevelIsOff) {
    LogCapture log(2);
    int evaluated = 0;
    ZEQ_LOG(Warning) << ++evaluated;
    EXPECT_EQ(evaluated, 0);
    ZEQ_LOG(Error) << ++evaluated;
    EXPECT_EQ(evaluated, 1);
    turnOff();
    ZEQ_LOG(Error) << ++evaluated;
    EXPECT_EQ(evaluated, 1);
}

TEST(Logger, ALogStatementLeavesTheElseToItsIf) {
    LogCapture log;
    for (const bool good : {true, false}) {
        if (!good)
            ZEQ_LOG(Warning) << "bad";
        else
            ZEQ_LOG(Info) << "good";
    }
    EXPECT_EQ(log.take(), (std::vector<LogLine>{{4, "good"}, {3, "bad"}}));
}

TEST(Logger, AnExceptionWithinALineEndsTheLine) {
    LogCapture log;
    const auto fail = []() -> int { throw std::runtime_error("no"); };
    EXPECT_THROW(ZEQ_LOG(Error) << "value " << fail(), std::runtime_error);
    ZEQ_LOG(Error) << "next";
    EXPECT_EQ(log.take(), (std::vector<LogLine>{{2, "value "}, {2, "next"}}));
}

TEST(HeldLog, PassesOnWhatIsReleasedAndDropsTheRest) {
    LogCapture log(mv_cvx::Info);
    {
        const mv_cvx::HeldLog dropped;
        ZEQ_LOG(Error) << "dropped";
        std::thread([] { ZEQ_LOG(Info) << "of another thread"; }).join();
    }
    mv_cvx::HeldLog outer;
    ZEQ_LOG(Error) << "first";
    {
        mv_cvx::HeldLog inner;
        ZEQ_LOG(Warning) << "second";
        inner.release();
    }
    ZEQ_LOG(Debug) << "beyond the level";
    EXPECT_EQ(log.take(), (std::vector<LogLine>{{mv_cvx::Info, "of another thread"}}));
    outer.release();
    ZEQ_LOG(Info) << "third";
    EXPECT_EQ(log.take(),
              (std::vector<LogLine>{
                  {mv_cvx::Error, "first"}, {mv_cvx::Warning, "second"}, {mv_cvx::Info, "third"}}));
}

TEST(Logger, AppendsToTheFileItFindsAndMovesToAnother) {
    const TempDir dir;
    std::ofstream(dir.file("log")) << "before\n";
    LoggerHolder::initLogger(2, dir.file("log"));
    LoggerHolder::initLogger(4, dir.file("log"));
    LoggerHolder::initLogger(4, dir.file("other"));
    ZEQ_LOG(Info) << "elsewhere";
    turnOff();
    const auto lines = linesOf(dir.file("log"));
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0], "before");
    EXPECT_TRUE(lines[2].ends_with("Logger initialized with level 2"));
    EXPECT_TRUE(lines[4].ends_with("Logger initialized with level 4"));
    EXPECT_EQ(linesOf(dir.file("other")).size(), 3u);
}

TEST(Logger, AFileThatCannotBeOpenedTurnsLoggingOff) {
    const TempDir dir;
    for (const std::string& path : {dir.path().string(), dir.file("missing/log"), std::string()}) {
        LoggerHolder::initLogger(6, dir.file("log"));
        ASSERT_TRUE(LoggerHolder::levelEnabled(6));
        LoggerHolder::initLogger(6, path);
        EXPECT_FALSE(LoggerHolder::levelEnabled(1)) << path;
        EXPECT_EQ(LoggerHolder::logger(), nullptr) << path;
        EXPECT_FALSE(mv_cvx::Logger(6, path).isValid()) << path;
    }
}

TEST(Logger, LinesOfSixteenThreadsDoNotMix) {
    const auto forEachLineOf = [](int thread, auto&& visit) {
        for (int line = 0; line < 200; ++line)
            visit(std::to_string(thread) + ':' + std::to_string(line) + ' ' + std::string(100, 'x') + " end");
    };
    std::multiset<std::string> expected, found;
    LogCapture log;
    {
        std::vector<std::jthread> running;
        for (int thread = 0; thread < 16; ++thread) {
            forEachLineOf(thread, [&](std::string line) { expected.insert(std::move(line)); });
            running.emplace_back([&forEachLineOf, thread] {
                forEachLineOf(thread, [](const std::string& line) { ZEQ_LOG(Info) << line; });
            });
        }
    }
    for (const LogLine& line : log.take()) found.insert(line.text);
    EXPECT_EQ(found, expected);
}

} // namespace
