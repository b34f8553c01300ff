// Nodes of the scenes that travel.
#pragma once

#include "convexor/appearance.h"
#include "zeq_api/exchange_visualization/node.h"

namespace zeq::convexor {

/// A node of that type; it has attributes only if the look says something. A colour is also given as a material,
/// whose transparency is what the colour lacks in opacity.
ExcVisuNodePtr makeNode(ExcVisuNode::EType type, const Look& look = {});

} // namespace zeq::convexor
