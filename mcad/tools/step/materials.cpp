// Materials as the practice of the format has them: properties named 'material property', one for the name and one for
// each quantity; or designations (ISO 10303-45).
#include <algorithm>
#include <array>
#include <cwctype>

#include "step/part_reading.h"

namespace zeq::step {

namespace {

using Property = ExcMiscMaterial::EProperty;

/// Words that a property is known by, the more special ones first.
struct KnownProperty {
    std::wstring_view words;
    Property property;
};
constexpr std::array<KnownProperty, 16> knownProperties{
    {{L"density", Property::density},
     {L"young", Property::youngs_modulus},
     {L"elastic modulus", Property::youngs_modulus},
     {L"modulus of elasticity", Property::youngs_modulus},
     {L"poisson", Property::poissons_ratio},
     {L"yield", Property::yield_strength},
     {L"tensile", Property::tensile_strength},
     {L"ultimate strength", Property::tensile_strength},
     {L"thermal conductivity", Property::thermal_conductivity},
     {L"heat conductivity", Property::thermal_conductivity},
     {L"thermal expansion", Property::thermal_expansion_coefficient},
     {L"specific heat", Property::specific_heat},
     {L"heat capacity", Property::specific_heat},
     {L"shear modulus", Property::shear_modulus},
     {L"modulus of rigidity", Property::shear_modulus},
     {L"rigidity modulus", Property::shear_modulus}}};

std::wstring lower(std::wstring text) {
    for (wchar_t& c : text)
        c = c == L'_' ? L' ' : static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    return text;
}

Property knownBy(const std::wstring& name) {
    const std::wstring words = lower(name);
    for (const KnownProperty& known : knownProperties)
        if (words.find(known.words) != words.npos) return known.property;
    return Property::unknown;
}

bool isName(const std::wstring& text) { return lower(text).find(L"name") != std::wstring::npos; }

Instance unitOf(const StepFile& file, const Instance& item) {
    for (const Instance& reference : item.references())
        if (const Unit unit = file.unit(reference); unit.kind != Unit::Kind::unknown || !unit.name.empty())
            return reference;
    return {};
}

ExcMiscMaterialPropertyUnitPtr unitNamed(const std::wstring& name) {
    auto unit = std::make_shared<ExcMiscMaterialPropertyUnit>();
    unit->setUnits(name);
    return unit;
}

/// Names the unit of a density, also where its powers are not those of one: Open CASCADE writes grams to the third and
/// centimetres to the second. Nothing else can be meant than mass by volume.
void nameDensity(const StepFile& file, const Instance& instance, ExcMiscMaterialProperty::UnitSet& units) {
    if (!units.mass || !units.length || !units.materialUnits) return;
    for (const Value& value : attribute(instance, "DERIVED_UNIT", 0, 0).items()) {
        const Instance element = file.at(value);
        const double power = element.parameters()[1].number().value_or(0);
        if (file.unit(file.at(element.parameters()[0])).kind == Unit::Kind::length && power < 0 &&
            power != -3)
            return;
    }
    units.materialUnits->setUnits(units.mass->units() + L"/" + units.length->units() + L"^3");
}

/// The unit as a whole and what of it is mass, length, time and temperature.
ExcMiscMaterialProperty::UnitSet unitsOf(const StepFile& file, const Instance& instance) {
    ExcMiscMaterialProperty::UnitSet units;
    const auto set = [&units](const Unit& unit) {
        using Kind = Unit::Kind;
        for (const auto& [kind, which] : {std::pair{Kind::mass, &units.mass},
                                          {Kind::length, &units.length},
                                          {Kind::time, &units.time},
                                          {Kind::temperature, &units.temperature}})
            if (unit.kind == kind) *which = unitNamed(unit.name);
    };
    const Unit whole = file.unit(instance);
    if (!whole.name.empty()) units.materialUnits = unitNamed(whole.name);
    set(whole);
    for (const Value& element : attribute(instance, "DERIVED_UNIT", 0, 0).items())
        set(file.unit(file.at(file.at(element).parameters()[0])));
    return units;
}

/// The name of the product of a definition, or its id.
std::wstring productName(const StepFile& file, const Instance& definition) {
    const Instance version = file.at(attribute(definition, "PRODUCT_DEFINITION", 0, 2));
    const part21::List product = file.at(version.parameters()[2]).parameters();
    const std::wstring name = trimmed(product[1].text());
    return saysSomething(name) ? name : trimmed(product[0].text());
}

} // namespace

MaterialReader::MaterialReader(PartReading& reading) : m_reading(reading) {
    const StepFile& file = reading.file;
    for (const Instance& designation : file.structure().all("MATERIAL_DESIGNATION"))
        for (const Value& value : attribute(designation, "MATERIAL_DESIGNATION", 0, 1).items())
            if (const Instance subject = file.at(value))
                materialOf(subject, designation)
                    .material->setName(trimmed(attribute(designation, "MATERIAL_DESIGNATION", 0, 0).text()));
}

bool MaterialReader::isMaterial(const Instance& definition) {
    return definition.is("MATERIAL_PROPERTY") || lower(trimmed(nameOf(definition))) == L"material property";
}

void MaterialReader::read(const Instance& definition, const Instance& representation) {
    for (const Instance& subject : subjectsOf(definition)) {
        Material& material = materialOf(subject, definition);
        // The name of a MATERIAL_PROPERTY is that of the property or a number, its description that of the material.
        if (definition.is("MATERIAL_PROPERTY") && material.material->name().empty())
            material.material->setName(trimmed(attribute(definition, "PROPERTY_DEFINITION", 0, 1).text()));
        for (const Instance& item : itemsOf(m_reading.file, representation))
            readItem(material, item, definition, representation);
    }
}

void MaterialReader::finish() {
    for (const auto& [subject, material] : m_materials) {
        m_reading.count("materials", material.first);
        if (material.product)
            m_reading.misc(material.product).addMaterial(material.material);
        else
            m_reading.lose("materials", L"what is made of it belongs to no part", material.first);
    }
}

std::vector<Instance> MaterialReader::subjectsOf(const Instance& definition) const {
    const StepFile& file = m_reading.file;
    std::vector<Instance> subjects;
    for (const Instance& link : definition.users("MATERIAL_DESIGNATION_CHARACTERIZATION")) {
        const Instance designation = file.at(link.parameters()[2]);
        for (const Value& value : attribute(designation, "MATERIAL_DESIGNATION", 0, 1).items())
            if (const Instance subject = file.at(value)) subjects.push_back(subject);
    }
    if (subjects.empty())
        if (const Instance subject = file.at(attribute(definition, "PROPERTY_DEFINITION", 0, 2)))
            subjects.push_back(subject);
    return subjects;
}

Instance MaterialReader::madeFrom(const Instance& material) {
    for (const Instance& user : material.users())
        for (const std::string_view type :
             {"PRODUCT_DEFINITION_RELATIONSHIP", "DESIGN_MAKE_FROM_RELATIONSHIP", "MAKE_FROM_USAGE_OPTION",
              "PRODUCT_DEFINITION_USAGE"})
            if (user.is(type) &&
                m_reading.file.at(attribute(user, "PRODUCT_DEFINITION_RELATIONSHIP", 0, 4)) == material)
                if (const Instance part = m_reading.owners.ofSubject(
                        m_reading.file.at(attribute(user, "PRODUCT_DEFINITION_RELATIONSHIP", 0, 3))))
                    return part;
    return {};
}

MaterialReader::Material& MaterialReader::materialOf(const Instance& subject, const Instance& from) {
    Instance product = m_reading.owners.ofSubject(subject);
    const Instance madeOf = product ? Instance() : subject;
    if (!product) product = madeFrom(subject);
    // An aspect of the shape with items of its own stands for these; all else for the part.
    const std::vector<ExcEntityPtr> bodies = m_reading.file.entities(subject);
    const bool isPart = bodies.empty() && product;
    const auto [at, isNew] = m_materials.try_emplace(isPart ? product.number() : subject.number());
    if (isNew) {
        at->second = {from, product, std::make_shared<ExcMiscMaterial>()};
        at->second.material->setPartLevelMaterial(isPart);
        for (const ExcEntityPtr& body : bodies) at->second.material->addLinkedElement(body);
        at->second.material->setName(productName(m_reading.file, madeOf));
    }
    return at->second;
}

void MaterialReader::readItem(Material& material, const Instance& item, const Instance& definition,
                              const Instance& representation) {
    const std::wstring itemName = nameOf(item);
    const std::wstring description = attribute(definition, "PROPERTY_DEFINITION", 0, 1).text();
    if (item.is("DESCRIPTIVE_REPRESENTATION_ITEM") && material.material->name().empty() &&
        (isName(itemName) || isName(nameOf(representation)) || isName(description))) {
        // The item has the name as its own, or says that it is one.
        const std::wstring text = trimmed(attribute(item, "DESCRIPTIVE_REPRESENTATION_ITEM", 1, 0).text());
        const std::wstring ownName = trimmed(itemName);
        const bool isOwn = saysSomething(ownName) && !isName(ownName) && lower(ownName) != L"material";
        material.material->setName(isOwn ? ownName : text);
        if (!isOwn || text == ownName || !saysSomething(text) || !material.product) return;
        m_reading.count("properties", item);
        m_reading.addProperty(material.product, L"material property", textProperty(L"description", text));
        return;
    }
    Property which = knownBy(itemName);
    if (which == Property::unknown) which = knownBy(nameOf(representation));
    if (which == Property::unknown) which = knownBy(description);
    const auto measure = m_reading.file.measure(item);
    const bool isPlain = item.is("VALUE_REPRESENTATION_ITEM") || item.is("REAL_REPRESENTATION_ITEM") ||
                         item.is("FEA_MASS_DENSITY");
    const std::optional<double> value =
        measure ? measure->value : (isPlain ? item.parameters()[1].number() : std::nullopt);
    if (which != Property::unknown && value && !material.material->get(which)) {
        auto property = std::make_shared<ExcMiscMaterialProperty>();
        property->setValue(*value);
        if (const Instance unit = unitOf(m_reading.file, item)) {
            property->unit() = unitsOf(m_reading.file, unit);
            if (which == Property::density) nameDensity(m_reading.file, unit, property->unit());
        }
        if (which != Property::poissons_ratio && !property->unit().materialUnits) {
            m_reading.count("properties", item);
            m_reading.lose("properties", L"a quantity of a material has no unit", item);
            return;
        }
        material.material->set(which, property);
        return;
    }
    m_reading.count("properties", item);
    if (!material.product) {
        m_reading.lose("properties", L"what it is about belongs to no part", item);
        return;
    }
    const Instance context = m_reading.file.at(attribute(representation, "REPRESENTATION", 0, 2));
    ItemValue other = readItemValue(m_reading, item, m_reading.file.lengthUnit(context).value_or(0));
    if (!other.property) {
        m_reading.lose("properties", std::move(other.problem), item);
        return;
    }
    if (other.property->name().empty()) other.property->name() = trimmed(nameOf(representation));
    m_reading.addProperty(material.product, L"material property", std::move(*other.property));
}

} // namespace zeq::step
