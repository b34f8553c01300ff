// The binary form on byte buffers, and on streams by way of them.
#include "zeq_api/codec/binary_json.h"

#include <algorithm>

#include "zeq_api/json/binary_dom.h"

namespace zeq {

void JsonBinaryIO::encode(const JsonValue& value, std::string& out) { JsonBinaryIOImpl::encode(value, out); }

std::size_t JsonBinaryIO::decode(const char* data, std::size_t size, JsonValue& value, JsonAllocator& alloc) {
    return JsonBinaryIOImpl::decode(data, size, value, alloc);
}

void JsonBinaryIO::write(std::ostream& out, const JsonValue& value) {
    std::string bytes;
    encode(value, bytes);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void JsonBinaryIO::read(std::istream& in, JsonValue& value, JsonAllocator& alloc) {
    const std::istream::pos_type start = in.tellg();
    const std::streamsize buffered = in ? std::max<std::streamsize>(in.rdbuf()->in_avail(), 0) : 0;
    std::string bytes(static_cast<std::size_t>(buffered), '\0');
    bytes.resize(static_cast<std::size_t>(in.readsome(bytes.data(), buffered)));

    const std::size_t used = decode(bytes.data(), bytes.size(), value, alloc);
    if (start != std::istream::pos_type(-1)) in.seekg(start + static_cast<std::streamoff>(used));
}

} // namespace zeq
