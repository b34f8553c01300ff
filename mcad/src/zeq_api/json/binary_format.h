// The tags of the binary JSON form and the texts of its errors, shared by its writers and readers.
#pragma once

namespace zeq::json {

/// First byte of every encoded value.
enum class Tag : unsigned char {
    null,
    boolFalse,
    boolTrue,
    object,
    array,
    string,
    int32,
    uint32,
    int64,
    uint64,
    real,
};

inline constexpr unsigned char tagCount = 11;

namespace binary_error {
inline constexpr const char* noType = "JsonBinaryIO: Failed to parse all bytes of type";
inline constexpr const char* unknownType = "JsonBinaryIO: Unknown value type";
inline constexpr const char* shortNumber = "JsonBinaryIO: Failed to read all the number of bytes";
inline constexpr const char* shortString = "JsonBinaryIO: Failed to read all the bytes of string";
inline constexpr const char* nameNotString = "JsonBinaryIO: Object member name is not a string";
inline constexpr const char* unknownNumber = "JsonBinaryIO: Unknown number type";
} // namespace binary_error

} // namespace zeq::json
