// The colours that a scene shows.
#pragma once

#include <cstdint>
#include <set>
#include <unordered_map>

#include "zeq_api/exchange_visualization/scene.h"

namespace zeq::convexor {

/// Adds the different colours of nodes, faces and edges, packed as red, green, blue and opacity.
void addColors(const ExcVisualizationData& scene, std::set<std::uint32_t>& colors);

/// Gives edges, and faces that have no colour, the one that the file has for their numbers, if any.
void paint(const ExcVisualizationData& scene, const std::unordered_map<std::uint64_t, ExcColor>& colors);

} // namespace zeq::convexor
