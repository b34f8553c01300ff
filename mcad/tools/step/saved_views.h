// The views that a STEP file keeps: from where it is looked at, where it is cut, and what is shown.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "step/placement.h"
#include "zeq_api/exchange_visualization/camera.h"

namespace zeq::step {

struct SavedView {
    std::uint64_t number = 0; ///< of the camera
    std::uint64_t product =
        0; ///< the number of the PRODUCT_DEFINITION that is looked at; 0 if that is not said
    std::wstring name;
    ExcCamera camera; ///< its zoom factor is the height of the window in the unit that travels
    /// The part of the model that its normal (u x v) points to is cut away, and the coefficients give that plane
    /// with (a, b, c) as the normal.
    std::optional<ExcClippingPlane> clipping;
    std::vector<std::uint64_t>
        annotations;       ///< the numbers of the callouts that it shows, in the order of the file
    bool isActive = false; ///< whether it is the one to begin with
};

/// In the order of the file. Further clipping planes of a view are added to the losses.
std::vector<SavedView> readSavedViews(StepFile& file);

} // namespace zeq::step
