// Walks the usage occurrences level by level.
#include "step/products.h"

#include <algorithm>
#include <set>

namespace zeq::step {

std::uint64_t Products::blockId(std::uint64_t definition) const {
    const auto found = blockIds.find(definition);
    return found == blockIds.end() ? 0 : found->second;
}

Products readProducts(const StepFile& file) {
    Products products;
    std::map<std::uint64_t, std::vector<Instance>> uses;
    std::set<std::uint64_t> used;
    for (const Instance& usage : file.structure().all("NEXT_ASSEMBLY_USAGE_OCCURRENCE")) {
        const Instance user = file.at(attribute(usage, "PRODUCT_DEFINITION_RELATIONSHIP", 0, 3));
        const Instance part = file.at(attribute(usage, "PRODUCT_DEFINITION_RELATIONSHIP", 0, 4));
        if (!user || !part) continue;
        uses[user.number()].push_back(part);
        used.insert(part.number());
        products.usages.push_back({usage, user, part});
    }
    const auto add = [&](const Instance& definition, bool isRoot) {
        if (!products.blockIds.try_emplace(definition.number(), products.all.size() + 1).second) return;
        products.all.push_back({definition, uses.contains(definition.number()), isRoot});
    };
    const auto hasShape = [](const Instance& definition) {
        const std::vector<Instance> shapes = definition.users("PRODUCT_DEFINITION_SHAPE");
        return std::ranges::any_of(shapes, [](const Instance& shape) {
            return !shape.users("SHAPE_DEFINITION_REPRESENTATION").empty();
        });
    };
    for (const std::string_view type : {"PRODUCT_DEFINITION", "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS"})
        for (const Instance& definition : file.structure().all(type))
            if (!used.contains(definition.number()) &&
                (uses.contains(definition.number()) || hasShape(definition)))
                add(definition, true);
    for (std::size_t i = 0; i < products.all.size(); ++i) {
        const auto parts = uses.find(products.all[i].definition.number());
        if (parts == uses.end()) continue;
        for (const Instance& part : parts->second) add(part, false);
    }
    return products;
}

double commonLengthUnit(const part21::ExchangeStructure& structure) {
    const StepFile file(structure, 1);
    std::optional<double> common;
    for (const Instance& context : structure.all("GEOMETRIC_REPRESENTATION_CONTEXT")) {
        const std::optional<double> unit = file.lengthUnit(context);
        if (unit && common && *unit != *common) return 0;
        if (unit) common = unit;
    }
    return common.value_or(0);
}

} // namespace zeq::step
