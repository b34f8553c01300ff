// The annotations of an import, part by part.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "zeq_api/exchange_pmi/annotation_set.h"
#include "zeq_api/exchange_structure/product_structure.h"

namespace zeq::host {

/// How linked elements are listed: numbers of faces alone, everything else with its kind, "12, 15, edge 33,
/// #77 axis2_placement_3d". Of many only the first, and how many more there are, unless all are wanted.
std::string linkedText(const std::vector<ExcEntityPtr>& elements, bool all);

/// Keeps what arrives, and shows it in the end.
class PMITables {
public:
    /// @param blockId none for the assembly as a whole
    void add(std::optional<std::uint64_t> blockId, const ExcPMIDataPtr& data);

    /// A paragraph for each part: its name, how many annotations and saved views it has, and a row for each
    /// annotation with its kind, name, value, faces, and the views that show it; or the first rows of all and the
    /// number of the others.
    /// @param structure the names of the parts and the unit of lengths; may be null
    std::string text(const ExcProductStructure* structure, bool all) const;

private:
    std::map<std::optional<std::uint64_t>, std::vector<ExcPMIDataPtr>> m_data; ///< the assembly comes first
};

} // namespace zeq::host
