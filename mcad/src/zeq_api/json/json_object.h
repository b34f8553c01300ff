// The interface of everything that reads and writes itself as a JSON value. Objects are used by one thread at
// a time.
#pragma once

#include "zeq_api/json/json_value.h"

namespace zeq {

/// A document object. Reading never throws for a malformed member: it keeps its value and may be logged.
class IJsonObject {
public:
    virtual ~IJsonObject() = default;
    /// Takes from `object` every member that is present and of the expected type.
    virtual void readObject(const JsonValue& object) = 0;
    /// Makes `out` the JSON form of this object; strings are copied into `alloc`.
    virtual void writeObject(JsonValue& out, JsonAllocator& alloc) const = 0;
};

} // namespace zeq
