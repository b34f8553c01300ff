// The JSON Schema (draft 2020-12) of the documents, made from the forms that read and write them.
#pragma once

#include "zeq_api/json/form_registry.h"

namespace zeq::inspection {

/// The schema of a class, with the definitions that it leads to. Without a class, that of all documents that
/// cross a stream on their own, with the definition of every class and every enumeration.
JsonDocument makeSchema(const json::FormInfo* form = nullptr);

} // namespace zeq::inspection
