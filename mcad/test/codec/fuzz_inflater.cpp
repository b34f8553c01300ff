// Decodes any bytes as blocks of gzip data, and as they are, and compares the outcome with zlib's.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "codec/inflater_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    zeq::test::Reading reading{zeq::detail::Inflater::inputSlack + 1};
    const std::size_t step = 1 + size * 7 % 1000;
    reading.size = [step] { return step; };
    reading.withVectors &= size % 3 != 0;
    if (!zeq::test::agreesWithZlib(zeq::test::gzipOf(bytes), reading)) std::abort();
    if (!zeq::test::agreesWithZlib(bytes, reading) && (size < 4 || bytes[0] != '\x1F' || bytes[3] == 0))
        std::abort();
    return 0;
}
