// What the readers of the data of parts share. Internal.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "step/owners.h"
#include "step/part_data.h"

namespace zeq::step {

class PartReading {
public:
    PartReading(StepFile& stepFile, std::wstring symbol);

    ExcMechanicalMiscData& misc(const Instance& product);
    ExcEntityData& entities(const Instance& product);
    /// Into the group of that name, which is made at need.
    void addProperty(const Instance& product, const std::wstring& group, ExcMiscProperty property);
    /// Counts what the file holds.
    void count(const char* kind, const Instance& instance);
    /// Counts what does not travel.
    void lose(const char* kind, std::wstring reason, const Instance& instance);

    StepFile& file;
    const std::wstring lengthSymbol;
    Owners owners;
    std::unordered_map<std::uint64_t, int> layerIds; ///< by the numbers of the items on them
    PartContents contents;

private:
    std::map<std::pair<std::uint64_t, std::wstring>, std::size_t> m_groups;
};

void readLayers(PartReading& reading);
/// Of materials and all else that is told by property definitions.
void readProperties(PartReading& reading);
/// The versions of the products.
void readIdentification(PartReading& reading);
void readCoordinateSystems(PartReading& reading);
/// Names, visibility and lines; counts the colours.
void readEntityData(PartReading& reading);

/// Collects what the file says of materials.
class MaterialReader {
public:
    explicit MaterialReader(PartReading& reading);

    static bool isMaterial(const Instance& definition);
    /// Takes the items of a representation of a material's property definition.
    void read(const Instance& definition, const Instance& representation);
    /// Adds the materials to their parts.
    void finish();

private:
    struct Material {
        Instance first; ///< what the file says first of it
        Instance product;
        ExcMiscMaterialPtr material;
    };

    std::vector<Instance> subjectsOf(const Instance& definition) const;
    /// The part that is made from a raw material, which is a product too (as in ISO 10303-214).
    Instance madeFrom(const Instance& material);
    Material& materialOf(const Instance& subject, const Instance& from);
    void readItem(Material& material, const Instance& item, const Instance& definition,
                  const Instance& representation);

    PartReading& m_reading;
    std::map<std::uint64_t, Material> m_materials; ///< by the numbers of what they are the material of
};

/// The value of a representation item as a property of that name.
struct ItemValue {
    std::optional<ExcMiscProperty> property;
    std::wstring problem; ///< why there is none
};
/// @param millimeters of the unit of length of the representation; 0 if there is none
ItemValue readItemValue(const PartReading& reading, const Instance& item, double millimeters);
ExcMiscProperty textProperty(std::wstring name, std::wstring value);

/// Items of a representation, those of compounds in place of these.
std::vector<Instance> itemsOf(const StepFile& file, const Instance& representation);
/// What a STYLED_ITEM gives a style, or one styled item overrides of another; others as they are.
Instance styledBy(const StepFile& file, const Instance& item);
/// Whether an annotation or a part of one.
bool isAnnotation(const Instance& item);

std::wstring trimmed(const std::wstring& text);
/// Whether a text is more than a placeholder, as "NONE" is.
bool saysSomething(const std::wstring& text);

} // namespace zeq::step
