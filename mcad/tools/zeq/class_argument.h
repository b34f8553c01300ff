// A class that the command line names.
#pragma once

#include <string>

#include "zeq_api/json/form_registry.h"

namespace zeq::host {

/// @throws Failure for a name of no class, with the nearest one and all that there are
const json::FormInfo& requireClass(const std::string& name);

} // namespace zeq::host
