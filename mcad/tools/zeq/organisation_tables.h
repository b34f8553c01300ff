// The layers and materials of an import.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "zeq_api/exchange_mechanical/mechanical_misc_data.h"
#include "zeq_api/exchange_structure/product_structure.h"

namespace zeq::host {

/// "7850 kg/m³": a property of a material with its unit, as far as the document names one.
std::string propertyText(ExcMiscMaterial::EProperty which, const ExcMiscMaterialProperty& property);

/// Keeps what arrives, and shows it in the end.
class OrganisationTables {
public:
    void add(std::uint64_t blockId, const ExcMechanicalMiscDataPtr& data);

    /// A paragraph with all layers and one with all materials, or the first ones and the number of the others.
    /// @param structure the names of the blocks; may be null
    std::string text(const ExcProductStructure* structure, bool all) const;

private:
    struct Part {
        std::uint64_t blockId;
        ExcMechanicalMiscDataPtr data;
    };
    std::vector<Part> m_parts;
};

} // namespace zeq::host
