// How a STEP file draws its annotations.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "step/drawing.h"
#include "step/styles.h"

namespace zeq::step {

/// A callout, or an annotation that is drawn without one. Coordinates are in the unit that travels.
struct AnnotationGraphics {
    std::uint64_t number = 0; ///< of the callout
    std::uint64_t product =
        0; ///< the number of the PRODUCT_DEFINITION that it is drawn on; 0 if that is not said
    std::wstring name;
    /// What it presents, such as a dimension, a tolerance or a datum feature; what the file links as presentation of
    /// a representation comes first.
    std::vector<Instance> definitions;
    std::vector<ExcVisuEdgePtr> edges;
    ExcVisuFacePtr fill; ///< triangles of filled areas and texts; may be null
    Style style;
    bool isHidden = false;
    std::optional<Placement> plane; ///< that it is laid out in
    std::optional<Vec> anchor;      ///< where it stands
    std::vector<std::vector<Vec>> leaders;
    std::wstring text; ///< what it says, where the file says it in characters
    double height = 0; ///< of a placeholder's text; 0 if that is not said

    /// Whether there is anything to show.
    bool isDrawn() const { return !edges.empty() || fill || (!text.empty() && anchor); }
};

/// In the order of the file. What cannot be drawn is added to the losses.
std::vector<AnnotationGraphics> readAnnotationGraphics(StepFile& file);

} // namespace zeq::step
