// Whatever the translator does, zeq says what happened, with the right exit code, and leaves no shared
// buffer.
#include <csignal>
#include <filesystem>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "mp/shared_buffer.h"
#include "tools/zeq_run.h"

namespace {

using namespace zeq::test;
using namespace std::string_literals;
namespace fs = std::filesystem;

/// The shared buffers that the fake translator said it made.
std::vector<std::string> announcedBuffers(const RunResult& result) {
    const std::regex line("buffer ([0-9a-f-]{36})");
    std::vector<std::string> names;
    for (std::sregex_iterator at(result.errors.begin(), result.errors.end(), line), end; at != end; ++at)
        names.push_back((*at)[1]);
    return names;
}

void expectNoneLeft(const RunResult& result) {
    for (const std::string& name : announcedBuffers(result))
        EXPECT_FALSE(fs::exists(fs::path(mp::sharedDirectory()) / name)) << name;
}

const std::string file = ZEQ_FAKE_TRANSLATOR; // any file that exists: the fake translator does not read it

struct Row {
    std::string mode;
    int exitCode;
    std::string reason;
};

TEST(ZeqFaults, AFaultOfTheTranslatorIsNamed) {
    const std::vector<Row> rows{
        {"crash", 5, "the translator was killed by signal 11 (Segmentation fault) before it answered"},
        {"crash", 5, "before it answered; the file may be damaged"},
        {"killed", 5,
         "the translator was killed by signal 9 (Killed) before it answered; the memory of the machine may "
         "have run "
         "out"},
        {"banner", 5, "the translator broke the protocol: text instead of a frame: '\\x1B[31mLoading'"},
        {"word", 5,
         "the translator exited with status 0 after it wrote text instead of documents ('hi') before it"},
        {"exit", 5, "the translator exited with status 0 before it answered"},
        {"exit-7", 5, "the translator exited with status 7 before it answered"},
        {"half-frame", 5,
         "the translator exited with status 0 in the middle of a document before it answered"},
        {"huge-frame", 5, "the translator broke the protocol: a frame claims 4294967295 bytes"},
        {"not-utf8", 5, "the translator broke the protocol: malformed UTF-8: overlong sequence"},
        {"not-json", 5, "the translator sent a document that is no JSON object"},
        {"no-object", 5, "the translator sent a document that is no JSON object"},
        {"no-known-form", 5, "the translator sent a document that does not answer the command"},
        {"closes-output", 5, "the translator closed its output without an answer"},
        {"hostile-name", 5,
         "the shared buffer '../../etc/passwd' of 'exc_product_structure' cannot be loaded: Shared variable "
         "name is "
         "not a valid file name"},
        {"missing-buffer", 5, "cannot be loaded"},
        {"error", 4, "the translator reports a failure: the file\\x1B[2J is damaged"},
        {"interrupted", 4, "the translator was interrupted"},
        {"unknown-code", 5, "the translator sent a result without a known code"},
        {"no-structure", 5, "the translator sent no product structure"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.mode);
        const RunResult result = runFake(row.mode, {"import", file});
        EXPECT_EQ(result.exitCode, row.exitCode);
        EXPECT_TRUE(result.output.empty() || row.mode == "killed")
            << result.output; // which sends something before
        EXPECT_NE(result.errors.find("zeq: error: Cannot import '" + file + "': "), std::string::npos)
            << result.errors;
        EXPECT_NE(result.errors.find(row.reason), std::string::npos) << result.errors;
        expectNoneLeft(result);
    }
    EXPECT_TRUE(fs::exists("/etc/passwd"));
}

TEST(ZeqFaults, AFaultThatSparesTheResultIsOnlyAWarning) {
    const std::vector<Row> rows{
        {"unknown-kind", 0, "zeq: warning: skipped a document of the unknown kind 'exc_tomorrow'"},
        {"warning", 0, "zeq: warning: one face is missing"},
        {"two-results", 0, "zeq: warning: slow"},
        {"late-document", 0, ""},
        {"late-crash", 0,
         "zeq: warning: the translator was killed by signal 6 (Aborted) after it had answered"},
        {"noisy", 0, "zeq: translator: \\x1B[31mbanner"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.mode);
        const RunResult result = runFake(row.mode, {"tree", file});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_TRUE(result.output.starts_with("Assembly Cart")) << result.output;
        EXPECT_NE(result.errors.find(row.reason), std::string::npos) << result.errors;
        expectNoneLeft(result);
        EXPECT_GE(announcedBuffers(result).size(), 1U);
    }
}

TEST(ZeqFaults, ATranslatorThatStopsAnsweringRunsIntoTheTimeOut) {
    for (const std::string& command : {"import"s, "tree"s}) {
        const RunResult result = runFake("silent", {"--timeout", "0.2", command, file});
        EXPECT_EQ(result.exitCode, 6);
        EXPECT_NE(result.errors.find("the translator did not answer within 0.2 s"), std::string::npos)
            << result.errors;
    }
    // It neither reads nor heeds SIGTERM: it is killed.
    const RunResult deaf = runFake("deaf", {"--timeout", "0.2", "ping"});
    EXPECT_EQ(deaf.exitCode, 6);
}

TEST(ZeqFaults, ASignalEndsTheTranslatorToo) {
    for (const auto& [signal, name] : {std::pair(SIGINT, "Interrupt"), std::pair(SIGTERM, "Terminated")}) {
        RunOptions options;
        options.cue = "waiting";
        options.onCue = [signal = signal](pid_t zeq) { ::kill(zeq, signal); };
        const RunResult result = runFake("waits", {"import", file}, options);
        EXPECT_EQ(result.exitCode, 128 + signal);
        EXPECT_NE(result.errors.find("interrupted by signal " + std::to_string(signal) + " (" + name + ")"),
                  std::string::npos)
            << result.errors;
        EXPECT_EQ(announcedBuffers(result).size(), 2U);
        expectNoneLeft(result);
        const pid_t translator = std::stoi(result.errors.substr(result.errors.find("waiting as ") + 11));
        EXPECT_EQ(::kill(translator, 0), -1) << translator;
    }
}

TEST(ZeqFaults, TheSecondSignalKillsATranslatorThatIgnoresTheFirst) {
    RunOptions options;
    options.cue = "deaf";
    options.onCue = [](pid_t zeq) {
        ::kill(zeq, SIGINT);
        ::kill(zeq, SIGTERM);
    };
    const int exitCode = runFake("deaf", {"import", file}, options).exitCode;
    EXPECT_TRUE(exitCode == 128 + SIGINT || exitCode == 128 + SIGTERM) << exitCode; // whichever comes first
}

TEST(ZeqFaults, TwoImportsAtOnceDoNotDisturbEachOther) {
    std::vector<RunResult> results(2);
    std::vector<std::thread> threads;
    threads.reserve(results.size());
    for (RunResult& result : results)
        threads.emplace_back([&result] { result = runFake("", {"tree", file}); });
    for (std::thread& thread : threads) thread.join();
    for (const RunResult& result : results) {
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_EQ(result.output, results[0].output);
        expectNoneLeft(result);
    }
}

} // namespace
