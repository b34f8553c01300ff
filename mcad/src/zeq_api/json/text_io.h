// The one writer and the one reader of JSON text. Any thread may call these functions.
#pragma once

#include <istream>
#include <ostream>
#include <string>

#include "zeq_api/json/json_value.h"

namespace zeq {

/// Whole documents on wide streams. Number kinds, member order and every code unit are kept; doubles come
/// back bit by bit; the depth of nesting is limited by memory only.
class JsonTextIO {
public:
    /// Writes `document` in one block, indented if `pretty` is not 0, and flushes.
    /// @throws std::runtime_error if a number is not finite, and then nothing has been written, or if the
    /// stream fails
    static void write(std::wostream& stream, const JsonDocument& document, int pretty);

    /// Reads the stream to its end into `document`.
    /// @return false, leaving the value of `document` alone, if the text is not exactly one JSON document
    /// with nothing but blank around it; `problem` then says why and where
    static bool read(std::wistream& stream, JsonDocument& document, std::string* problem = nullptr);
};

} // namespace zeq
