// Reading of the sections that the roots write as arrays.
#include "zeq_api/exchange_mechanical/mechanical_sections.h"

#include <string_view>

#include "zeq_api/exchange_mechanical/area.h"
#include "zeq_api/exchange_object/buffer_content.h"
#include "zeq_api/json/codecs.h"

namespace zeq {

namespace {

template <class Section, class View>
std::shared_ptr<Section> readSection(const View& data, std::wstring_view key) {
    std::shared_ptr<Section> section;
    if (data.kind() != json::Kind::object) return section;
    if (const auto value = data.members().find(key))
        json::Codec<std::shared_ptr<Section>>::take(*value, section);
    return section;
}

template <class View>
ExcPMIDataPtr pmiDataIn(const View& data) {
    return readSection<ExcPMIData>(data, L"pmi_data");
}
template <class View>
ExcMappingDataPtr mappingDataIn(const View& data) {
    return readSection<ExcMappingData>(data, L"mapping_data");
}
template <class View>
ExcEntityDataPtr entityDataIn(const View& data) {
    return readSection<ExcEntityData>(data, L"entity_data");
}

void readSections(ExcRootMechanicalData& root, const json::DomView& data) {
    if (auto pmi = pmiDataIn(data)) root.setPMIData(std::move(pmi));
}
void readSections(ExcBlockMechanicalData& block, const json::DomView& data) {
    if (auto pmi = pmiDataIn(data)) block.setPMIData(std::move(pmi));
    if (auto mapping = mappingDataIn(data)) block.setMappingData(std::move(mapping));
    if (auto entities = entityDataIn(data)) block.setEntityData(std::move(entities));
}

/// The same, from the members as they come: of each name there is one, or the object could not be read this way.
template <class Section, class Data>
void takeSection(const json::ByteView& value, Data& data, void (Data::*set)(std::shared_ptr<Section>)) {
    std::shared_ptr<Section> section;
    if (json::Codec<std::shared_ptr<Section>>::take(value, section)) (data.*set)(std::move(section));
}
template <class Data>
void readSections(Data& data, const json::ByteView& view) {
    if (view.kind() != json::Kind::object) return;
    view.forEachMember([&data](const std::wstring& key, const json::ByteView& value) {
        if (key == L"pmi_data") takeSection(value, data, &Data::setPMIData);
        if constexpr (std::is_same_v<Data, ExcBlockMechanicalData>) {
            if (key == L"mapping_data") takeSection(value, data, &Data::setMappingData);
            if (key == L"entity_data") takeSection(value, data, &Data::setEntityData);
        }
    });
}

} // namespace

ExcPMIDataPtr readPMIData(const JsonValue& mechanicalData) {
    return pmiDataIn(json::DomView(mechanicalData));
}
ExcMappingDataPtr readMappingData(const JsonValue& mechanicalData) {
    return mappingDataIn(json::DomView(mechanicalData));
}
ExcEntityDataPtr readEntityData(const JsonValue& mechanicalData) {
    return entityDataIn(json::DomView(mechanicalData));
}

void loadWithSections(IExchangeObject& object) {
    json::trace(area::exchangeMechanical, "void zeq::loadWithSections(IExchangeObject &)");
    const auto load = [](auto& data) {
        if (data.isLoaded() || data.source().empty()) return;
        detail::takeContent(data.source(), data, [&data](auto& content) {
            content.pass([&data](const auto& view) { json::readNested(data, view); });
            content.pass([&data](const auto& view) { readSections(data, view); });
        });
        data.setLoaded();
    };
    if (auto* root = dynamic_cast<ExcRootMechanicalData*>(&object))
        load(*root);
    else if (auto* block = dynamic_cast<ExcBlockMechanicalData*>(&object))
        load(*block);
    else
        object.load();
}

} // namespace zeq
