// Shapes are walked before draughting models, which refer to the items of shapes.
#include "step/owners.h"

#include <algorithm>

#include "step/products.h"

namespace zeq::step {

namespace {

/// A simple instance has its subtype's attributes behind those of a representation.
Value itemsOf(const Instance& representation) { return attribute(representation, "REPRESENTATION", 0, 1); }
Instance contextOf(const StepFile& file, const Instance& representation) {
    return file.at(attribute(representation, "REPRESENTATION", 0, 2));
}

bool isRepresentation(const Instance& instance) {
    const auto types = instance.types();
    return instance.is("DRAUGHTING_MODEL") || instance.is("REPRESENTATION") ||
           std::ranges::any_of(types,
                               [](std::string_view type) { return type.ends_with("SHAPE_REPRESENTATION"); });
}

/// Coordinates, the bulk of every file, are nothing that is asked for.
bool isPassedOver(const Instance& instance) {
    const std::string_view type = instance.type();
    return type == "CARTESIAN_POINT" || type == "DIRECTION" || type == "VECTOR";
}

} // namespace

Owners::Owners(const StepFile& file) : m_file(file) {
    for (const Products::Product& product : readProducts(file).all) m_products.push_back(product.definition);
    if (m_products.size() == 1) m_only = m_products.front();
    std::ranges::sort(m_products, {}, &Instance::number);
}

Owners::Owner Owners::ofItem(const Instance& item) {
    if (!m_isWalked) walkAll();
    const auto found = m_ownerOf.find(item.number());
    return found == m_ownerOf.end() ? Owner{m_only} : m_owners[found->second];
}

Instance Owners::ofSubject(const Instance& subject) {
    const auto [at, isNew] = m_ofSubject.try_emplace(subject.number());
    if (!isNew) return at->second;
    if (isRepresentation(subject)) return at->second = ofRepresentation(subject);
    // An item within a representation, as annotations and views are: the representation is its last attribute. From
    // there on everything would be reached.
    for (const std::string_view type : {"CHARACTERIZED_ITEM_WITHIN_REPRESENTATION", "MODEL_GEOMETRIC_VIEW"})
        if (subject.is(type)) {
            Instance within;
            for (const Instance& reference : subject.references())
                if (isRepresentation(reference)) within = reference;
            return at->second = within ? ofRepresentation(within) : m_only;
        }
    return at->second = checked(m_file.product(subject));
}

void Owners::walkAll() {
    m_isWalked = true;
    const auto& structure = m_file.structure();
    for (const std::string_view type : structure.types())
        if (type.ends_with("SHAPE_REPRESENTATION") || type == "CONSTRUCTIVE_GEOMETRY_REPRESENTATION")
            for (const Instance& representation : structure.all(type)) walk(representation);
    for (const Instance& model : structure.all("DRAUGHTING_MODEL")) walk(model);
}

void Owners::walk(const Instance& representation) {
    const Instance product = ofRepresentation(representation);
    if (!product) return;
    const Instance context = contextOf(m_file, representation);
    const auto owner = static_cast<std::uint32_t>(m_owners.size());
    m_owners.push_back({product, m_file.lengthUnit(context).value_or(0)});
    std::vector<Instance> pending;
    for (const Value& value : itemsOf(representation).items())
        if (const Instance item = m_file.at(value))
            if (m_ownerOf.try_emplace(item.number(), owner).second) pending.push_back(item);
    while (!pending.empty()) {
        const Instance item = pending.back();
        pending.pop_back();
        if (item.is("MAPPED_ITEM")) continue; // what is mapped has an owner of its own
        for (const Instance& next : item.references())
            if (!isPassedOver(next) && !m_ownerOf.contains(next.number()) && !isRepresentation(next)) {
                m_ownerOf.emplace(next.number(), owner);
                pending.push_back(next);
            }
    }
}

Instance Owners::ofRepresentation(const Instance& representation) {
    const auto [at, isNew] = m_ofRepresentation.try_emplace(representation.number());
    if (isNew) at->second = checked(m_file.productOfRepresentation(representation));
    return at->second;
}

Instance Owners::checked(const Instance& product) const {
    const bool isPart = std::ranges::binary_search(m_products, product.number(), {}, &Instance::number);
    return isPart ? product : m_only;
}

} // namespace zeq::step
