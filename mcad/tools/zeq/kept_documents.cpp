// Brings documents and the contents of their buffers together again.
#include "zeq/kept_documents.h"

#include <fstream>
#include <memory>
#include <string_view>
#include <unordered_map>

#include "text/text.h"
#include "zeq/failure.h"
#include "zeq/json_file.h"
#include "zeq_api/exchange_mechanical/mechanical_sections.h"
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

} // namespace

bool looksKept(const std::string& file) {
    std::ifstream stream(file);
    char first = 0;
    return stream >> first && first == '{';
}

scene::Documents readKept(const Host& host) {
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
    scene::Documents result;
    for (const JsonValue& document : documents->GetArray())
        if (const auto object = readObject(document, byName, host.console)) result.add(object);
    if (!result.structure) refuse("there is no product structure in it");
    return result;
}

} // namespace zeq::host
