// Handles of drawing-database objects.
#pragma once

#include <cstdint>

/// Identifies an object within one drawing database.
using OdDbHandle = std::uint64_t;
