// Looks for long texts.
#include "step/spared_graphics.h"

namespace zeq::step {

std::vector<Instance> findSparedGraphics(const StepFile& file) {
    constexpr std::size_t longText = 2000;
    std::vector<Instance> result;
    if (!file.structure().problems().empty()) return result;
    for (const std::string_view type :
         {"COORDINATES_LIST", "TESSELLATED_CURVE_SET", "TESSELLATED_POINT_SET", "TRIANGULATED_FACE",
          "COMPLEX_TRIANGULATED_FACE", "TRIANGULATED_SURFACE_SET", "COMPLEX_TRIANGULATED_SURFACE_SET"})
        for (const Instance& instance : file.structure().all(type))
            if (!instance.isComplex() && instance.raw().size() > longText) result.push_back(instance);
    return result;
}

} // namespace zeq::step
