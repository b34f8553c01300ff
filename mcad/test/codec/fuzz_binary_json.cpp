// Decodes any bytes as binary JSON. What decodes at all keeps its bytes from its first encoding on.
#include "zeq_api/codec/binary_json.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using zeq::JsonBinaryIO;
    zeq::JsonDocument document;
    try {
        JsonBinaryIO::decode(reinterpret_cast<const char*>(data), size, document, document.GetAllocator());
    } catch (const std::length_error&) {
        return 0;
    } catch (const std::invalid_argument&) {
        return 0;
    }
    std::string once, twice;
    JsonBinaryIO::encode(document, once);
    zeq::JsonDocument again;
    if (JsonBinaryIO::decode(once.data(), once.size(), again, again.GetAllocator()) != once.size())
        std::abort();
    JsonBinaryIO::encode(again, twice);
    if (once != twice) std::abort();
    return 0;
}
