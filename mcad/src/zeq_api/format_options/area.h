// The file that the trace lines of this folder name. Internal.
#pragma once

namespace zeq::area {
inline constexpr const char* formatOptions = "mcad/src/zeq_api/format_options";
} // namespace zeq::area
