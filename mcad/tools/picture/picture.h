// Draws pictures, without a display, a graphics processor or a graphics library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "picture/drawing.h"

namespace zeq::picture {

/// Rows from the top, four bytes a pixel: red, green, blue, alpha, not multiplied by it.
struct Image {
    int width = 0, height = 0;
    std::vector<std::uint8_t> pixels;
    std::size_t dropped = 0; ///< triangles and segments that could not be drawn, being no such thing
};

/// @throws std::invalid_argument for a size, a number of samples, a camera or a section plane that is none
Image render(const Drawing& drawing);

/// The camera that looks along the direction and has all in sight that the drawing's batches hold, with a small
/// margin. Of things that are not finite it takes no notice.
/// @throws std::invalid_argument for a direction without a length
Camera fittedCamera(const Drawing& drawing, Vector direction, Vector up, bool isPerspective = false);

/// Zooms out, by the factor three at most, until the batches that are on top fit with a small margin.
void includeWhatIsOnTop(Drawing& drawing);

/// The bytes of a PNG file, without alpha if all is opaque.
/// @throws std::runtime_error with libpng's words
std::string encodePng(const Image& image);

} // namespace zeq::picture
