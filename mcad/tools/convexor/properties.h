// Makes properties, in the words that travel.
#pragma once

#include <cstdint>
#include <string>

#include "zeq_api/exchange_common/misc_data.h"

namespace zeq::convexor {

ExcMiscProperty textProperty(const wchar_t* name, const std::wstring& value);
ExcMiscProperty countProperty(const wchar_t* name, std::int64_t value);
ExcMiscProperty quantity(const wchar_t* name, double value, ExcMiscProperty::EValueType type,
                         const std::wstring& unit);

} // namespace zeq::convexor
