// What bodies consist of.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/acis/acis.h"

namespace zeq::brep {

/// Counts bodies, faces by the kind of their surface, edges by the kind of their curve, and vertices.
class Count {
public:
    void add(const ENTITY_LIST& entities);
    void add(const Count& other);

    std::uint64_t bodies() const { return m_bodies; }
    /// "1 body, 6 faces (6 planes), 12 edges (12 lines), 8 vertices".
    std::string text() const;
    /// A JSON object with a member for each count.
    std::string json() const;

private:
    struct Kind {
        const char* key;
        const char* singular;
        const char* plural;
        logical (*isKind)(const ENTITY*);
    };
    static const std::array<Kind, 6> surfaceKinds;
    static const std::array<Kind, 5> curveKinds;

    std::uint64_t m_bodies = 0;
    std::array<std::uint64_t, 6> m_faces{};
    std::array<std::uint64_t, 5> m_edges{};
    std::uint64_t m_vertices = 0;
};

} // namespace zeq::brep
