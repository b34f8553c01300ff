// One table over all parts for each of the two.
#include "zeq/organisation_tables.h"

#include <algorithm>

#include "text/table.h"
#include "text/text.h"
#include "zeq/block_name.h"

namespace zeq::host {

namespace {

constexpr std::size_t mostRows = 100;

std::string unitText(ExcMiscMaterial::EProperty which, const ExcMiscMaterialProperty::UnitSet& units) {
    const auto name = [](const ExcMiscMaterialPropertyUnitPtr& unit) {
        return unit ? text::printable(unit->units()) : std::string();
    };
    std::string whole = name(units.materialUnits);
    const std::string mass = name(units.mass), length = name(units.length);
    if (whole.empty() && which == ExcMiscMaterial::EProperty::density && !mass.empty() && !length.empty())
        return mass + "/" + length + "³";
    return whole;
}

std::string otherProperties(const ExcMiscMaterial& material) {
    std::string text;
    for (const EnumEntry& entry : enumTable(ExcMiscMaterial::EProperty{}).entries()) {
        const auto which = static_cast<ExcMiscMaterial::EProperty>(entry.value);
        const ExcMiscMaterialPropertyPtr property = material.get(which);
        if (!property || which == ExcMiscMaterial::EProperty::density) continue;
        std::string name = text::printable(entry.name);
        std::ranges::replace(name, '_', ' ');
        text += (text.empty() ? "" : "\n") + name + " " + propertyText(which, *property);
    }
    return text;
}

std::string scopeOf(const ExcMiscMaterial& material) {
    std::string text = material.isPartLevelMaterial() ? "the whole part" : "";
    if (const std::size_t count = material.linkedElements().size(); count > 0)
        text += (text.empty() ? "" : ", ") + text::counted(count, "entity", "entities");
    return text;
}

/// The table, or its first rows.
template <class Item, class MakeRow>
std::string paragraph(text::Table table, const std::vector<Item>& items, bool all, const char* one,
                      const char* several, const MakeRow& makeRow) {
    if (items.empty()) return "";
    const std::size_t shown = all ? items.size() : std::min(items.size(), mostRows);
    for (std::size_t i = 0; i < shown; ++i) table.addRow(makeRow(items[i]));
    std::string text = "\n" + table.text();
    if (shown < items.size())
        text += "... and " + text::counted(items.size() - shown, one, several) + "; --all shows them\n";
    return text;
}

} // namespace

std::string propertyText(ExcMiscMaterial::EProperty which, const ExcMiscMaterialProperty& property) {
    const std::string unit = unitText(which, property.unit());
    return text::number(property.value()) + (unit.empty() ? "" : " " + unit);
}

void OrganisationTables::add(std::uint64_t blockId, const ExcMechanicalMiscDataPtr& data) {
    if (data) m_parts.push_back({blockId, data});
}

std::string OrganisationTables::text(const ExcProductStructure* structure, bool all) const {
    struct Layer {
        std::uint64_t blockId;
        const ExcMiscLayer* layer;
    };
    struct Material {
        std::uint64_t blockId;
        const ExcMiscMaterial* material;
    };
    std::vector<Layer> layers;
    std::vector<Material> materials;
    for (const auto& [blockId, data] : m_parts) {
        for (const ExcMiscLayerPtr& layer : data->layers()) layers.push_back({blockId, layer.get()});
        for (const ExcMiscMaterialPtr& material : data->materials())
            materials.push_back({blockId, material.get()});
    }
    const auto layerRow = [structure](const Layer& each) -> std::vector<std::string> {
        const std::string name = text::printable(each.layer->name());
        return {name.empty() ? std::to_string(each.layer->id()) : name,
                std::to_string(each.layer->entities().size()), blockName(each.blockId, structure)};
    };
    const auto materialRow = [structure](const Material& each) -> std::vector<std::string> {
        constexpr auto densityKey = ExcMiscMaterial::EProperty::density;
        const ExcMiscMaterialPropertyPtr density = each.material->get(densityKey);
        return {text::printable(each.material->name()), density ? propertyText(densityKey, *density) : "",
                otherProperties(*each.material), scopeOf(*each.material), blockName(each.blockId, structure)};
    };
    return paragraph(text::Table({{"Layer"}, {"Entities", true}, {"Block"}}), layers, all, "more layer",
                     "more layers", layerRow) +
           paragraph(text::Table({{"Material"}, {"Density"}, {"Properties"}, {"Applies to"}, {"Block"}}),
                     materials, all, "more material", "more materials", materialRow);
}

} // namespace zeq::host
