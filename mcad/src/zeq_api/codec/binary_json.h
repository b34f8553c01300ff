// The compact binary form of JSON values: tagged, in native byte order, without text conversion or escaping.
// Any thread may call these functions.
#pragma once

#include <cstddef>
#include <istream>
#include <ostream>
#include <string>

#include "zeq_api/json/json_value.h"

namespace zeq {

/// The encoding has no header: the bytes are exactly those of one value. Depth is limited by memory only.
///
/// Reading throws std::length_error for input that ends too early and std::invalid_argument for an unknown
/// type or a member name that is not a string; the value then stays as it is. Members, elements and strings
/// are allocated in `alloc`.
class JsonBinaryIO {
public:
    /// Appends the encoding of `value` to `out`.
    static void encode(const JsonValue& value, std::string& out);
    /// Makes `value` what the first of `size` bytes encode and returns how many they are.
    static std::size_t decode(const char* data, std::size_t size, JsonValue& value, JsonAllocator& alloc);

    /// Writes the encoding of `value`.
    static void write(std::ostream& out, const JsonValue& value);
    /// Reads one value from what `in` has buffered and leaves a seekable stream positioned after it.
    static void read(std::istream& in, JsonValue& value, JsonAllocator& alloc);
};

} // namespace zeq
