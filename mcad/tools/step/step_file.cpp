// Attributes, units and the ways between products, aspects and items.
#include "step/step_file.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <numbers>
#include <set>

namespace zeq::step {

namespace {

constexpr int mostConversions = 16; // of units into one another; a damaged file may make them circular
constexpr int mostLists = 8;        // within one another; each level costs a walk over its text
constexpr std::size_t mostReached = 100000; // instances of a search; a damaged file may lead everywhere

struct Prefix {
    std::string_view name;
    double factor;
};
constexpr std::array<Prefix, 16> prefixes{{{"EXA", 1e18},
                                           {"PETA", 1e15},
                                           {"TERA", 1e12},
                                           {"GIGA", 1e9},
                                           {"MEGA", 1e6},
                                           {"KILO", 1e3},
                                           {"HECTO", 1e2},
                                           {"DECA", 1e1},
                                           {"DECI", 1e-1},
                                           {"CENTI", 1e-2},
                                           {"MILLI", 1e-3},
                                           {"MICRO", 1e-6},
                                           {"NANO", 1e-9},
                                           {"PICO", 1e-12},
                                           {"FEMTO", 1e-15},
                                           {"ATTO", 1e-18}}};

struct SiUnit {
    std::string_view name;
    Unit::Kind kind;
    double factor; ///< to what Unit says
};
constexpr std::array<SiUnit, 7> siUnits{{{"METRE", Unit::Kind::length, 1000},
                                         {"RADIAN", Unit::Kind::plane_angle, 180 / std::numbers::pi},
                                         {"STERADIAN", Unit::Kind::solid_angle, 1},
                                         {"GRAM", Unit::Kind::mass, 1},
                                         {"SECOND", Unit::Kind::time, 1},
                                         {"KELVIN", Unit::Kind::temperature, 1},
                                         {"DEGREE_CELSIUS", Unit::Kind::temperature, 1}}};

std::wstring lower(std::string_view text) {
    std::wstring result;
    for (const char c : text) result += static_cast<wchar_t>(std::tolower(static_cast<unsigned char>(c)));
    return result;
}

/// The parameters that SI_UNIT declares, which in a simple instance the dimensions stand before.
Unit siUnit(const Instance& instance) {
    Unit unit;
    const std::string_view prefix = attribute(instance, "SI_UNIT", 1, 0).name();
    const std::string_view name = attribute(instance, "SI_UNIT", 1, 1).name();
    unit.name = lower(prefix) + lower(name);
    for (const SiUnit& each : siUnits)
        if (each.name == name) {
            unit.kind = each.kind;
            unit.factor = each.factor;
        }
    for (const Prefix& each : prefixes)
        if (each.name == prefix) unit.factor *= each.factor;
    return unit;
}

bool isOneOf(const Instance& instance, std::initializer_list<std::string_view> types) {
    for (const std::string_view type : types)
        if (instance.is(type)) return true;
    return false;
}

bool isFace(const Instance& item) {
    return isOneOf(item, {"ADVANCED_FACE", "FACE_SURFACE", "TRIANGULATED_FACE", "COMPLEX_TRIANGULATED_FACE"});
}

bool isEdge(const Instance& item) { return isOneOf(item, {"EDGE_CURVE", "TESSELLATED_CONNECTING_EDGE"}); }

bool isTopology(const Instance& item) { return isFace(item) || isEdge(item) || item.is("VERTEX_POINT"); }

/// A relation whose first end stands for what the second stands for. A distance, which is a relation too, is none.
bool isComposition(const Instance& relation) {
    if (relation.is("FEATURE_FOR_DATUM_TARGET_RELATIONSHIP")) return true;
    if (relation.is("DIMENSIONAL_LOCATION")) return false;
    const auto types = relation.types();
    return std::ranges::any_of(types, [](std::string_view type) {
        return type.starts_with("SHAPE_ASPECT") && type.ends_with("RELATIONSHIP");
    });
}

bool isProduct(const Instance& instance) {
    return isOneOf(instance, {"PRODUCT_DEFINITION", "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS"});
}

/// Walks from an instance, each once and the nearest first, until one is what is looked for; none if none is.
template <class Next, class IsWanted>
Instance search(const Instance& start, const Next& next, const IsWanted& isWanted) {
    std::vector<Instance> reached;
    std::set<std::uint64_t> known;
    const auto reach = [&](const Instance& instance) {
        if (instance && known.insert(instance.number()).second) reached.push_back(instance);
    };
    reach(start);
    for (std::size_t i = 0; i < reached.size() && i < mostReached; ++i) {
        if (isWanted(reached[i])) return reached[i];
        for (const Instance& instance : next(reached[i])) reach(instance);
    }
    return {};
}

} // namespace

Value attribute(const Instance& instance, std::string_view type, std::size_t inherited, std::size_t index) {
    if (instance.isComplex()) return instance.parameters(type)[index];
    return instance.parameters()[inherited + index];
}

std::wstring nameOf(const Instance& instance) {
    if (!instance.isComplex()) return instance.parameters()[0].text();
    for (const std::string_view type : {"REPRESENTATION_ITEM", "SHAPE_ASPECT", "PROPERTY_DEFINITION",
                                        "REPRESENTATION", "GEOMETRIC_TOLERANCE"})
        if (instance.is(type)) return instance.parameters(type)[0].text();
    return {};
}

std::wstring typeText(const Instance& instance) {
    std::wstring result;
    for (const std::string_view type : instance.types())
        result += (result.empty() ? L"" : L" ") + lower(type);
    return result;
}

std::wstring idOf(const Instance& instance) { return std::to_wstring(instance.number()); }

ExcEntityPtr entityOf(const Instance& item) {
    using Subentity = ExcFullSubentPath::ESubentType;
    auto entity = std::make_shared<ExcEntity>();
    const Subentity type = isFace(item)              ? Subentity::face
                           : isEdge(item)            ? Subentity::edge
                           : item.is("VERTEX_POINT") ? Subentity::vertex
                                                     : Subentity::unknown;
    if (type == Subentity::unknown) {
        entity->setType(ExcEntity::EType::original);
        entity->id() = L"#" + idOf(item);
        entity->description() = typeText(item);
        return entity;
    }
    entity->setType(ExcEntity::EType::fsp);
    entity->fsp() = std::make_shared<ExcFullSubentPath>(item.number());
    entity->fsp()->setSubentType(type);
    return entity;
}

Unit StepFile::unit(const Instance& instance) const {
    Unit unit;
    Instance at = instance;
    for (int step = 0; at && step < mostConversions; ++step) {
        if (at.is("SI_UNIT")) {
            const Unit si = siUnit(at);
            unit.kind = si.kind;
            unit.factor *= si.factor;
            if (unit.name.empty()) unit.name = si.name;
            return unit;
        }
        if (!at.is("CONVERSION_BASED_UNIT")) break;
        if (unit.name.empty()) unit.name = attribute(at, "CONVERSION_BASED_UNIT", 1, 0).text();
        const Instance conversion = this->at(attribute(at, "CONVERSION_BASED_UNIT", 1, 1));
        // A MEASURE_WITH_UNIT: its value, and the unit that this is in.
        std::optional<double> factor;
        for (const std::string_view type : conversion.types()) {
            const part21::List parameters = conversion.parameters(type);
            if (!factor) factor = parameters[0].number();
            if (const Instance next = this->at(parameters[1])) at = next;
        }
        if (!factor) break;
        unit.factor *= *factor;
    }
    if (instance.is("DERIVED_UNIT")) {
        Unit derived{Unit::Kind::derived, 1, {}};
        for (const Value& value : attribute(instance, "DERIVED_UNIT", 0, 0).items()) {
            const Instance element = this->at(value);
            const Instance base = this->at(element.parameters()[0]);
            const auto exponent = element.parameters()[1].number();
            if (base.is("DERIVED_UNIT") || !exponent) return {};
            const Unit part = this->unit(base);
            derived.factor *= std::pow(part.factor, *exponent);
            derived.name += (derived.name.empty() ? L"" : L"*") + part.name;
            if (*exponent != 1) derived.name += L"^" + std::to_wstring(static_cast<int>(*exponent));
        }
        return derived;
    }
    if (isOneOf(instance, {"RATIO_UNIT", "CONTEXT_DEPENDENT_UNIT"})) return {Unit::Kind::ratio, 1, {}};
    return {};
}

std::optional<Measure> StepFile::measure(const Instance& instance) const {
    for (const std::string_view type : instance.types()) {
        const part21::List parameters = instance.parameters(type);
        for (std::size_t i = 0; i < 2; ++i) { // a representation item has its name first
            const Value value = parameters[i];
            const Instance unit = at(parameters[i + 1]);
            const std::optional<double> number = value.number();
            if (value.kind() == part21::Kind::typed && number && unit)
                return Measure{*number, this->unit(unit)};
        }
    }
    return std::nullopt;
}

double StepFile::travelling(const Measure& measure) const {
    return measure.unit.kind == Unit::Kind::length ? measure.inBase() / m_millimeters : measure.inBase();
}

std::optional<double> StepFile::value(const Instance& instance) const {
    const std::optional<Measure> measure = this->measure(instance);
    if (!measure || measure->unit.kind == Unit::Kind::unknown) return std::nullopt;
    return travelling(*measure);
}

std::optional<double> StepFile::lengthUnit(const Instance& context) const {
    for (const Value& value : attribute(context, "GLOBAL_UNIT_ASSIGNED_CONTEXT", 2, 0).items())
        if (const Unit unit = this->unit(at(value)); unit.kind == Unit::Kind::length) return unit.factor;
    return std::nullopt;
}

Instance StepFile::product(const Instance& instance) const {
    const auto next = [this](const Instance& at) {
        if (at.is("NEXT_ASSEMBLY_USAGE_OCCURRENCE"))
            return std::vector{this->at(attribute(at, "PRODUCT_DEFINITION_RELATIONSHIP", 0, 3))};
        return at.references();
    };
    return search(instance, next, isProduct);
}

Instance StepFile::productOfRepresentation(const Instance& representation) const {
    Instance found;
    const auto next = [](const Instance& at) {
        std::vector<Instance> related;
        for (const Instance& user : at.users()) {
            // A placement in an assembly leads to another product.
            if (user.is("REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION")) continue;
            const auto types = user.types();
            const bool isRelation = std::ranges::any_of(types, [](std::string_view type) {
                return type.ends_with("REPRESENTATION_RELATIONSHIP") ||
                       type.ends_with("DRAUGHTING_RELATIONSHIP");
            });
            if (!isRelation) continue;
            for (const Instance& other : user.references())
                if (!(other == at)) related.push_back(other);
        }
        return related;
    };
    const auto isOfProduct = [&](const Instance& at) {
        for (const Instance& user : at.users())
            if (isOneOf(user, {"SHAPE_DEFINITION_REPRESENTATION", "PROPERTY_DEFINITION_REPRESENTATION"}) &&
                this->at(user.parameters()[1]) == at)
                if ((found = product(this->at(user.parameters()[0])))) return true;
        return false;
    };
    search(representation, next, isOfProduct);
    return found;
}

std::vector<Instance> StepFile::referred(const Value& value) const {
    std::vector<Instance> result;
    std::vector<Value> level{value};
    for (int depth = 0; depth < mostLists && !level.empty(); ++depth) {
        std::vector<Value> inner;
        for (const Value& each : level) {
            if (const Instance instance = at(each)) result.push_back(instance);
            for (const Value& element : each.items()) inner.push_back(element);
        }
        level = std::move(inner);
    }
    return result;
}

std::vector<Instance> StepFile::itemsOfProperty(const Instance& property) const {
    std::vector<Instance> result;
    for (const Instance& user : property.users("SHAPE_DEFINITION_REPRESENTATION")) {
        const Instance representation = at(user.parameters()[1]);
        std::ranges::copy(referred(attribute(representation, "REPRESENTATION", 0, 1)),
                          std::back_inserter(result));
    }
    return result;
}

std::vector<Instance> StepFile::items(const Instance& aspect) const {
    std::vector<Instance> found;
    std::set<std::uint64_t> known;
    const auto collect = [&](const Value& value) {
        const auto next = [](const Instance& at) {
            return at.is("COMPOUND_REPRESENTATION_ITEM") ? at.references() : std::vector<Instance>();
        };
        const auto add = [&](const Instance& at) {
            if (!at.is("COMPOUND_REPRESENTATION_ITEM") && known.insert(at.number()).second)
                found.push_back(at);
            return false;
        };
        for (const Instance& element : referred(value)) search(element, next, add);
    };
    const auto next = [&](const Instance& at) {
        std::vector<Instance> parts;
        for (const Instance& user : at.users()) {
            if (isOneOf(user, {"GEOMETRIC_ITEM_SPECIFIC_USAGE", "ITEM_IDENTIFIED_REPRESENTATION_USAGE"})) {
                if (this->at(user.parameters()[2]) == at) collect(user.parameters()[4]);
            } else if (user.is("PROPERTY_DEFINITION")) { // as older editions have it
                for (const Instance& item : itemsOfProperty(user))
                    if (isTopology(item) && known.insert(item.number()).second) found.push_back(item);
            } else if (isComposition(user) &&
                       this->at(attribute(user, "SHAPE_ASPECT_RELATIONSHIP", 0, 2)) == at) {
                const Instance part = this->at(attribute(user, "SHAPE_ASPECT_RELATIONSHIP", 0, 3));
                if (!part.is("DATUM")) parts.push_back(part);
            }
        }
        return parts;
    };
    search(aspect, next, [](const Instance&) { return false; });
    return found;
}

std::vector<ExcEntityPtr> StepFile::entities(const Instance& aspect) const {
    std::vector<ExcEntityPtr> result;
    for (const Instance& item : items(aspect)) result.push_back(entityOf(item));
    return result;
}

} // namespace zeq::step
