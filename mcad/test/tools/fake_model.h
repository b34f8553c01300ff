// What a STEP file with annotations, layers and a material would give, for the block 4 of the fake translator's cart.
#pragma once

#include <memory>
#include <vector>

#include "zeq_api/exchange_object/exchange_object.h"

namespace zeq::test {

using Documents = std::vector<std::shared_ptr<IExchangeObject>>;

/// Annotations, a saved view, layers, a material, properties and entity data.
Documents mechanicalDocuments();
/// A mesh of two triangles in two colours, and an annotation that is drawn.
Documents displayDocuments();
/// What the file holds: one annotation more than is sent, one that is sent and does not arrive, and display data that
/// are switched off.
std::shared_ptr<IExchangeObject> contentsReport();

} // namespace zeq::test
