// Walks property definitions with their representations: validation properties, user-defined attributes, and whatever
// else has a value.
#include <array>

#include "step/part_reading.h"

namespace zeq::step {

namespace {

constexpr std::array<std::string_view, 3> links{"PROPERTY_DEFINITION_REPRESENTATION",
                                                "MATERIAL_PROPERTY_REPRESENTATION",
                                                "FEA_MATERIAL_PROPERTY_REPRESENTATION"};

bool isWholePart(const Instance& subject) {
    return subject.is("PRODUCT_DEFINITION") || subject.is("PRODUCT_DEFINITION_SHAPE") ||
           subject.is("PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS");
}

/// Notes are read with the annotations.
bool isNote(const Instance& definition) { return nameOf(definition) == L"semantic text"; }

/// What in a part a property is about, as a user may read it: "flatness_tolerance #12 Flatness.1".
std::wstring labelOf(const StepFile& file, const Instance& subject) {
    Instance about = subject;
    if (subject.is("CHARACTERIZED_ITEM_WITHIN_REPRESENTATION"))
        if (const Instance item = file.at(subject.parameters()[2])) about = item;
    std::wstring label = about.is("DRAUGHTING_MODEL") ? L"draughting_model" : typeText(about);
    label += L" #" + idOf(about);
    const std::wstring name = trimmed(nameOf(about));
    return saysSomething(name) ? label + L" " + name : label;
}

/// The group of a property: that of its definition, which says also what in the part it is about.
std::wstring groupOf(const StepFile& file, const Instance& definition, const Instance& subject) {
    std::wstring group = trimmed(nameOf(definition));
    if (isWholePart(subject)) {
        if (!definition.users("GENERAL_PROPERTY_ASSOCIATION").empty()) return L"user-defined attributes";
        return group.empty() ? L"properties" : group;
    }
    if (group.empty()) group = L"properties";
    return group + L": " + labelOf(file, subject);
}

} // namespace

void readProperties(PartReading& reading) {
    MaterialReader materials(reading);
    const auto readRepresentation = [&](const Instance& definition, const Instance& representation) {
        const Instance subject = reading.file.at(attribute(definition, "PROPERTY_DEFINITION", 0, 2));
        const Instance product = subject ? reading.owners.ofSubject(subject) : Instance();
        const std::wstring group = groupOf(reading.file, definition, subject);
        const std::wstring ownName = trimmed(nameOf(definition));
        const Instance context = reading.file.at(attribute(representation, "REPRESENTATION", 0, 2));
        const double unit = reading.file.lengthUnit(context).value_or(0);
        for (const Instance& item : itemsOf(reading.file, representation)) {
            reading.count("properties", item);
            if (!product) {
                reading.lose("properties", L"what it is about belongs to no part", item);
                continue;
            }
            ItemValue value = readItemValue(reading, item, unit);
            if (!value.property) {
                reading.lose("properties", std::move(value.problem), item);
                continue;
            }
            if (value.property->name().empty()) value.property->name() = ownName;
            reading.addProperty(product, group, std::move(*value.property));
        }
    };
    for (const std::string_view type : links)
        for (const Instance& link : reading.file.structure().all(type)) {
            const Instance definition = reading.file.at(attribute(link, links[0], 0, 0));
            const Instance representation = reading.file.at(attribute(link, links[0], 0, 1));
            if (!definition || !representation || isNote(definition)) continue;
            if (MaterialReader::isMaterial(definition))
                materials.read(definition, representation);
            else
                readRepresentation(definition, representation);
        }
    materials.finish();
}

} // namespace zeq::step
