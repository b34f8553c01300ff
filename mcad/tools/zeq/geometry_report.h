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

/// Takes the entities of each block, then the product structure, in whose properties a translator tells its
/// own figures (group "geometry check").
class GeometryReport {
public:
    /// Restored entities of a block. Returns what is wrong with them, in clauses without the block's name; of
    /// many faults of one kind only the worst. The supervisor watches the checks and the measuring.
    std::vector<std::string> add(std::uint64_t blockId, const ENTITY_LIST& entities,
                                 brep::Supervisor* supervisor = nullptr);
    /// Compares all blocks with what the translator told of them. Returns what does not agree, in sentences.
    std::vector<std::string> compare(const ExcProductStructure& structure);

    bool isEmpty() const { return m_blocks.empty(); }
    /// Number of faults found by either, and of blocks among them whose geometry did not arrive.
    std::size_t faults() const { return m_check.faults.size() + m_faults; }
    std::size_t missing() const { return m_missing.size(); }
    /// Faces that the translator had of the blocks that did arrive, and did not send.
    std::uint64_t missingFaces() const { return m_missingFaces; }
    /// "1 body, 6 faces (6 planes), ..." of a block.
    std::string blockText(std::uint64_t blockId) const { return m_blocks.at(blockId).count.text(); }
    /// Faces that arrived.
    std::uint64_t faces() const;
    /// A line for each block, or for the first ones and the number of the others.
    /// @param structure the names of the blocks; may be null
    std::string blocksText(const ExcProductStructure* structure, bool all) const;
    /// The lines of the summary.
    std::string summaryText() const;
    /// Members of a JSON object: "geometry" (a list of blocks, each with the faults found in it), "topology"
    /// and "geometry_check".
    std::string jsonMembers() const;

private:
    using Difference = GeometryDifference;
    struct Block {
        brep::Count count;
        brep::Measure measure;
        double gap = 0;                       ///< how far topology and geometry are apart, or may be
        std::optional<Difference> difference; ///< none: the translator told nothing
        std::vector<brep::Fault> faults;
    };

    std::map<std::uint64_t, Block> m_blocks;
    brep::Check m_check;
    std::uint64_t m_compared = 0;
    std::size_t m_faults = 0; ///< figures that are not the translator's
    std::vector<std::uint64_t> m_missing;
    Difference m_largest;
    std::uint64_t m_missingFaces = 0;
};

} // namespace zeq::host
