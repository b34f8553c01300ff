// The node of the scene that shows an annotation.
#pragma once

#include "step/annotation_graphics.h"
#include "zeq_api/exchange_pmi/pmi_object.h"
#include "zeq_api/exchange_visualization/node.h"

namespace zeq::convexor {

/// The type of the node of an annotation: DIMENSION_RADIUS, GEOMTOL_POSITION ...
ExcVisuNode::EType nodeType(const ExcPMIAnnotation& annotation);
/// The type of the node that groups those: DIMENSIONS, GEOMTOLS ...
ExcVisuNode::EType groupType(const ExcPMIAnnotation& annotation);

/// A leaf that draws the annotation as the file does, with a child for what is filled.
ExcVisuNodePtr makeAnnotationNode(const ExcPMIAnnotation& annotation,
                                  const step::AnnotationGraphics& graphics);

} // namespace zeq::convexor
