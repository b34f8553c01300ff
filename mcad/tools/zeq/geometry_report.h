// The geometry that arrived with an import: what it consists of, whether it holds together, and whether it is
// what the translator had.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "brep/check.h"
#include "brep/count.h"
#include "brep/measure.h"
#include "zeq_api/exchange_structure/product_structure.h"

namespace zeq::host {

/// How far the translator's figures of a block differ from ours, relative to them.
struct GeometryDifference {
    double counts = 0;
    double length = 0;
    double area = 0;
    double box = 0; ///< of any side, relative to the diagonal
};

/// What the translator had and did not send.
struct MissingGeometry {
    std::uint64_t parts = 0; ///< blocks without any
    std::uint64_t faces = 0; ///< of the others
};

/// Takes the entities of each block, then the product structure, in whose properties a translator tells its
/// own figures (group "geometry check").
class GeometryReport {
public:
    /// Restored entities of a block. Returns what is wrong with them, each a sentence.
    std::vector<std::string> add(std::uint64_t blockId, const ENTITY_LIST& entities);
    /// Compares all blocks with what the translator told of them. Returns what does not agree.
    std::vector<std::string> compare(const ExcProductStructure& structure);

    /// What the last comparison found missing.
    const MissingGeometry& missing() const { return m_missing; }

    bool isEmpty() const { return m_blocks.empty(); }
    /// "1 body, 6 faces (6 planes), ..." of a block.
    std::string blockText(std::uint64_t blockId) const { return m_blocks.at(blockId).count.text(); }
    /// A line for each block, or for the first ones and the number of the others.
    std::string blocksText(const ExcProductStructure& structure, bool all) const;
    /// The lines of the summary.
    std::string summaryText() const;
    /// Members of a JSON object: "geometry" (a list of blocks), "topology" and "geometry_check".
    std::string jsonMembers() const;

private:
    using Difference = GeometryDifference;
    struct Block {
        brep::Count count;
        brep::Measure measure;
        std::optional<Difference> difference; ///< none: the translator told nothing
    };

    std::map<std::uint64_t, Block> m_blocks;
    brep::Check m_check;
    std::uint64_t m_compared = 0;
    std::size_t m_faults = 0; ///< figures that are not the translator's
    Difference m_largest;
    MissingGeometry m_missing;
};

} // namespace zeq::host
