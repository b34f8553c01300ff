// Reading of members that several classes share. Any thread may call these functions.
#pragma once

#include <string>
#include <vector>

#include "zeq_api/json/json_value.h"

namespace zeq {

/// Appends the strings among the elements of the array member `key` of `object`; without such a member, or
/// when `object` is no object, `out` stays as it is.
void readArrayAsVectorOfStr(const JsonValue& object, const wchar_t* key, std::vector<std::wstring>& out);

} // namespace zeq
