// The documents of an import: what leads from one to another.
#include "inspection/relations.h"

#include <exception>
#include <filesystem>
#include <system_error>

#include "inspection/structure_relations.h"
#include "mp/shared_buffer.h"
#include "text/text.h"
#include "transport/utf8.h"
#include "zeq_api/exchange_mechanical/block_geometry.h"
#include "zeq_api/exchange_mechanical/mechanical_data.h"
#include "zeq_api/exchange_object/exchange_object_wrapper.h"
#include "zeq_api/exchange_structure/product_structure.h"
#include "zeq_api/exchange_visualization/scene.h"

namespace zeq::inspection {

namespace {

constexpr const wchar_t* bufferKey = L"shared_acis_buffer_name";

bool isSharedBuffer(const std::string& name) {
    std::error_code error;
    return std::filesystem::is_regular_file(mp::sharedDirectory() + '/' + name, error);
}

} // namespace

void Relations::add(const JsonValue& document, const json::FormInfo& form, const std::string& pointer) {
    if (*form.type == typeid(ExchangeObjectWrapper))
        addWrapper(document, pointer);
    else if (*form.type == typeid(ExcProductStructure))
        addData(ExcProductStructure::objName(), document, {{}, pointer});
    else if (*form.type == typeid(ExcBlockGeometry))
        addData(ExcBlockGeometry::objName(), document, {{}, pointer});
    else if (*form.type == typeid(ExcBlockMechanicalData))
        addData(ExcBlockMechanicalData::objName(), document, {{}, pointer});
    else if (*form.type == typeid(ExcBlockVisualization))
        addData(ExcBlockVisualization::objName(), document, {{}, pointer});
    else if (*form.type == typeid(ExcBlock))
        checkBlock(document, pointer, m_report);
    else if (*form.type == typeid(ExcBlockReference))
        checkReference(document, pointer, m_report);
}

void Relations::addWrapper(const JsonValue& wrapper, const std::string& pointer) {
    const JsonValue* const data = json::findMember(wrapper, L"exchange_object_data");
    if (!data) return;
    const std::wstring name = wide(findString(wrapper, L"exchange_object_name"));
    const JsonValue* const binary = json::findMember(wrapper, L"binary");
    if (!binary || !binary->IsTrue()) return addData(name, *data, {{}, pointer + "/exchange_object_data"});
    if (!data->IsString()) return;
    const std::wstring buffer = wide(data);
    JsonDocument content;
    try {
        m_openBuffer(buffer, content);
    } catch (const std::exception&) {
        return; // the linter says so
    }
    addData(name, content, {buffer, {}});
}

void Relations::addData(const std::wstring& objectName, const JsonValue& data, const Place& place) {
    if (objectName == ExcProductStructure::objName()) {
        const std::vector<std::uint64_t> ids = checkStructure(data, place.pointer, [&](Finding finding) {
            finding.buffer = place.buffer;
            m_report(finding);
        });
        m_blocks.insert(ids.begin(), ids.end());
        m_hasStructure = true;
        return;
    }
    if (objectName == ExcBlockGeometry::objName()) addGeometry(data, place);
    if (objectName == ExcRootMechanicalData::objName())
        return m_annotations.addMechanical(std::nullopt, data, place);
    if (objectName == ExcRootAssemblyVisualization::objName())
        return m_annotations.addDisplay(std::nullopt, data, place);
    const std::optional<std::uint64_t> id = idIn(data, blockIdKey);
    const bool isMechanical = objectName == ExcBlockMechanicalData::objName();
    if (isMechanical) m_annotations.addMechanical(id.value_or(0), data, place);
    if (objectName == ExcBlockVisualization::objName()) m_annotations.addDisplay(id.value_or(0), data, place);
    // Mechanical data of the block 0 are about the file as a whole.
    if (id && (*id != 0 || !isMechanical))
        m_owned.push_back({*id, {place.buffer, place.pointer + "/block_id"}});
}

void Relations::addGeometry(const JsonValue& geometry, const Place& place) {
    const auto report = [&](const char* key, const std::string& text) {
        m_report({Severity::error, place.buffer, place.pointer + key, text, {}, {}});
    };
    if (!json::findMember(geometry, blockIdKey)) report("", "the geometry names no block");
    const std::wstring name = wide(findString(geometry, bufferKey));
    if (name.empty()) return report("", "the geometry has no shared buffer, so there is none");
    const std::string file = transport::toUtf8(name);
    const bool isPlain = file.find('/') == file.npos && file != "." && file != "..";
    if (!isPlain || (m_areBuffersThere && !isSharedBuffer(file)))
        report("/shared_acis_buffer_name", "there is no shared buffer '" + text::printable(name) + "'");
}

void Relations::finish() {
    m_annotations.report(m_report);
    if (!m_hasStructure) return;
    for (const auto& [id, place] : m_owned)
        if (!m_blocks.contains(id))
            m_report({Severity::error, place.buffer, place.pointer, noBlock(id), {}, {}});
}

} // namespace zeq::inspection
