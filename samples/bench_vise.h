// The sample product: a bench vise with sub-assemblies up to four levels deep.
#pragma once

#include "model.h"

namespace samples {

/// The whole vise: repeated and turned instances, colours on parts and instances, a transparent and a hidden
/// instance, a layer, materials and validation properties.
Model makeBenchVise();
/// One plate of its jaws, a product that is a single part.
Model makeJawPlateAlone();
/// A grip for its handle, a part with free-form surfaces.
Model makeGripAlone();
/// Its bolt and its washer, a product of two parts without an assembly.
Model makeLooseFastener();

} // namespace samples
