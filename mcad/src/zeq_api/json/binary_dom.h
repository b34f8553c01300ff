// The binary form of values of the document model: the work behind JsonBinaryIO.
#pragma once

#include <cstddef>
#include <string>

#include "zeq_api/json/json_value.h"

namespace zeq {

namespace json {
class ByteSink;
}

/// Nesting costs heap, never call stack; lengths are compared with the bytes that are left before they are
/// believed.
class JsonBinaryIOImpl {
public:
    /// Appends the encoding of `value` to `out`.
    static void encode(const JsonValue& value, std::string& out);
    static void write(const JsonValue& value, json::ByteSink& sink);

    /// Makes `value` what the first bytes encode and returns their number; on an error `value` stays as it
    /// is.
    static std::size_t decode(const char* data, std::size_t size, JsonValue& value, JsonAllocator& alloc);

private:
    class Writer;
    class Reader;
};

} // namespace zeq
