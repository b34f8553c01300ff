// How instances are placed and coloured, in words.
#pragma once

#include <string>

#include "zeq_api/exchange_common/color.h"
#include "zeq_api/exchange_common/geometry.h"

namespace zeq::host {

/// "at (0, 0, 25)  rotated 90° about (0, 0, 1)"; empty for the identity. What is no rotation is shown as a
/// matrix.
std::string describe(const ExcTransformation& placement);

/// How a colour is shown. Translators fill the 16 bits of a channel up to 255 or up to 65535; which of them
/// it is, the largest channel tells.
struct ShownColor {
    explicit ShownColor(const ExcColor& color);

    std::string name;     ///< "#cc3333"; empty without a colour
    std::string terminal; ///< the same for a terminal's escape sequence: ";204;51;51"
    std::string opacity;  ///< "opacity 40 %"; empty when it is full or not known
};

} // namespace zeq::host
