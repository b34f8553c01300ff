// Looks at each usage with all that refers to it, and at nothing that all usages have in common more than once.
#include "step/spared_usages.h"

#include <algorithm>
#include <initializer_list>
#include <unordered_set>

namespace zeq::step {

namespace {

constexpr std::string_view usageType = "NEXT_ASSEMBLY_USAGE_OCCURRENCE";

bool isSimple(const Instance& instance, std::string_view type) {
    return !instance.isComplex() && instance.type() == type;
}

/// The one instance that refers to this one, if there is no other.
Instance onlyUser(const Instance& instance) {
    const std::vector<Instance> users = instance.users();
    return users.size() == 1 ? users.front() : Instance();
}

class Finder {
public:
    Finder(const StepFile& file, const Products& products) : m_file(file) {
        for (const Products::Usage& usage : products.usages) add(usage);
        std::erase_if(m_result.byUser,
                      [](const auto& entry) { return std::ranges::none_of(entry.second, &Usage::isSpared); });
    }

    SparedUsages take() { return std::move(m_result); }

private:
    /// The instances that say how a product is placed, from its usage to the two coordinate systems.
    struct Chain {
        Instance usage, shape, link, relation, transformation;
        Instance fromShape, toShape; ///< representations
        Instance from, to;           ///< their coordinate systems
    };

    void add(const Products::Usage& usage) {
        std::vector<Usage>& all = m_result.byUser[usage.user.number()];
        const bool isFirst = all.empty();
        Usage& made = all.emplace_back();
        made.part = usage.part.number();
        const std::optional<Chain> chain = chainOf(usage);
        if (!chain) return;
        const auto from = axes(chain->from, chain->fromShape);
        const auto to = axes(chain->to, chain->toShape);
        if (!from || !to) return;
        made.name = nameOf(usage.occurrence);
        made.isPlain = true;
        made.from = *from;
        made.to = *to;
        const bool isFirstOfPart = m_parts.insert(made.part).second;
        made.isSpared = !isFirst && !isFirstOfPart;
        if (made.isSpared) leaveOut(*chain);
    }

    /// Its name, or else what describes or identifies it; blanks are none.
    static std::wstring nameOf(const Instance& usage) {
        const auto isVisible = [](wchar_t c) { return c > L' '; };
        for (const std::size_t index : {std::size_t{1}, std::size_t{2}, std::size_t{0}})
            if (std::wstring text = usage.parameters()[index].text(); std::ranges::any_of(text, isVisible))
                return text;
        return {};
    }

    /// Nothing if anything is unusual, or said of the usage beside.
    std::optional<Chain> chainOf(const Products::Usage& usage) {
        Chain chain;
        chain.usage = usage.occurrence;
        if (!isSimple(chain.usage, usageType) || chain.usage.references().size() != 2) return std::nullopt;
        // What a byte beyond ASCII stands for is the kernel's to tell.
        const auto isPlain = [](char c) { return static_cast<unsigned char>(c) < 0x7F; };
        if (!std::ranges::all_of(chain.usage.raw(), isPlain)) return std::nullopt;
        chain.shape = onlyUser(chain.usage);
        chain.link = onlyUser(chain.shape);
        if (!isSimple(chain.shape, "PRODUCT_DEFINITION_SHAPE") ||
            !isSimple(chain.link, "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION") || !chain.link.users().empty())
            return std::nullopt;
        const part21::List link = chain.link.parameters();
        chain.relation = m_file.at(link[0]);
        if (!(m_file.at(link[1]) == chain.shape) || !(onlyUser(chain.relation) == chain.link) ||
            chain.relation.types().size() != 3 || !chain.relation.is("SHAPE_REPRESENTATION_RELATIONSHIP"))
            return std::nullopt;
        const part21::List related = chain.relation.parameters("REPRESENTATION_RELATIONSHIP");
        chain.fromShape = m_file.at(related[2]);
        chain.toShape = m_file.at(related[3]);
        chain.transformation =
            m_file.at(chain.relation.parameters("REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION")[0]);
        if (!isSimple(chain.transformation, "ITEM_DEFINED_TRANSFORMATION") ||
            !(onlyUser(chain.transformation) == chain.relation))
            return std::nullopt;
        const part21::List items = chain.transformation.parameters();
        chain.from = m_file.at(items[2]);
        chain.to = m_file.at(items[3]);
        const bool isAsUsual = isShape(chain.fromShape, usage.part) && isShape(chain.toShape, usage.user) &&
                               holds(chain.fromShape, chain.from) && holds(chain.toShape, chain.to) &&
                               !(chain.from == chain.to);
        return isAsUsual ? std::optional(chain) : std::nullopt;
    }

    /// Whether it is the one representation of a product's shape.
    bool isShape(const Instance& representation, const Instance& product) {
        const auto [at, isNew] = m_shapes.try_emplace(product.number());
        if (isNew)
            for (const Instance& shape : product.users("PRODUCT_DEFINITION_SHAPE"))
                for (const Instance& link : shape.users("SHAPE_DEFINITION_REPRESENTATION"))
                    at->second.push_back(m_file.at(link.parameters()[1]));
        return representation && at->second.size() == 1 && at->second.front() == representation;
    }

    /// Whether the item is one of the representation itself.
    bool holds(const Instance& representation, const Instance& item) {
        const auto [at, isNew] = m_items.try_emplace(representation.number());
        if (isNew && !representation.isComplex())
            for (const Value& value : representation.parameters()[1].items())
                at->second.insert(value.reference());
        return at->second.contains(item.number());
    }

    std::optional<Axes> axes(const Instance& placement, const Instance& representation) const {
        if (!isSimple(placement, "AXIS2_PLACEMENT_3D")) return std::nullopt;
        Axes axes;
        axes.representation = representation.number();
        const part21::List parameters = placement.parameters();
        const auto read = [&](std::size_t index, std::string_view type) -> std::optional<Vec> {
            const Instance vector = m_file.at(parameters[index]);
            const bool isWhole = isSimple(vector, type) && vector.parameters()[1].items().size() == 3;
            return isWhole ? readVector(vector) : std::nullopt;
        };
        const auto origin = read(1, "CARTESIAN_POINT");
        axes.axis = read(2, "DIRECTION");
        axes.reference = read(3, "DIRECTION");
        const bool isWhole = origin && parameters[2].isSet() == axes.axis.has_value() &&
                             parameters[3].isSet() == axes.reference.has_value();
        if (!isWhole) return std::nullopt;
        axes.origin = *origin;
        return axes;
    }

    void leaveOut(const Chain& chain) {
        ++m_result.count;
        std::vector<Instance>& all = m_result.leftOut;
        all.insert(all.end(), {chain.usage, chain.shape, chain.link, chain.relation, chain.transformation});
        leaveOutPlacement(chain.from, chain.fromShape, chain.transformation);
        leaveOutPlacement(chain.to, chain.toShape, chain.transformation);
    }

    /// Unless something else refers to it, or its representation would be empty.
    void leaveOutPlacement(const Instance& placement, const Instance& representation,
                           const Instance& transformation) {
        std::unordered_set<std::uint64_t>& items = m_items[representation.number()];
        if (placement.userCount() != 2 || items.size() < 2) return;
        for (const Instance& user : placement.users())
            if (!(user == representation) && !(user == transformation)) return;
        items.erase(placement.number());
        m_result.leftOut.push_back(placement);
        for (const Instance& vector : placement.references())
            if (vector.userCount() == 1) m_result.leftOut.push_back(vector);
    }

    const StepFile& m_file;
    SparedUsages m_result;
    std::unordered_set<std::uint64_t> m_parts; ///< of which there is a plain usage
    std::unordered_map<std::uint64_t, std::vector<Instance>> m_shapes;
    std::unordered_map<std::uint64_t, std::unordered_set<std::uint64_t>> m_items;
};

} // namespace

SparedUsages findSparedUsages(const StepFile& file, const Products& products, std::size_t least) {
    if (!file.structure().problems().empty()) return {};
    // The products of other files are put in by the kernel.
    for (const std::string_view type : {"DOCUMENT_FILE", "APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT"})
        if (file.structure().count(type) > 0) return {};
    SparedUsages spared = Finder(file, products).take();
    return spared.count >= least ? std::move(spared) : SparedUsages();
}

} // namespace zeq::step
