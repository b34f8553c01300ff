// Collecting what the translator sends, and showing it.
#include "zeq/import.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <set>
#include <sstream>
#include <vector>

#include <unistd.h>

#include "mp/shared_buffer.h"
#include "mv_cvx/logger.h"
#include "text/text.h"
#include "transport/utf8.h"
#include "zeq/content_count.h"
#include "zeq/failure.h"
#include "zeq/geometry_report.h"
#include "zeq/geometry_watch.h"
#include "zeq/results.h"
#include "zeq/structure_count.h"
#include "zeq/tree_printer.h"
#include "zeq_api/codec/compressor.h"
#include "zeq_api/exchange_mechanical/block_geometry.h"
#include "zeq_api/exchange_mechanical/mechanical_sections.h"
#include "zeq_api/exchange_mechanical/owned_entities.h"
#include "zeq_api/exchange_object/exchange_object_wrapper.h"
#include "zeq_api/exchange_object/messages.h"
#include "zeq_api/exchange_structure/product_structure.h"
#include "zeq_api/json/text_io.h"

namespace zeq::host {

namespace {

namespace fs = std::filesystem;

/// Size in bytes of a shared buffer; 0 when there is none.
std::uint64_t bufferSize(const std::wstring& name) {
    std::error_code error;
    const auto size =
        fs::file_size(fs::path(mp::sharedDirectory()) / fs::path(transport::toUtf8(name)).filename(), error);
    return error ? 0 : size;
}

/// What arrived.
struct Import {
    std::shared_ptr<ExcProductStructure> structure;
    GeometryReport geometry;
    ContentCount content;
    std::uint64_t documents = 0;
    std::uint64_t buffers = 0;
    std::uint64_t bytes = 0;
    double seconds = 0;
};

/// Takes the documents of one import as they come.
class Receiver {
public:
    Receiver(const Host& host, Import& import) : m_host(host), m_import(import), m_watch(host) {}
    bool take(const Document& document);

private:
    void takeObject(const Document& document);
    void takeGeometry(const ExcBlockGeometry& geometry);
    /// Writes the image in that buffer into the directory that the user wants it in.
    void writeImage(std::uint64_t blockId, const std::wstring& bufferName);
    void load(IExchangeObject& object, const std::wstring& bufferName);

    const Host& m_host;
    Import& m_import;
    GeometryWatch m_watch;
    std::set<std::wstring> m_unknownKinds; // each is told once
};

bool Receiver::take(const Document& document) {
    ++m_import.documents;
    switch (document.kind()) {
    case EDocument::exchangeObject:
        takeObject(document);
        return false;
    case EDocument::result:
        return takeResult(m_host, document);
    default:
        throw unexpected(document);
    }
}

void Receiver::takeObject(const Document& document) {
    ExchangeObjectWrapper wrapper;
    wrapper.setDelayedLoading(true);
    document.readInto(wrapper);
    const std::shared_ptr<IExchangeObject> object = wrapper.get();
    if (!object) {
        if (m_unknownKinds.insert(document.objectName()).second)
            m_host.console.warning("skipped a document of the unknown kind '" +
                                   text::printable(document.objectName()) + "'");
        return;
    }
    if (const std::wstring name = document.bufferName(); !name.empty()) {
        const auto* geometry = dynamic_cast<const ExcBlockGeometry*>(object.get());
        if (geometry && !m_host.settings.geometryDirectory.empty()) writeImage(geometry->blockId(), name);
        if (geometry && m_host.settings.action == EAction::tree) return; // of the structure alone
        load(*object, name);
    }

    Console& console = m_host.console;
    if (const auto progress = std::dynamic_pointer_cast<ExcProgress>(object)) {
        console.progress().show(
            {progress->progress(), progress->progressMax(), progress->pulse(), progress->stage()});
    } else if (const auto message = std::dynamic_pointer_cast<ExcMessage>(object)) {
        console.message(text::printable(message->get()));
    } else if (const auto line = std::dynamic_pointer_cast<ExcLog>(object)) {
        ZEQ_LOG(Info) << "translator: " << text::printable(line->get());
        console.note("translator: " + text::printable(line->get()));
    } else if (const auto finished = std::dynamic_pointer_cast<ExcStageFinished>(object)) {
        console.note("stage finished: " + text::printable(enumToString(finished->stage())));
    } else if (const auto structure = std::dynamic_pointer_cast<ExcProductStructure>(object)) {
        m_import.structure = structure;
    } else if (const auto geometry = std::dynamic_pointer_cast<ExcBlockGeometry>(object)) {
        takeGeometry(*geometry);
    } else {
        m_import.content.add(*object);
    }
}

void Receiver::writeImage(std::uint64_t blockId, const std::wstring& bufferName) {
    const std::string& directory = m_host.settings.geometryDirectory;
    std::error_code error;
    fs::create_directories(directory, error);
    if (error)
        throw Failure(exit_code::inputOutput, cannot("make the directory", directory, error.message()));
    std::vector<char> bytes;
    mp::SharedBuffer<char>(bufferName, false).get(bytes);
    Compressor::makePlain(bytes);
    const fs::path path = fs::path(directory) / ("block_" + std::to_string(blockId) + ".sab");
    Output file(path.string(), m_host.settings.force, m_host.signals);
    file.write({bytes.data(), bytes.size()});
    file.commit();
}

void Receiver::takeGeometry(const ExcBlockGeometry& geometry) {
    const std::string block = "block " + std::to_string(geometry.blockId());
    OwnedEntities entities;
    if (!geometry.isLoaded() || !geometry.getGeometry(entities.list))
        throw Failure(exit_code::translatorBroken, "the geometry of " + block + " cannot be restored");
    m_watch.setBlock(geometry.blockId());
    const std::vector<std::string> faults =
        m_import.geometry.add(geometry.blockId(), entities.list, &m_watch);
    const std::string subject = "geometry of " + block + ": ";
    for (const std::string& fault : faults) m_host.console.warning(subject + fault);
    m_host.console.note(subject + m_import.geometry.blockText(geometry.blockId()));
}

void Receiver::load(IExchangeObject& object, const std::wstring& bufferName) {
    ++m_import.buffers;
    m_import.bytes += bufferSize(bufferName);
    try {
        loadWithSections(object);
    } catch (const std::exception&) {
        throw Failure(exit_code::translatorBroken, "the shared buffer '" + text::printable(bufferName) +
                                                       "' of '" + text::printable(object.objectName()) +
                                                       "' cannot be loaded: " + currentReason());
    }
    if (!object.binary() || !m_host.report.isEnabled()) return;
    JsonDocument content;
    object.writeObject(content, content.GetAllocator());
    std::wostringstream text;
    JsonTextIO::write(text, content, 0);
    m_host.report.addContent(bufferName, text.str());
}

std::string jsonSummary(const Import& import, const StructureCount& figures) {
    const std::uint64_t parts = import.geometry.missing(), faces = import.geometry.missingFaces();
    std::ostringstream json;
    json << "{\"blocks\":" << figures.blocks << ",\"parts\":" << figures.parts
         << ",\"unused_blocks\":" << figures.unused << ",\"missing_blocks\":" << figures.dangling
         << ",\"instances\":" << figures.instances << ",\"depth\":" << figures.depth
         << ",\"cyclic\":" << (figures.cyclic ? "true" : "false") << ",\"documents\":" << import.documents
         << ",\"buffers\":" << import.buffers << ",\"bytes\":" << import.bytes
         << ",\"seconds\":" << import.seconds << ",\"missing\":{\"parts\":" << parts << ",\"faces\":" << faces
         << "}," << import.content.jsonMembers() << ',' << import.geometry.jsonMembers() << "}";
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
    const std::uint64_t parts = import.geometry.missing(), faces = import.geometry.missingFaces();
    if (parts + faces > 0)
        text << "Missing    " << (parts > 0 ? text::counted(parts, "part", "parts") : "")
             << (parts > 0 && faces > 0 ? ", " : "")
             << (faces > 0 ? text::counted(faces, "face", "faces") : "")
             << "; --strict makes that a failure\n";
    return text.str();
}

} // namespace

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
    Receiver receiver(host, import);
    const auto start = std::chrono::steady_clock::now();
    const auto take = [&receiver](const Document& document) { return receiver.take(document); };
    import.bytes += converse(host, request, take);
    import.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    host.console.progress().finish();
    if (!import.structure)
        throw Failure(exit_code::translatorBroken,
                      cannot("import", request.thing, "the translator sent no product structure"));

    const bool isTree = settings.action == EAction::tree;
    if (!isTree)
        for (const std::string& fault : import.geometry.compare(*import.structure))
            host.console.warning(fault);
    const StructureCount figures = count(*import.structure);
    if (figures.dangling > 0)
        host.console.warning(text::counted(figures.dangling, "reference", "references") +
                             " to blocks that are missing");
    if (figures.cyclic) host.console.warning("the structure contains a block that contains itself");
    if (settings.json) {
        if (!isTree) host.report.setSummary(jsonSummary(import, figures));
        return;
    }
    printTree(*import.structure, figures, {host.console.colorsOutput(), settings.all}, output);
    if (isTree) return;
    if (!import.geometry.isEmpty())
        output.write("\n" + import.geometry.blocksText(*import.structure, settings.all));
    output.write(textSummary(import, figures));
}

} // namespace zeq::host
