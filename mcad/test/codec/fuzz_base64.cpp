// Base64 of any text and of any bytes: the narrow and the wide decoder agree, and what was encoded comes
// back.
#include "zeq_api/codec/base64.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using zeq::Base64;
    const std::string narrow(reinterpret_cast<const char*>(data), size);
    const std::wstring wide(data, data + size);
    std::vector<char> fromNarrow(Base64::decodedSize(size) + 2);
    std::vector<char> fromWide(fromNarrow.size());
    if (Base64::decodeImpl(fromNarrow.data(), narrow.data(), size) !=
        Base64::decodeWide(fromWide.data(), wide.data(), size))
        std::abort();
    if (fromNarrow != fromWide) std::abort();

    const std::vector<std::uint8_t> bytes(data, data + size);
    std::wstring text;
    Base64::encode(bytes, text);
    std::vector<std::uint8_t> back;
    Base64::decode(text, back);
    if (back != bytes) std::abort();

    std::vector<int> numbers;
    Base64::decode(wide, numbers);
    return 0;
}
