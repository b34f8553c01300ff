// convexor, the reference translator: answers the commands of a host on standard input with documents on
// standard output.
#include <cerrno>
#include <clocale>
#include <csignal>
#include <exception>
#include <iostream>
#include <system_error>

#include <CLI/CLI.hpp>
#include <fcntl.h>
#include <unistd.h>

#include "convexor/in_time.h"
#include "convexor/session.h"

namespace {

/// Takes standard output for the protocol alone: the kernel prints banners there, which go to standard error
/// from now on.
int takeOutput() {
    const int output = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (output < 0 || ::dup2(STDERR_FILENO, STDOUT_FILENO) < 0)
        throw std::system_error(errno, std::generic_category(), "Cannot set up standard output");
    return output;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app(
        "Reads STEP and IGES files for a host program.\n"
        "Commands arrive on standard input and documents leave on standard output, each as a frame: a\n"
        "4-byte little-endian length and that many bytes of UTF-8. When the input ends, the commands that\n"
        "have arrived are answered, and the program ends. It gives up at once on SIGTERM, SIGINT and\n"
        "SIGHUP, and when nobody reads its output any more.");
    app.set_version_flag("--version", "convexor " CONVEXOR_VERSION);
    bool isPlain = false;
    app.add_flag("--no-compression", isPlain, "Leave geometry in shared buffers uncompressed");
    app.footer("Exit codes: 0 done, 2 wrong usage, 3 the input or output failed.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }

    try {
        const int output = takeOutput();
        std::signal(SIGPIPE, SIG_IGN);
        // The library's log file takes its narrow text from the locale; numbers stay as the kernel expects
        // them.
        std::setlocale(LC_CTYPE, "C.UTF-8");
        zeq::convexor::Session(STDIN_FILENO, output, !isPlain).run();
        if (zeq::convexor::isAnythingGivenUp()) ::_exit(0);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "convexor: " << error.what() << '\n';
        return 3;
    }
}
