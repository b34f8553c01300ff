// Whether restored geometry holds together.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "brep/work.h"
#include "platform/acis/acis.h"

namespace zeq::brep {

/// Something that is wrong.
struct Fault {
    std::string kind;         ///< a word or two, the same for all faults of one kind
    std::string text;         ///< a clause, with the names of what it is about
    std::optional<long> face; ///< its number, as Parts has it
    std::optional<long> edge;
    double distance = 0; ///< how far off something is; 0 if that is not the matter
};

/// The texts of faults for people: of each kind the worst one, and how many there are.
std::vector<std::string> summarized(const std::vector<Fault>& faults);
/// A JSON array of objects with the members of Fault.
std::string json(const std::vector<Fault>& faults);

/// What was found wrong, and how far topology and geometry are apart.
struct Check {
    /// How far something without a tolerance of its own may lie from where it belongs.
    static constexpr double tolerance = 1e-3;

    std::vector<Fault> faults;   ///< empty when all is sound
    double vertexGap = 0;        ///< largest distance of a vertex from the end of its edge's curve
    double edgeGap = 0;          ///< largest distance of an edge's curve from the surfaces of its faces
    std::uint64_t unchecked = 0; ///< uses of edges whose distance cannot be told
    double largestTolerance = 0; ///< of an edge or a vertex that has one of its own

    void add(const Check& other);
};

/// Checks the bodies: rings and partners of coedges, the use of edges equally often in either direction by
/// the shells of solids, and that these hang together; and the distances, against the tolerances of edges and
/// vertices. Distances that are no numbers count as infinite.
Check check(const ENTITY_LIST& entities, Supervisor* supervisor = nullptr);

} // namespace zeq::brep
