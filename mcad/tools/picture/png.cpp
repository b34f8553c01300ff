// PNG by the simple interface of libpng, which reports errors without jumps.
#include <png.h>

#include <algorithm>
#include <stdexcept>

#include "picture/picture.h"

namespace zeq::picture {

std::string encodePng(const Image& image) {
    const std::size_t count = image.pixels.size() / 4;
    bool isOpaque = true;
    for (std::size_t i = 0; i < count; ++i) isOpaque &= image.pixels[4 * i + 3] == 255;
    std::vector<std::uint8_t> opaque;
    if (isOpaque) {
        opaque.resize(3 * count);
        for (std::size_t i = 0; i < count; ++i) std::copy_n(&image.pixels[4 * i], 3, &opaque[3 * i]);
    }
    png_image description{};
    description.version = PNG_IMAGE_VERSION;
    description.width = static_cast<png_uint_32>(image.width);
    description.height = static_cast<png_uint_32>(image.height);
    description.format = isOpaque ? PNG_FORMAT_RGB : PNG_FORMAT_RGBA;
    description.flags = PNG_IMAGE_FLAG_FAST;
    std::string bytes(PNG_IMAGE_PNG_SIZE_MAX(description), '\0');
    png_alloc_size_t size = bytes.size();
    const void* const pixels = isOpaque ? opaque.data() : image.pixels.data();
    if (!png_image_write_to_memory(&description, bytes.data(), &size, 0, pixels, 0, nullptr))
        throw std::runtime_error(std::string("PNG: ") + description.message);
    bytes.resize(size);
    return bytes;
}

} // namespace zeq::picture
