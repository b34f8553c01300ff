// Reading of members that several classes share.
#include "zeq_api/json/read_helpers.h"

namespace zeq {

void readArrayAsVectorOfStr(const JsonValue& object, const wchar_t* key, std::vector<std::wstring>& out) {
    if (!object.IsObject()) return;
    const auto member = object.FindMember(key);
    if (member == object.MemberEnd() || !member->value.IsArray()) return;
    for (const JsonValue& element : member->value.GetArray())
        if (element.IsString()) out.emplace_back(element.GetString(), element.GetStringLength());
}

} // namespace zeq
