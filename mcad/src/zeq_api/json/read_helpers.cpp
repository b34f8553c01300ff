// Reading of members that several classes share.
#include "zeq_api/json/read_helpers.h"

#include "zeq_api/json/dom_model.h"

namespace zeq {

void readArrayAsVectorOfStr(const JsonValue& object, const wchar_t* key, std::vector<std::wstring>& out) {
    const JsonValue* array = json::findMember(object, key);
    if (!array || !array->IsArray()) return;
    for (const JsonValue& element : array->GetArray())
        if (element.IsString()) out.emplace_back(element.GetString(), element.GetStringLength());
}

} // namespace zeq
