// What the shared buffers of binary objects hold. Internal.
#pragma once

#include <string>
#include <vector>

#include "zeq_api/codec/binary_json.h"
#include "zeq_api/json/byte_model.h"
#include "zeq_api/json/dom_model.h"

namespace zeq::detail {

/// The content of a shared buffer, not compressed any more. Whatever happens, the buffer is removed.
/// @throws mp::SharedMemoryException, std::runtime_error or std::length_error if it cannot be read or is damaged
std::vector<char> takeBuffer(const std::wstring& name);

/// Calls `read(view)` with the content of a shared buffer, which is removed, whatever happens.
/// @throws as takeBuffer(), or std::invalid_argument if the content is not the binary form
template <class Read>
void takeContent(const std::wstring& bufferName, Read&& read) {
    const std::vector<char> bytes = takeBuffer(bufferName);
    if (json::ByteView::isExact(bytes.data(), bytes.size())) {
        read(json::ByteView(bytes.data()));
    } else {
        JsonDocument document;
        JsonBinaryIO::decode(bytes.data(), bytes.size(), document, document.GetAllocator());
        read(json::DomView(document));
    }
}

} // namespace zeq::detail
