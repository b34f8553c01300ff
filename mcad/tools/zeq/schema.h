// The description of documents for other tools.
#pragma once

#include <string>

namespace zeq::host {

/// The JSON Schema of a class, or of all documents when the name is empty.
/// @throws Failure if the class is unknown
std::wstring schemaText(const std::string& className);

} // namespace zeq::host
