// Tokens that the kernel keeps without understanding them, so that images of richer kernels pass through.
#pragma once

#include "platform/acis/record_stream.h"
#include <string>
#include <vector>

/// Kept tokens: as in the wide variant of the format, but with entity pointers in place of record indexes.
class unknown_tokens {
public:
    /// Of a whole record: the external names that are unknown, the most derived first, and the version of the
    /// image.
    std::vector<std::string> names;
    int version = 0;
    /// Whether the record's attribute pointer and number are among the tokens.
    bool whole = false;

    /// Takes the tokens up to one of the given kind that no opening token precedes, without it.
    void take(acis_detail::record_reader& reader, acis_detail::tag last);
    void write(acis_detail::token_writer& writer, ENTITY_LIST& list) const;
    /// Calls with each entity pointer, by reference.
    template <class Function>
    void each_pointer(Function&& function) {
        for (std::size_t offset : m_pointers) {
            std::uintptr_t slot;
            std::memcpy(&slot, m_bytes.data() + offset, sizeof(slot));
            auto* entity = std::bit_cast<ENTITY*>(slot);
            function(entity);
            slot = std::bit_cast<std::uintptr_t>(entity);
            std::memcpy(m_bytes.data() + offset, &slot, sizeof(slot));
        }
    }

private:
    std::vector<char> m_bytes;
    std::vector<std::size_t> m_pointers; ///< where in m_bytes
};
