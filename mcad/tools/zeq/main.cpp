// zeq: the host's command line. Prepares the process, runs one action, and turns its end into an exit code.
#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <optional>

#include <fcntl.h>
#include <langinfo.h>
#include <unistd.h>

#include "mv_cvx/logger.h"
#include "text/text.h"
#include "zeq/actions.h"
#include "zeq/check.h"
#include "zeq/cli.h"
#include "zeq/command_builder.h"
#include "zeq/failure.h"
#include "zeq/gltf.h"
#include "zeq/import.h"
#include "zeq/inspect.h"
#include "zeq/picture.h"
#include "zeq/schema.h"
#include "zeq/view.h"

namespace zeq::host {

namespace {

void prepareProcess() {
    // A descriptor 0, 1 or 2 that is closed would be given to some pipe of ours.
    while (true) {
        const int fd = ::open("/dev/null", O_RDWR);
        if (fd > STDERR_FILENO) ::close(fd);
        if (fd < 0 || fd > STDERR_FILENO) break;
    }
    std::signal(SIGPIPE, SIG_IGN); // writing tells it
    // File names, buffer names and log lines are UTF-8 between the processes; numbers have a decimal point.
    if (!std::setlocale(LC_ALL, "") || std::strcmp(::nl_langinfo(CODESET), "UTF-8") != 0)
        std::setlocale(LC_ALL, "C.UTF-8");
    std::setlocale(LC_NUMERIC, "C");
}

std::string translatorBesideThisProgram() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? "convexor" : (self.parent_path() / "convexor").string();
}

void startLog(const LogTarget& log) {
    mv_cvx::LoggerHolder::initLogger(log.level, log.path);
    if (!mv_cvx::LoggerHolder::levelEnabled(log.level))
        throw Failure(exit_code::inputOutput, cannot("log to", log.path, "it cannot be opened"));
}

/// Sends a command and shows what comes back.
void send(const Host& host, const Request& request, Output& output) {
    switch (request.type) {
    case Command::EType::ping:
        return ping(host, request, output);
    case Command::EType::info:
        return showInfo(host, request, output);
    case Command::EType::import:
        return importModel(host, request, output);
    case Command::EType::export_:
    case Command::EType::unknown:
        return execute(host, request, output);
    }
}

void show(const Host& host, const std::wstring& document, Output& output) {
    if (host.settings.json)
        host.report.addDocument(document);
    else
        output.write(text::validUtf8(document) + '\n');
}

/// Runs the action and returns the exit code of its verdict.
int perform(const Host& host, Output& output) {
    switch (host.settings.action) {
    case EAction::showText:
        output.write(host.settings.text);
        break;
    case EAction::showVersion:
        showVersion(host, output);
        break;
    case EAction::import:
    case EAction::tree:
        requireFile(host.settings.file);
        [[fallthrough]];
    case EAction::ping:
    case EAction::info:
        send(host, buildCommand(host), output);
        break;
    case EAction::gltf:
        writeGltf(host, output);
        break;
    case EAction::picture:
        writePicture(host, output);
        break;
    case EAction::view:
        writeView(host, output);
        break;
    case EAction::run:
        send(host, readCommand(host), output);
        break;
    case EAction::command:
        show(host, buildCommand(host).text, output);
        break;
    case EAction::check:
        return checkFiles(host, output);
    case EAction::inspect:
        return inspectImage(host, output);
    case EAction::schema:
        show(host, schemaText(host.settings.className), output);
        break;
    }
    return exit_code::done;
}

const char* nameOf(EAction action) {
    switch (action) {
    case EAction::showText:
        return "help";
    case EAction::showVersion:
        return "version";
    case EAction::ping:
        return "ping";
    case EAction::info:
        return "info";
    case EAction::import:
        return "import";
    case EAction::tree:
        return "tree";
    case EAction::gltf:
        return "gltf";
    case EAction::picture:
        return "picture";
    case EAction::view:
        return "view";
    case EAction::command:
        return "command";
    case EAction::run:
        return "run";
    case EAction::check:
        return "check";
    case EAction::schema:
        return "schema";
    case EAction::inspect:
        return "inspect";
    }
    return "";
}

/// How the work went so far.
struct Outcome {
    int exitCode = exit_code::done;
    std::string error;

    /// Does the next step; its failure is told and becomes the outcome.
    template <class Step>
    void then(Console& console, Step step);
};

template <class Step>
void Outcome::then(Console& console, Step step) {
    std::string message;
    try {
        return step();
    } catch (const Failure& failure) {
        exitCode = failure.exitCode();
        message = failure.what();
    } catch (const std::exception&) {
        exitCode = exit_code::inputOutput;
        message = "Cannot go on: " + currentReason();
    }
    if (!message.empty()) console.error(message);
    if (error.empty()) error = message;
}

int run(int argc, char** argv) {
    transport::SignalPipe signals{SIGINT, SIGTERM, SIGHUP, SIGCHLD};
    Outcome outcome;
    Settings settings;
    // Known even when the rest of the line is wrong.
    settings.json =
        std::any_of(argv, argv + argc, [](const char* word) { return std::strcmp(word, "--json") == 0; });
    {
        Console console(settings);
        outcome.then(console, [&] { settings = parseCommandLine(argc, argv); });
    }
    if (settings.translator.empty()) settings.translator = translatorBesideThisProgram();
    Console console(settings);
    JsonReport report(settings.json);
    std::optional<Output> output;
    if (outcome.exitCode == exit_code::done) {
        report.setCommand(nameOf(settings.action), settings.file);
        outcome.then(console, [&] {
            if (settings.log) startLog(*settings.log);
            output.emplace(settings.output, settings.force, signals);
            const int verdict = perform({settings, console, signals, report}, *output);
            if (!settings.json) output->commit();
            outcome.exitCode = verdict;
            if (const std::size_t warnings = console.warnings().size(); settings.strict && warnings > 0)
                throw Failure(exit_code::negative, text::counted(warnings, "warning", "warnings") +
                                                       ", which --strict does not allow");
        });
    }
    if (settings.json) {
        outcome.then(console, [&] {
            if (!output) output.emplace("", false, signals);
            output->write(report.text(console.warnings(), outcome.exitCode, outcome.error));
            output->commit();
        });
    }
    return outcome.exitCode;
}

} // namespace

} // namespace zeq::host

int main(int argc, char** argv) {
    zeq::host::prepareProcess();
    return zeq::host::run(argc, argv);
}
