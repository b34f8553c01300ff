// Which product the items and the aspects of a STEP file belong to.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "step/step_file.h"

namespace zeq::step {

/// Walks all shapes once, when the first item is asked for, from their representations down, and remembers the owner of
/// whatever it comes by.
class Owners {
public:
    struct Owner {
        Instance product;       ///< a PRODUCT_DEFINITION; none if it belongs to none that is a part
        double millimeters = 0; ///< of the unit of length that its coordinates are in; 0 if that is not known
    };

    explicit Owners(const StepFile& file);

    /// The parts and assemblies of the file.
    const std::vector<Instance>& products() const { return m_products; }
    /// Of a face, an edge, a body, a curve, a placement, an annotation.
    Owner ofItem(const Instance& item);
    /// The product that a property is about: a product itself, its shape, an aspect of it, an annotation, a view.
    Instance ofSubject(const Instance& subject);

private:
    void walkAll();
    void walk(const Instance& representation);
    Instance ofRepresentation(const Instance& representation);
    Instance checked(const Instance& product) const;

    const StepFile& m_file;
    std::vector<Instance> m_products;
    Instance m_only; ///< the product of a file with just one
    bool m_isWalked = false;
    std::vector<Owner> m_owners;
    std::unordered_map<std::uint64_t, std::uint32_t> m_ownerOf; ///< indexes by numbers of items
    std::unordered_map<std::uint64_t, Instance> m_ofRepresentation;
    std::unordered_map<std::uint64_t, Instance> m_ofSubject;
};

} // namespace zeq::step
