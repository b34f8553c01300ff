// The PMI of a STEP file as it travels: for every product an annotation set, and its nodes, views and captures in the
// scene.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "step/annotation_graphics.h"
#include "step/saved_views.h"
#include "step/semantic_pmi.h"
#include "zeq_api/exchange_pmi/annotation_set.h"
#include "zeq_api/exchange_visualization/scene.h"

namespace zeq::convexor {

/// What is annotated on one product.
struct ProductAnnotations {
    ExcPMIAnnotationSetPtr set; ///< without its block
    ExcVisuNodePtr node;        ///< of the type PMI; null when nothing is drawn
    std::vector<ExcVisuViewPtr> views;
    std::vector<ExcVisuCapturePtr> captures;
    std::size_t onlyDrawn = 0; ///< notes that the file has in its drawing alone
};

/// Brings together what annotations say and how they are drawn.
///
/// An annotation that is drawn without anything that it presents becomes a note. Planes that coincide become one
/// annotation view; what has no plane goes into a view at the origin. The same annotation, view or capture has the
/// same id on both sides: the number of its instance.
/// @return by the number of the PRODUCT_DEFINITION, as the annotations have it
std::map<std::uint64_t, ProductAnnotations>
organizeAnnotations(const std::vector<step::SemanticAnnotation>& semantic,
                    const std::vector<step::AnnotationGraphics>& graphics,
                    const std::vector<step::SavedView>& views, const step::StepFile& file);

} // namespace zeq::convexor
