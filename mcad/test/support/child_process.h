// A second process for a test, by fork.
#pragma once

#include <cstdio>
#include <exception>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace zeq::test {

/// Starts `body` in a child process; expectations that fail there, and exceptions, give an exit code of 1.
template <class Body>
pid_t startChild(Body body) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child != 0) return child;
    try {
        body();
    } catch (const std::exception& error) {
        ADD_FAILURE() << "exception in the child: " << error.what();
    }
    std::fflush(nullptr);
    _exit(testing::Test::HasFailure() ? 1 : 0);
}

/// Waits for a child's end and gives its exit code, or 128 and the number of the signal that ended it.
inline int waitForChild(pid_t child) {
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace zeq::test
