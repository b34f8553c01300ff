// ping, info, --version, and whatever else has only a result.
#include "zeq/actions.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "text/text.h"
#include "zeq/command_builder.h"
#include "zeq/results.h"
#include "zeq_api/convexor_info/convexor_info.h"

namespace zeq::host {

namespace {

ConvexorInfo askForInfo(const Host& host, const Request& request) {
    ConvexorInfo info;
    const auto take = [&](const Document& document) {
        if (document.kind() == EDocument::convexorInfo) {
            document.readInto(info);
            return true;
        }
        // A result instead of the description can only be a failure.
        if (document.kind() != EDocument::result || takeResult(host, document)) throw unexpected(document);
        return false;
    };
    converse(host, request, take);
    return info;
}

std::string nameAndVersion(const std::wstring& name, const std::wstring& version) {
    return text::printable(name) + " " + text::printable(version);
}

std::vector<std::string> kernelLines(const ConvexorInfo& info) {
    std::vector<std::string> lines;
    for (const auto& core : info.thirdpartyCores())
        lines.push_back(nameAndVersion(core->name(), core->version()));
    return lines;
}

std::vector<std::string> modelerLines(const ConvexorInfo& info) {
    if (info.modelerMajorVersion() == 0) return {}; // it writes no geometry
    return {"version " + std::to_string(info.modelerMajorVersion())};
}

/// A labelled block of lines.
std::string paragraph(std::string label, const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        label.resize(12, ' ');
        text += label + line + "\n";
        label.clear();
    }
    return text;
}

std::vector<std::string> formatLines(const std::vector<std::shared_ptr<Format>>& formats) {
    std::vector<std::string> lines;
    for (const std::shared_ptr<Format>& format : formats) {
        std::string extensions;
        for (const std::wstring& extension : format->extensions())
            extensions += (extensions.empty() ? "" : ", ") + text::printable(extension);
        lines.push_back(text::printable(format->description()) +
                        (extensions.empty() ? "" : " (" + extensions + ")"));
    }
    if (lines.empty()) lines.push_back("none");
    return lines;
}

/// Sends a command whose only answer is a result.
void awaitResult(const Host& host, const Request& request) {
    converse(host, request, [&host](const Document& document) {
        if (document.kind() != EDocument::result) throw unexpected(document);
        return takeResult(host, document);
    });
}

} // namespace

void ping(const Host& host, const Request& request, Output& output) {
    const auto start = std::chrono::steady_clock::now();
    awaitResult(host, request);
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    char text[64];
    std::snprintf(text, sizeof text, "The translator answers (%.0f ms)\n", time.count());
    if (!host.settings.json) output.write(text);
}

void execute(const Host& host, const Request& request, Output& output) {
    awaitResult(host, request);
    if (!host.settings.json) output.write("The translator has done it\n");
}

void showInfo(const Host& host, const Request& request, Output& output) {
    const ConvexorInfo info = askForInfo(host, request);
    if (host.settings.json) return;
    output.write(nameAndVersion(info.name(), info.version()) + "\n" +
                 paragraph("Interface", {text::printable(enumToString(info.requestedInterface()))}) +
                 paragraph("Kernels", kernelLines(info)) + paragraph("Modeler", modelerLines(info)) +
                 paragraph("Parasolid", {text::printable(enumToString(info.parasolidMode()))}) +
                 paragraph("Imports", formatLines(info.importFormats())) +
                 paragraph("Exports", formatLines(info.exportFormats())));
}

void showVersion(const Host& host, Output& output) {
    std::string text =
        "zeq " ZEQ_VERSION ", interface " + text::printable(enumToString(EConvexorInterface::connect)) + "\n";
    try {
        const ConvexorInfo info = askForInfo(host, buildCommand(host));
        text += nameAndVersion(info.name(), info.version());
        for (const std::string& line : kernelLines(info)) text += ", " + line;
        for (const std::string& line : modelerLines(info)) text += ", modeler " + line;
        text += "\n";
    } catch (const Failure& failure) {
        if (failure.exitCode() > exit_code::signalled(0)) throw;
        host.console.warning(failure.what());
    }
    if (!host.settings.json) output.write(text);
}

} // namespace zeq::host
