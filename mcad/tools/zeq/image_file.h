// An image of geometry that lies in memory.
#pragma once

#include <string>
#include <vector>

#include "text/text.h"
#include "zeq_api/exchange_mechanical/shared_acis_buffer.h"

namespace zeq::host {

/// An image as the file that the kernel reads from, at its beginning.
class ImageFile : public ExcSharedAcisBuffer {
public:
    /// @param image not compressed
    explicit ImageFile(const std::vector<char>& image) : ExcSharedAcisBuffer({}, false) {
        write(image.data(), image.size(), 0);
        goto_mark(0);
    }
};

/// Why the kernel did not do something; empty if it did.
inline std::string reasonOf(const outcome& result) {
    return result.ok() ? "" : text::printable(result.get_error_info()->error_message());
}

} // namespace zeq::host
