// The one walk over a value of the document model, on a stack of its own: nesting costs heap, never call
// stack.
#pragma once

#include <vector>

#include "zeq_api/json/json_value.h"

namespace zeq::json {

/// Visits `root` and everything in it in document order: `onValue(value)` for each value, before its content
/// if it is an object or an array; `onName(name)` before each member's value; `onEnd(value)` after the
/// content of an object or array.
template <class Visitor>
void walk(const JsonValue& root, Visitor& visitor) {
    struct Level {
        const JsonValue* container;
        rapidjson::SizeType next;
    };
    std::vector<Level> levels;
    const auto visit = [&](const JsonValue& value) {
        visitor.onValue(value);
        if (value.IsObject() || value.IsArray()) levels.push_back({&value, 0});
    };
    visit(root);
    while (!levels.empty()) {
        Level& level = levels.back();
        const JsonValue& container = *level.container;
        if (level.next == (container.IsArray() ? container.Size() : container.MemberCount())) {
            visitor.onEnd(container);
            levels.pop_back();
        } else if (container.IsArray()) {
            visit(container[level.next++]);
        } else {
            const auto& member = container.MemberBegin()[level.next++];
            visitor.onName(member.name);
            visit(member.value);
        }
    }
}

} // namespace zeq::json
