// The JSON document model of the library: rapidjson's DOM over 32-bit wide strings, held unit for unit.
// Objects are used by one thread at a time.
#pragma once

#include <cstddef>
#include <new>

#include <rapidjson/document.h>

// rapidjson hands out null when memory runs out and then writes through it. These two members are the only
// places where its pool and its stacks grow, so the library's instantiations of them throw instead.
/// @cond
namespace rapidjson {

template <>
inline bool MemoryPoolAllocator<CrtAllocator>::AddChunk(std::size_t capacity) {
    if (!baseAllocator_) ownBaseAllocator_ = baseAllocator_ = RAPIDJSON_NEW(CrtAllocator());
    auto* chunk =
        static_cast<ChunkHeader*>(baseAllocator_->Malloc(RAPIDJSON_ALIGN(sizeof(ChunkHeader)) + capacity));
    if (!chunk) throw std::bad_alloc();
    *chunk = {capacity, 0, chunkHead_};
    chunkHead_ = chunk;
    return true;
}

template <>
inline void internal::Stack<CrtAllocator>::Resize(std::size_t newCapacity) {
    const std::size_t size = GetSize();
    auto* grown = static_cast<char*>(allocator_->Realloc(stack_, GetCapacity(), newCapacity));
    if (!grown && newCapacity != 0) throw std::bad_alloc();
    stack_ = grown;
    stackTop_ = grown + size;
    stackEnd_ = grown + newCapacity;
}

// An empty stack is a null pointer, and to that rapidjson adds.
template <>
template <typename T>
inline void internal::Stack<CrtAllocator>::Reserve(std::size_t count) {
    if (static_cast<std::size_t>(stackEnd_ - stackTop_) < sizeof(T) * count) Expand<T>(count);
}

} // namespace rapidjson
/// @endcond

namespace zeq {

/// Encoding of every key and string: one `wchar_t` (32 bits) a code unit.
using JsonEncoding = rapidjson::UTF16<wchar_t>;
/// The pool that owns the strings, members and elements of a document.
using JsonAllocator = rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>;
/// A value of the document model.
using JsonValue = rapidjson::GenericValue<JsonEncoding, JsonAllocator>;
/// A value together with the pool that holds it.
using JsonDocument = rapidjson::GenericDocument<JsonEncoding, JsonAllocator>;

} // namespace zeq
