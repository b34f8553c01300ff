// From documents to what is kept of them.
#include "zeq/receiver.h"

#include <filesystem>
#include <sstream>
#include <utility>
#include <vector>

#include "mp/shared_buffer.h"
#include "mv_cvx/logger.h"
#include "text/text.h"
#include "transport/utf8.h"
#include "zeq/failure.h"
#include "zeq/output.h"
#include "zeq/results.h"
#include "zeq_api/codec/base64.h"
#include "zeq_api/codec/compressor.h"
#include "zeq_api/exchange_mechanical/mechanical_sections.h"
#include "zeq_api/exchange_mechanical/owned_entities.h"
#include "zeq_api/exchange_object/exchange_object_wrapper.h"
#include "zeq_api/exchange_object/messages.h"
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

/// An image of geometry as it lies in its shared buffer, compressed or not.
std::vector<char> imageIn(const std::wstring& bufferName) {
    std::vector<char> bytes;
    mp::SharedBuffer<char>(bufferName, false).get(bytes);
    return bytes;
}

} // namespace

void Import::add(const std::shared_ptr<IExchangeObject>& object) {
    if (scene) scene->add(object);
    content.add(*object);
    if (const auto product = std::dynamic_pointer_cast<ExcProductStructure>(object)) {
        structure = product;
    } else if (const auto* root = dynamic_cast<const ExcRootMechanicalData*>(object.get())) {
        pmi.add(std::nullopt, root->pmiData());
    } else if (const auto* display = dynamic_cast<const ExcBlockVisualization*>(object.get())) {
        links.add(*display);
    } else if (const auto* block = dynamic_cast<const ExcBlockMechanicalData*>(object.get())) {
        links.add(*block);
        pmi.add(block->blockId(), block->pmiData());
        organisation.add(block->blockId(), block->miscData());
        if (block->miscData()) contents.add(block->miscData()->miscData());
    }
}

bool Receiver::take(const Document& document) {
    ++m_import.documents;
    const timing::Lap lap(m_times, L"Receiving");
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
        if (geometry && !m_host.settings.showsGeometry()) return;
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
    } else if (const auto geometry = std::dynamic_pointer_cast<ExcBlockGeometry>(object)) {
        takeGeometry(*geometry);
    } else {
        m_times.begin(L"Counting contents");
        m_import.add(object);
    }
}

void Receiver::writeImage(std::uint64_t blockId, const std::wstring& bufferName) {
    const std::string& directory = m_host.settings.geometryDirectory;
    requireDirectory(directory);
    std::vector<char> bytes = imageIn(bufferName);
    Compressor::makePlain(bytes);
    const fs::path path = fs::path(directory) / ("block_" + std::to_string(blockId) + ".sab");
    Output file(path.string(), m_host.settings.force, m_host.signals);
    file.write({bytes.data(), bytes.size()});
    file.commit();
}

void Receiver::takeGeometry(const ExcBlockGeometry& geometry) {
    const std::string block = "block " + std::to_string(geometry.blockId());
    OwnedEntities entities;
    m_times.begin(L"Restoring geometry");
    if (!geometry.isLoaded() || !geometry.getGeometry(entities.list)) {
        const std::string fault = "the geometry of " + block + " cannot be restored";
        if (!m_import.facts) throw Failure(exit_code::translatorBroken, fault);
        return m_host.console.warning(fault); // there is still something to be seen
    }
    m_watch.setBlock(geometry.blockId());
    m_times.begin(L"Checking and measuring geometry");
    if (m_import.facts) {
        m_import.facts->insert_or_assign(geometry.blockId(), brep::factsOf(entities.list, &m_watch));
        return;
    }
    const std::vector<std::string> faults =
        m_import.geometry.add(geometry.blockId(), entities.list, &m_watch);
    m_times.begin(L"Relating entities");
    m_import.links.addGeometry(geometry.blockId(), entities.list);
    const std::string subject = "geometry of " + block + ": ";
    for (const std::string& fault : faults) m_host.console.warning(subject + fault);
    m_host.console.note(subject + m_import.geometry.blockText(geometry.blockId()));
}

void Receiver::load(IExchangeObject& object, const std::wstring& bufferName) {
    ++m_import.buffers;
    m_import.bytes += bufferSize(bufferName);
    m_times.begin(dynamic_cast<const ExcBlockGeometry*>(&object) ? L"Loading geometry"
                                                                 : L"Loading documents");
    try {
        if (m_host.report.isEnabled() && dynamic_cast<const ExcBlockGeometry*>(&object))
            keepImage(bufferName);
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
    m_host.report.addContent(bufferName, text::validUtf8(text.str()));
}

void Receiver::keepImage(const std::wstring& bufferName) {
    std::vector<char> bytes = imageIn(bufferName);
    if (!Compressor::isCompressed(bytes.data(), bytes.size())) {
        const std::vector<char> plain = std::exchange(bytes, {});
        Compressor::compress(bytes, plain.data(), plain.size(), -1);
    }
    std::string data(Base64::encodedSize(bytes.size()) + 2, '"');
    Base64::encodeImpl(&data[1], bytes.data(), bytes.size());
    m_host.report.addContent(bufferName, data);
}

} // namespace zeq::host
