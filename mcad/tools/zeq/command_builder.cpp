// From settings to a command, and from a command to what is sent.
#include "zeq/command_builder.h"

#include <filesystem>
#include <memory>
#include <sstream>

#include "inspection/document_classes.h"
#include "inspection/linter.h"
#include "text/text.h"
#include "transport/utf8.h"
#include "zeq/failure.h"
#include "zeq/json_file.h"
#include "zeq/option_settings.h"
#include "zeq_api/command/legacy_options.h"

namespace zeq::host {

namespace {

/// The path for the translator, which may run in another directory.
std::wstring absolutePath(const std::string& file) {
    try {
        return transport::fromUtf8(std::filesystem::absolute(file).string());
    } catch (const transport::EncodingError&) {
        throw Failure(exit_code::inputOutput, cannot("name", file, "its name is not UTF-8"));
    }
}

/// Completes new options by the settings and hands them to the command.
template <class Options>
void giveOptions(const Host& host, Command& command, const std::shared_ptr<Options>& options,
                 void (Command::*set)(const std::shared_ptr<Options>&)) {
    options->setFile(absolutePath(host.settings.file));
    applySettings(*options, host.settings, host.signals);
    (command.*set)(options);
}

std::shared_ptr<ImportOptions> importOptions() {
    std::shared_ptr<ImportOptions> options = Command::newImportOptions();
    options->setTranslateMiscData(true);
    options->setTranslateWorldOrientation(true);
    return options;
}

/// What messages say of a command: "Cannot <verb> '<thing>'".
void describe(Request& request, const Command& command, const Settings& settings, const std::string& file) {
    request.type = command.type();
    switch (command.type()) {
    case Command::EType::import:
        request.verb = "import";
        request.thing = file;
        break;
    case Command::EType::export_:
        request.verb = "export";
        request.thing = file;
        break;
    case Command::EType::info:
        request.verb = "ask";
        request.thing = settings.translator;
        break;
    case Command::EType::ping:
        request.verb = "ping";
        request.thing = settings.translator;
        break;
    case Command::EType::unknown:
        request.verb = "send";
        request.thing = settings.file;
        break;
    }
}

/// The file that a command is about.
std::string fileOf(const Command& command) {
    const auto path = [](const auto& options) { return options ? transport::toUtf8(options->file()) : ""; };
    std::string file;
    for (const std::string& each : {path(command.importOptions()), path(command.exportOptions()),
                                    path(command.legacyImportOptions()), path(command.legacyExportOptions())})
        if (file.empty()) file = each;
    return file;
}

} // namespace

Request buildCommand(const Host& host) {
    const Settings& settings = host.settings;
    Command command;
    command.setType(settings.commandType);
    command.setInternalInterface(settings.interface);
    command.setUseMultiThreading(settings.multiThreading);
    const bool isLegacy = settings.interface == EConvexorInterface::legacy;
    if (settings.commandType == Command::EType::import) {
        if (isLegacy)
            giveOptions(host, command, Command::newLegacyImportOptions(), &Command::setLegacyImportOptions);
        else
            giveOptions(host, command, importOptions(), &Command::setImportOptions);
    } else if (settings.commandType == Command::EType::export_) {
        if (isLegacy)
            giveOptions(host, command, Command::newLegacyExportOptions(), &Command::setLegacyExportOptions);
        else
            giveOptions(host, command, Command::newExportOptions(), &Command::setExportOptions);
    }
    Request request;
    std::wostringstream text;
    command.writeObject(text);
    request.text = text.str();
    describe(request, command, settings, settings.file);
    return request;
}

Request readCommand(const Host& host) {
    const std::string& file = host.settings.file;
    const auto refuse = [&file](const std::string& reason) {
        throw Failure(exit_code::inputOutput, cannot("send", file, reason));
    };
    Request request;
    Command command;
    JsonDocument document;
    if (std::string problem; !readJsonFile(file, host.signals, document, problem, &request.text))
        refuse(problem);
    try {
        std::wistringstream stream(request.text);
        command.readObject(stream);
    } catch (const std::invalid_argument& error) {
        refuse(error.what());
    }
    inspection::lint(document, *inspection::findClass("Command"), [&](const inspection::Finding& finding) {
        if (finding.severity != inspection::Severity::note)
            host.console.warning(text::printable(finding.pointer) + ": " + inspection::fullText(finding));
    });
    describe(request, command, host.settings, fileOf(command));
    return request;
}

} // namespace zeq::host
