// The file that the trace lines of this folder name. Internal.
#pragma once

namespace zeq::area {
inline constexpr const char* exchangePmi = "mcad/src/zeq_api/zeq_api_exchange_mechanical";
} // namespace zeq::area
