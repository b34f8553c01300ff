// Runs programs of the tools for a test, with what they print caught.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

namespace zeq::test {

struct RunOptions {
    std::map<std::string, std::string> environment; ///< added to the test's own
    std::string input;                              ///< what standard input holds
    bool terminal = false;                          ///< standard error is a terminal
    /// Called once, when standard error holds `cue`, with the program's process id.
    std::string cue;
    std::function<void(pid_t)> onCue;
    bool closeOutput = false; ///< nobody reads standard output
};

struct RunResult {
    int exitCode = -1; ///< or 128 + the signal that killed the program
    std::string output;
    std::string errors;
};

/// Runs a program to its end.
RunResult runProgram(const std::vector<std::string>& command, const RunOptions& options = {});

/// Runs zeq with the fake translator in the given mode.
RunResult runFake(const std::string& mode, const std::vector<std::string>& arguments,
                  RunOptions options = {});

} // namespace zeq::test
