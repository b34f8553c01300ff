// Brings documents and the contents of their buffers together again.
#include "zeq/kept_documents.h"

#include <fstream>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "text/text.h"
#include "zeq/failure.h"
#include "zeq/geometry_watch.h"
#include "zeq/image_file.h"
#include "zeq/json_file.h"
#include "zeq_api/codec/base64.h"
#include "zeq_api/codec/compressor.h"
#include "zeq_api/exchange_mechanical/block_geometry.h"
#include "zeq_api/exchange_mechanical/mechanical_sections.h"
#include "zeq_api/exchange_mechanical/owned_entities.h"
#include "zeq_api/exchange_object/exchange_object_registry.h"
#include "zeq_api/json/dom_model.h"
#include "zeq_api/json/enum_names.h"

namespace zeq::host {

namespace {

std::wstring_view view(const JsonValue* string) {
    return string ? std::wstring_view(string->GetString(), string->GetStringLength()) : std::wstring_view();
}

/// What the buffers held, by their names.
using Contents = std::unordered_map<std::wstring_view, const JsonValue*>;

/// Null for one of an unknown kind, and for one whose content is not there.
std::shared_ptr<IExchangeObject> readObject(const JsonValue& document, const Contents& contents,
                                            Console& console) {
    const std::wstring name(view(findString(document, L"exchange_object_name")));
    std::shared_ptr<IExchangeObject> object = ExchangeObjectRegistry::instance().get(name);
    const JsonValue* data = json::findMember(document, L"exchange_object_data");
    if (!object || !data) return nullptr;
    if (object->binary() && data->IsString()) {
        const auto content = contents.find(view(data));
        if (content == contents.end()) {
            console.warning("the content of a '" + text::printable(name) + "' is not in the file");
            return nullptr;
        }
        data = content->second;
    }
    object->readObject(*data);
    if (auto* root = dynamic_cast<ExcRootMechanicalData*>(object.get())) root->setPMIData(readPMIData(*data));
    if (auto* block = dynamic_cast<ExcBlockMechanicalData*>(object.get()))
        block->setPMIData(readPMIData(*data));
    return object;
}

/// Looks at the geometry that a document names.
void readGeometry(const JsonValue& document, const Contents& contents, Console& console, GeometryWatch& watch,
                  BlockFacts& facts) {
    const JsonValue* const data = json::findMember(document, L"exchange_object_data");
    if (!data) return;
    ExcBlockGeometry geometry;
    geometry.readObject(*data);
    const std::string subject = "the geometry of block " + std::to_string(geometry.blockId());
    const auto content = contents.find(view(findString(*data, L"shared_acis_buffer_name")));
    if (content == contents.end() || !content->second->IsString())
        return console.warning(subject + " is not in the file");
    const std::wstring_view encoded = view(content->second);
    std::vector<char> image(Base64::decodedSize(encoded.size()) + 2);
    image.resize(Base64::decodeWide(image.data(), encoded.data(), encoded.size()).first);
    OwnedEntities entities;
    std::string fault;
    try {
        Compressor::makePlain(image);
        ImageFile file(image);
        fault = reasonOf(api_restore_entity_list_file(&file, entities.list));
    } catch (const std::exception&) {
        fault = currentReason();
    }
    if (!fault.empty()) return console.warning(subject + " cannot be restored: " + fault);
    watch.setBlock(geometry.blockId());
    facts.insert_or_assign(geometry.blockId(), brep::factsOf(entities.list, &watch));
}

} // namespace

bool looksKept(const std::string& file) {
    std::ifstream stream(file);
    char first = 0;
    return stream >> first && first == '{';
}

void readKept(const Host& host, Import& import) {
    const std::string& file = host.settings.file;
    const auto refuse = [&file](const std::string& reason) {
        throw Failure(exit_code::inputOutput, cannot("read", file, reason));
    };
    JsonDocument report;
    if (std::string problem; !readJsonFile(file, host.signals, report, problem)) refuse(problem);
    const JsonValue* const documents = json::findMember(report, L"documents");
    const JsonValue* const contents = json::findMember(report, L"contents");
    if (!documents || !contents || !documents->IsArray() || !contents->IsArray())
        refuse("it is not what zeq --json import writes");
    Contents byName;
    for (const JsonValue& entry : contents->GetArray()) {
        const JsonValue* const data = json::findMember(entry, L"data");
        if (data) byName.emplace(view(findString(entry, L"buffer")), data);
    }
    GeometryWatch watch(host);
    for (const JsonValue& document : documents->GetArray()) {
        if (view(findString(document, L"exchange_object_name")) != ExcBlockGeometry::objName()) {
            if (const auto object = readObject(document, byName, host.console)) import.add(object);
        } else if (import.facts) {
            readGeometry(document, byName, host.console, watch, *import.facts);
        }
    }
    host.console.progress().finish();
    if (!import.structure) refuse("there is no product structure in it");
}

} // namespace zeq::host
