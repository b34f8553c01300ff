// Finds the class of a document, by its name or by what stands in it.
#pragma once

#include <string>
#include <vector>

#include "zeq_api/json/form_registry.h"

namespace zeq::inspection {

/// The class of that name, in full or, where that is one class only, without its namespace; null when there
/// is none.
const json::FormInfo* findClass(const std::string& name);

/// The names of all classes, in ascending order.
std::vector<std::string> classNames();

/// The class of a document that crosses a stream on its own, by its members, of which at least half must be
/// known. Null when there is no such class or no telling.
const json::FormInfo* recognise(const JsonValue& document);

/// The class, of all there are, whose members fit the document best; null when none fits or several do.
const json::FormInfo* closestClass(const JsonValue& document);

} // namespace zeq::inspection
