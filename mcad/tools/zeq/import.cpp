// What arrived, as text and as JSON.
#include "zeq/import.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <map>
#include <sstream>
#include <utility>

#include <unistd.h>

#include "text/text.h"
#include "zeq/failure.h"
#include "zeq/picture.h"
#include "zeq/structure_count.h"
#include "zeq/tree_printer.h"

namespace zeq::host {

namespace {

namespace fs = std::filesystem;

using Figures = std::map<std::string, std::uint64_t>;

/// What arrived, in the words of the translator's report.
std::map<std::wstring, std::uint64_t> arrived(const Import& import) {
    auto figures = import.content.byKind();
    std::uint64_t& faces = figures[L"faces"] = import.geometry.faces();
    if (import.facts)
        for (const auto& [block, facts] : *import.facts) faces += facts.faces.size();
    std::uint64_t& parts = figures[L"parts"];
    std::uint64_t& instances = figures[L"instances"];
    if (import.structure)
        for (const ExcBlockPtr& block : import.structure->blocks()) {
            parts += block->isPart() ? 1 : 0;
            instances += block->blockReferences().size();
        }
    return figures;
}

/// What did not arrive, by kind: as the translator's report of the file says, or as the structure and the geometry
/// show, whichever is more.
Figures missing(const Import& import) {
    Figures figures = import.contents.missing();
    const auto raise = [&figures](const char* kind, std::uint64_t count) {
        if (count > figures[kind]) figures[kind] = count;
    };
    raise("parts", import.geometry.missing());
    raise("faces", import.geometry.missingFaces());
    return figures;
}

/// "1 view, 3 properties"; empty when all figures are 0.
std::string listed(const Figures& figures) {
    std::string text;
    for (const auto& [kind, count] : figures) {
        if (count == 0) continue;
        std::string one = kind.substr(0, kind.size() - 1);
        if (one.ends_with("ie")) one.replace(one.size() - 2, 2, "y");
        text += (text.empty() ? "" : ", ") + text::counted(count, one, kind);
    }
    return text;
}

std::string jsonSummary(const Import& import, const StructureCount& figures, bool isComplete) {
    std::string gaps;
    for (const auto& [kind, count] : missing(import))
        gaps += (gaps.empty() ? "" : ",") + text::jsonString(kind) + ":" + std::to_string(count);
    std::ostringstream json;
    json << "{\"complete\":" << (isComplete ? "true" : "false") << ",\"blocks\":" << figures.blocks
         << ",\"parts\":" << figures.parts << ",\"unused_blocks\":" << figures.unused
         << ",\"missing_blocks\":" << figures.dangling << ",\"instances\":" << figures.instances
         << ",\"depth\":" << figures.depth << ",\"cyclic\":" << (figures.cyclic ? "true" : "false")
         << ",\"documents\":" << import.documents << ",\"buffers\":" << import.buffers
         << ",\"bytes\":" << import.bytes << ",\"seconds\":" << import.seconds << ",\"missing\":{" << gaps
         << "}," << import.contents.jsonMember() << ',' << import.content.jsonMembers() << ','
         << import.geometry.jsonMembers() << "}";
    return json.str();
}

std::string textSummary(const Import& import, const StructureCount& figures) {
    const std::uint64_t assemblies = figures.blocks - figures.parts;
    std::ostringstream text;
    text << "\nBlocks     " << figures.blocks << " (" << text::counted(figures.parts, "part", "parts") << ", "
         << text::counted(assemblies, "assembly", "assemblies");
    if (figures.unused > 0) text << ", " << figures.unused << " unused";
    text << ")\nInstances  ";
    if (figures.instances == mostInstances)
        text << "more than " << mostInstances - 1;
    else
        text << figures.instances;
    if (figures.cyclic) text << ", not counting those below a block that contains itself";
    if (figures.dangling > 0) text << ", " << figures.dangling << " of missing blocks";
    text << "\nDepth      " << figures.depth << "\n";
    if (!import.geometry.isEmpty()) text << import.geometry.summaryText();
    text << import.content.text();
    text << "Moved      " << text::byteSize(import.bytes) << " in "
         << text::counted(import.documents, "document", "documents") << " and "
         << text::counted(import.buffers, "shared buffer", "shared buffers");
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%.2f s", import.seconds);
    text << "\nTime       " << seconds << "\n";
    if (const std::string gaps = listed(missing(import)); !gaps.empty())
        text << "Missing    " << gaps << "; --strict makes that a failure\n";
    return text.str();
}

/// Part by part, what is in the documents of an import beside the structure.
void writeDetails(const Import& import, bool all, Output& output) {
    const ExcProductStructure* const structure = import.structure.get();
    if (!import.geometry.isEmpty()) output.write("\n" + import.geometry.blocksText(structure, all));
    output.write(import.pmi.text(structure, all) + import.organisation.text(structure, all));
}

/// Shows what arrived before the import failed, if anything did. A file that is written stays away: it would not be
/// whole.
void showIncomplete(const Host& host, const Import& import, Output& output) {
    const Settings& settings = host.settings;
    const bool isEmpty = !import.structure && import.geometry.isEmpty() && import.content.isEmpty();
    if (isEmpty || settings.action == EAction::tree) return;
    const StructureCount figures = count(import.structure ? *import.structure : ExcProductStructure());
    if (settings.json) return host.report.setSummary(jsonSummary(import, figures, false));
    if (!settings.output.empty()) return;
    output.write("Incomplete: this arrived before the import failed\n");
    if (import.structure) {
        output.write("\n");
        printTree(*import.structure, figures, {host.console.colorsOutput(), settings.all}, output);
    }
    writeDetails(import, settings.all, output);
    if (const std::string content = import.content.text(); !content.empty()) output.write("\n" + content);
    output.commit();
}

} // namespace

void receive(const Host& host, const Request& request, Import& import) {
    Receiver receiver(host, import);
    const auto start = std::chrono::steady_clock::now();
    const auto take = [&receiver](const Document& document) { return receiver.take(document); };
    import.bytes += converse(host, request, take);
    import.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    host.console.progress().finish();
    host.console.note("times: " + text::printable(receiver.times()));
    if (!import.structure)
        throw Failure(exit_code::translatorBroken,
                      cannot("import", request.thing, "the translator sent no product structure"));
}

void compareContents(const Host& host, Import& import) {
    import.contents.compare(arrived(import));
    if (const std::string gaps = listed(import.contents.missing()); !gaps.empty())
        host.console.warning("the file holds more than arrived: " + gaps);
}

void requireFile(const std::string& file) {
    const auto refuse = [&file](const std::string& reason) {
        throw Failure(exit_code::inputOutput, cannot("import", file, reason));
    };
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (!fs::exists(status)) refuse(error ? error.message() : "No such file or directory");
    if (fs::is_directory(status)) refuse("it is a directory");
    if (::access(file.c_str(), R_OK) != 0) refuse(std::generic_category().message(errno));
}

void importModel(const Host& host, const Request& request, Output& output) {
    const Settings& settings = host.settings;
    Import import;
    scene::Documents documents;
    if (!settings.pictureFile.empty()) import.scene = &documents;
    try {
        receive(host, request, import);
    } catch (const Failure& failure) {
        // Who interrupts an import does not ask for its beginning.
        if (failure.exitCode() < exit_code::signalled(0)) showIncomplete(host, import, output);
        throw;
    }

    const bool isTree = settings.action == EAction::tree;
    if (!isTree) {
        for (const std::string& fault : import.geometry.compare(*import.structure))
            host.console.warning(fault);
        for (const std::string& fault : import.links.faults()) host.console.warning(fault);
        compareContents(host, import);
    }
    if (import.scene) writePictureOf(host, std::move(documents), settings.pictureFile);
    const StructureCount figures = count(*import.structure);
    if (figures.dangling > 0)
        host.console.warning(text::counted(figures.dangling, "reference", "references") +
                             " to blocks that are missing");
    if (figures.cyclic) host.console.warning("the structure contains a block that contains itself");
    if (settings.json) {
        if (!isTree) host.report.setSummary(jsonSummary(import, figures, true));
        return;
    }
    printTree(*import.structure, figures, {host.console.colorsOutput(), settings.all}, output);
    if (isTree) return;
    writeDetails(import, settings.all, output);
    if (!import.contents.isEmpty()) output.write("\n" + import.contents.text(settings.all));
    output.write(textSummary(import, figures));
}

} // namespace zeq::host
