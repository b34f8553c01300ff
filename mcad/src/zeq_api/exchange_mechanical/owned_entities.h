// / @file / Entities of the modelling kernel that belong to a piece of code. Objects are used by one thread
// at a time.
#pragma once

#include "platform/acis/acis.h"

namespace zeq {

/// A list of entities that are deleted with it, together with everything that they lead to. What was restored
/// together may share geometry, and so belongs on one list.
struct OwnedEntities {
    OwnedEntities() = default;
    /// @param entity may be null, which adds nothing
    explicit OwnedEntities(ENTITY* entity) { list.add(entity); }
    OwnedEntities(const OwnedEntities&) = delete;
    OwnedEntities& operator=(const OwnedEntities&) = delete;
    ~OwnedEntities() { api_del_entity_list(list); }

    ENTITY_LIST list;
};

} // namespace zeq
