// Documents of the same types as the library's, but their values have another layout and their pools grow in
// another way: functions of the one kind cannot serve the other.
#define RAPIDJSON_48BITPOINTER_OPTIMIZATION 0
#include "own_json.h"

#include <string>

#include <rapidjson/document.h>

namespace {
int poolGrowths = 0;
}

template <>
inline bool rapidjson::MemoryPoolAllocator<>::AddChunk(std::size_t capacity) {
    ++poolGrowths;
    if (!baseAllocator_) ownBaseAllocator_ = baseAllocator_ = RAPIDJSON_NEW(CrtAllocator());
    auto* const chunk = static_cast<ChunkHeader*>(baseAllocator_->Malloc(sizeof(ChunkHeader) + 2 * capacity));
    *chunk = {2 * capacity, 0, chunkHead_};
    chunkHead_ = chunk;
    return true;
}

bool ownDocumentWorks() {
    constexpr unsigned count = 10000;
    std::wstring text = L"[0";
    for (unsigned i = 1; i < count; ++i)
        text +=
            L",{\"name\":\"a text too long to lie in the value itself, number " + std::to_wstring(i) + L"\"}";
    rapidjson::GenericDocument<rapidjson::UTF16<wchar_t>> document;
    document.Parse((text + L"]").c_str());
    return document.Size() == count &&
           std::wstring(document[count - 1][L"name"].GetString()).ends_with(L" 9999");
}

int ownPoolGrowths() { return poolGrowths; }
