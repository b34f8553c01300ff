// What the readers of a STEP file share: attributes by the entity that declares them, measures in the unit that
// travels, the faces and edges that an aspect of a shape stands for, and an account of what is left out.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "part21/exchange_structure.h"
#include "zeq_api/exchange_common/entity.h"

namespace zeq::step {

using part21::Instance;
using part21::Value;

/// What a number in the file is measured in.
struct Unit {
    enum class Kind {
        unknown,
        length,
        plane_angle,
        solid_angle,
        mass,
        time,
        temperature,
        ratio,
        derived ///< a product of powers of others
    };
    Kind kind = Kind::unknown;
    double factor = 1;      ///< to millimetres, degrees, steradians, grams, seconds, kelvins; 1 for others
    std::wstring name = {}; ///< as the file has it, or of its SI unit: "INCH", "kilogram/metre^3"
};

struct Measure {
    double value = 0; ///< as it stands in the file
    Unit unit = {};
    double inBase() const { return value * unit.factor; }
};

/// What of a file does not travel, and why.
class Losses {
public:
    struct Items {
        std::string kind;    ///< "semantic annotations"
        std::wstring reason; ///< "it has no value"
        bool operator<(const Items& other) const {
            return kind != other.kind ? kind < other.kind : reason < other.reason;
        }
    };

    void add(std::string kind, std::wstring reason, std::uint64_t number) {
        m_items[{std::move(kind), std::move(reason)}].push_back(number);
    }
    /// The numbers of the instances for each reason.
    const std::map<Items, std::vector<std::uint64_t>>& all() const { return m_items; }

private:
    std::map<Items, std::vector<std::uint64_t>> m_items;
};

/// A STEP file under reading.
class StepFile {
public:
    /// @param millimeters what the unit of length that travels has
    StepFile(const part21::ExchangeStructure& file, double millimeters)
        : m_file(file), m_millimeters(millimeters) {}

    const part21::ExchangeStructure& structure() const { return m_file; }
    Losses& losses() { return m_losses; }
    const Losses& losses() const { return m_losses; }

    /// What the unit of length that travels has in millimetres.
    double millimeters() const { return m_millimeters; }
    Instance at(const Value& reference) const { return m_file[reference]; }
    /// What a value refers to, itself or in lists and typed values within it, eight deep.
    std::vector<Instance> referred(const Value& value) const;

    /// The unit of a UNIT instance; `unknown` when it is none that is understood.
    Unit unit(const Instance& instance) const;
    /// The value and unit of a MEASURE_WITH_UNIT, a MEASURE_REPRESENTATION_ITEM or one of their kinds, complex or
    /// not. Nothing when it is none of these, or its value or unit cannot be read.
    std::optional<Measure> measure(const Instance& instance) const;
    /// A measure in the unit that travels: lengths in that, angles in degrees, others as they are.
    std::optional<double> value(const Instance& instance) const;
    double travelling(const Measure& measure) const;

    /// The millimetres of the unit of length of a representation's context; nothing when it has none.
    std::optional<double> lengthUnit(const Instance& context) const;

    /// The PRODUCT_DEFINITION that a shape, an aspect, a property or a representation is about, however many steps
    /// away; none if there is none.
    Instance product(const Instance& instance) const;
    /// The PRODUCT_DEFINITION whose shape a representation (or what is related to it) shows.
    Instance productOfRepresentation(const Instance& representation) const;

    /// The topological items that an aspect of a shape stands for, itself or through the aspects that it is composed
    /// of, each once.
    std::vector<Instance> items(const Instance& aspect) const;
    /// References to them; what is no face, edge or vertex by its number and type in the file.
    std::vector<ExcEntityPtr> entities(const Instance& aspect) const;

private:
    std::vector<Instance> itemsOfProperty(const Instance& property) const;

    const part21::ExchangeStructure& m_file;
    const double m_millimeters;
    Losses m_losses;
};

/// An attribute by its place among those that the entity `type` declares itself. In a simple instance, which may be of
/// a subtype, the `inherited` attributes of its supertypes stand before them; in a complex one every entity has its
/// own list.
Value attribute(const Instance& instance, std::string_view type, std::size_t inherited, std::size_t index);

/// The name of a representation item, a shape aspect, a property or whatever else begins with its name.
std::wstring nameOf(const Instance& instance);
/// The type as users may read it: "advanced_face".
std::wstring typeText(const Instance& instance);
/// The id of what is made of an instance: its number.
std::wstring idOf(const Instance& instance);
/// A reference to an item: a face, an edge, a vertex, or something else of the file.
ExcEntityPtr entityOf(const Instance& item);

} // namespace zeq::step
