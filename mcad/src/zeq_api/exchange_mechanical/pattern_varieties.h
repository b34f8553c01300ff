// The kinds of patterns, for whoever reads one. Internal.
#pragma once

#include "zeq_api/exchange_mechanical/mfg_pattern.h"
#include "zeq_api/json/special_rows.h"

namespace zeq::detail {

const json::Varieties<ExcMfgPattern>& patternVarieties();

} // namespace zeq::detail
