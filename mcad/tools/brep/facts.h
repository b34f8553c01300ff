// What can be told of single faces and edges.
#pragma once

#include <optional>
#include <vector>

#include "brep/work.h"
#include "platform/acis/acis.h"
#include "text/json_writer.h"

namespace zeq::brep {

/// A face or an edge: what it is, where it is, and how large. Members are those that its kind has, after the
/// transformation of its body; one that shears leaves the kind alone.
struct Fact {
    struct Figure {
        const char* name; ///< "radius"; "major" and "minor"; "angle" of a cone with its axis, in degrees
        double value;
    };
    struct Direction {
        const char* name; ///< "normal" of a plane, out of the body; "axis"; "direction" of a line
        SPAunit_vector value;
    };

    long id = 0;                ///< as Parts has it
    const char* kind = "other"; ///< "plane", "cylinder", ..., "line", "circle", ...
    std::optional<double> size; ///< area or length; nothing if it cannot be told
    std::vector<Figure> figures;
    std::optional<Direction> direction;
    std::optional<SPAposition> center; ///< or, of what has an axis, some point on it
};

struct Facts {
    std::vector<Fact> faces;
    std::vector<Fact> edges;

    /// Writes the members "faces" and "edges" of an object: arrays of objects with "id", which is a text, "kind",
    /// "area" or "length", and the others under their names.
    void write(text::JsonWriter& json) const;
};

/// Looks at the bodies on the list. Lengths are in the unit of their coordinates; sizes are as exact as measure() has
/// them.
Facts factsOf(const ENTITY_LIST& entities, Supervisor* supervisor = nullptr);

} // namespace zeq::brep
