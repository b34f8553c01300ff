// fork, exec, and one poll() loop over what the program prints.
#include "tools/zeq_run.h"

#include <array>
#include <cerrno>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/child_process.h"
#include "transport/descriptor.h"

namespace zeq::test {

namespace {

using transport::Descriptor;

struct Pipe {
    Descriptor readEnd;
    Descriptor writeEnd;
};

Pipe makePipe() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

Pipe makeTerminal() {
    int master = -1;
    int slave = -1;
    winsize size{24, 80, 0, 0};
    if (::openpty(&master, &slave, nullptr, nullptr, &size) != 0)
        throw std::system_error(errno, std::generic_category(), "openpty");
    for (int end : {master, slave}) ::fcntl(end, F_SETFD, FD_CLOEXEC);
    return {Descriptor(master), Descriptor(slave)};
}

/// Appends what can be read; closes the descriptor at the end of the stream.
void receive(Descriptor& from, std::string& text) {
    std::array<char, 4096> portion;
    const ssize_t count = ::read(from.get(), portion.data(), portion.size());
    if (count > 0) text.append(portion.data(), static_cast<std::size_t>(count));
    if (count == 0 || (count < 0 && errno != EINTR)) from.reset(); // a terminal ends with EIO
}

} // namespace

RunResult runProgram(const std::vector<std::string>& command, const RunOptions& options) {
    Pipe input = makePipe();
    Pipe output = makePipe();
    Pipe errors = options.terminal ? makeTerminal() : makePipe();
    if (options.closeOutput) output.readEnd.reset();
    if (::write(input.writeEnd.get(), options.input.data(), options.input.size()) !=
        static_cast<ssize_t>(options.input.size()))
        throw std::runtime_error("the input is too long for a pipe");
    input.writeEnd.reset();

    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    const pid_t child = startChild([&] {
        ::dup2(input.readEnd.get(), STDIN_FILENO);
        ::dup2(output.writeEnd.get(), STDOUT_FILENO);
        ::dup2(errors.writeEnd.get(), STDERR_FILENO);
        for (const auto& [name, value] : options.environment) ::setenv(name.c_str(), value.c_str(), 1);
        ::execv(arguments[0], arguments.data());
        throw std::system_error(errno, std::generic_category(), command[0]);
    });
    output.writeEnd.reset();
    errors.writeEnd.reset();

    RunResult result;
    bool cueGiven = !options.onCue;
    while (output.readEnd.isOpen() || errors.readEnd.isOpen()) {
        std::array<pollfd, 2> watched{{{output.readEnd.get(), POLLIN, 0}, {errors.readEnd.get(), POLLIN, 0}}};
        ::poll(watched.data(), watched.size(), -1);
        if (watched[0].revents != 0) receive(output.readEnd, result.output);
        if (watched[1].revents != 0) receive(errors.readEnd, result.errors);
        if (!cueGiven && result.errors.find(options.cue) != std::string::npos) {
            cueGiven = true;
            options.onCue(child);
        }
    }
    result.exitCode = waitForChild(child);
    return result;
}

RunResult runFake(const std::string& mode, const std::vector<std::string>& arguments, RunOptions options) {
    std::vector<std::string> command{ZEQ_PROGRAM, "--translator", ZEQ_FAKE_TRANSLATOR};
    command.insert(command.end(), arguments.begin(), arguments.end());
    options.environment["FAKE_TRANSLATOR"] = mode;
    return runProgram(command, options);
}

} // namespace zeq::test
