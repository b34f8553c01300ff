// Says of a document what its reader skips silently: what is unknown, of the wrong type, misspelt, out of
// range, or never read.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "zeq_api/json/form_registry.h"

namespace zeq::inspection {

enum class Severity {
    error,   ///< something is lost or read as something else
    warning, ///< something has no effect
    note     ///< something that the library writes itself and never reads
};

/// "error", "warning", "note".
const char* nameOf(Severity severity);

struct Finding {
    Severity severity;
    std::wstring buffer;              ///< the shared buffer in which it stands; empty for the document itself
    std::string pointer;              ///< JSON pointer (RFC 6901) in UTF-8
    std::string text;                 ///< one sentence, safe on a terminal
    std::string nearest;              ///< the known name that was perhaps meant; may be empty
    std::vector<std::string> allowed; ///< the names that are known in this place; may be empty
};

using Report = std::function<void(const Finding&)>;
/// Decodes the content of a shared buffer, without removing it; throws std::exception or mp::Exception.
using OpenBuffer = std::function<void(const std::wstring& name, JsonDocument& content)>;

/// The content of the buffer itself.
/// @throws std::runtime_error if there is none of that name, and whatever reading it throws
void openSharedBuffer(const std::wstring& name, JsonDocument& content);

/// Walks the document, and the shared buffer that it names, along the form of its class, and reports what is
/// found in the order of the document.
void lint(const JsonValue& document, const json::FormInfo& form, const Report& report,
          const OpenBuffer& openBuffer = openSharedBuffer);

/// The sentence with the nearest name and those allowed, as far as there are any.
std::string fullText(const Finding& finding);

} // namespace zeq::inspection
