// Reading of the sections that the roots write as arrays.
#include "zeq_api/exchange_mechanical/mechanical_sections.h"

#include <cstring>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "mv_cvx/held_log.h"
#include "zeq_api/exchange_mechanical/area.h"
#include "zeq_api/exchange_object/buffer_content.h"
#include "zeq_api/json/codecs.h"

namespace zeq {

namespace {

template <class Section>
std::shared_ptr<Section> readSection(const JsonValue& data, std::wstring_view key) {
    std::shared_ptr<Section> section;
    if (const JsonValue* value = json::findMember(data, key))
        json::Codec<std::shared_ptr<Section>>::take(json::DomView(*value), section);
    return section;
}

/// A section of a class: its key, and where it goes. They are read in the order of their list, after the object.
template <class Data, class Section>
struct SectionOf {
    std::wstring_view key;
    void (Data::*set)(std::shared_ptr<Section>);

    void read(Data& data, const JsonValue& document) const {
        if (auto section = readSection<Section>(document, key)) (data.*set)(std::move(section));
    }
    /// Whether the member is this section.
    bool take(Data& data, std::wstring_view name, const json::ByteView& value) const {
        std::shared_ptr<Section> section;
        if (name != key || !json::Codec<std::shared_ptr<Section>>::take(value, section)) return false;
        (data.*set)(std::move(section));
        return true;
    }
};

template <class Data, class... Section>
using SectionsOf = std::tuple<SectionOf<Data, Section>...>;

constexpr SectionsOf<ExcRootMechanicalData, ExcPMIData> sectionsOf(const ExcRootMechanicalData&) {
    return {{L"pmi_data", &ExcRootMechanicalData::setPMIData}};
}
constexpr SectionsOf<ExcBlockMechanicalData, ExcPMIData, ExcMappingData, ExcEntityData>
sectionsOf(const ExcBlockMechanicalData&) {
    return {{L"pmi_data", &ExcBlockMechanicalData::setPMIData},
            {L"mapping_data", &ExcBlockMechanicalData::setMappingData},
            {L"entity_data", &ExcBlockMechanicalData::setEntityData}};
}

template <class Data>
void readAll(Data& data, const json::DomView& view) {
    json::readNested(data, view);
    std::apply([&](const auto&... section) { (section.read(data, view.value()), ...); }, sectionsOf(data));
}

/// The same in one pass: the sections are taken as they come, and the object is read from what is between them. What
/// that logs is told first.
template <class Data>
void readAll(Data& data, const json::ByteView& view) {
    if (view.kind() != json::Kind::object) return json::readNested(data, view);
    constexpr std::size_t headSize = 1 + sizeof(std::uint64_t);
    std::string rest(headSize, static_cast<char>(json::Tag::object));
    const auto keep = [&rest](const void* bytes, std::size_t size) {
        rest.append(static_cast<const char*>(bytes), size);
    };
    mv_cvx::HeldLog later;
    std::size_t next = 0; // the first section that may still come
    view.forEachMember([&](const std::wstring& key, const json::ByteView& value) {
        std::size_t number = 0;
        const auto take = [&](const auto& section) {
            ++number;
            if (!section.take(data, key, value)) return false;
            if (number <= next) throw json::NotInOnePass{}; // again, or too late
            next = number;
            return true;
        };
        if (std::apply([&](const auto&... section) { return (take(section) || ...); }, sectionsOf(data)))
            return;
        const std::uint64_t length = key.size();
        rest += static_cast<char>(json::Tag::string);
        keep(&length, sizeof length);
        keep(key.data(), key.size() * sizeof(wchar_t));
        const auto size = static_cast<std::size_t>(value.source().valueSize());
        keep(value.source().need(size), size);
        value.source().skip(size);
    });
    later.stop();
    const std::uint64_t length = rest.size() - headSize;
    std::memcpy(rest.data() + 1, &length, sizeof length);
    json::ByteSource source(rest.data(), rest.size());
    json::readNested(data, json::ByteView(source));
    later.release();
}

} // namespace

ExcPMIDataPtr readPMIData(const JsonValue& mechanicalData) {
    return readSection<ExcPMIData>(mechanicalData, L"pmi_data");
}
ExcMappingDataPtr readMappingData(const JsonValue& mechanicalData) {
    return readSection<ExcMappingData>(mechanicalData, L"mapping_data");
}
ExcEntityDataPtr readEntityData(const JsonValue& mechanicalData) {
    return readSection<ExcEntityData>(mechanicalData, L"entity_data");
}

void loadWithSections(IExchangeObject& object) {
    json::trace(area::exchangeMechanical, "void zeq::loadWithSections(IExchangeObject &)");
    const auto load = [](auto& data) {
        if (data.isLoaded() || data.source().empty()) return;
        detail::takeContent(data.source(), data, [&data](auto& content) {
            content.pass([&data](const auto& view) { readAll(data, view); });
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
