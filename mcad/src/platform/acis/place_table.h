// Where entities stand in a list, looked up by their addresses.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace acis_detail {
/// An integer for each address, 0 at first. Those of neighbouring addresses lie together: whoever goes through
/// entities in about the order in which they were made has the next ones in the processor's cache, which a
/// hash over single addresses would have spread. Addresses less than 32 bytes apart may share an integer; it
/// takes an eighth of the memory that the entities lie in.
class place_table {
public:
    int find(const void* address) const {
        const int* places = m_pages[slot_of(page_of(address))].places;
        return places ? places[place_of(address)] : 0;
    }
    /// To be set; a reference that stays good.
    int& at(const void* address) {
        std::uintptr_t number = page_of(address);
        int* places = m_pages[slot_of(number)].places;
        return (places ? places : make(number))[place_of(address)];
    }

private:
    static constexpr std::size_t page_bits = 12;
    static constexpr std::size_t place_bits = 5;
    static constexpr std::size_t page_places = std::size_t(1) << (page_bits - place_bits);

    struct page {
        std::uintptr_t number = 0;
        int* places = nullptr; ///< null: a free slot
    };

    static std::uintptr_t page_of(const void* address) {
        return reinterpret_cast<std::uintptr_t>(address) >> page_bits;
    }
    static std::size_t place_of(const void* address) {
        return reinterpret_cast<std::uintptr_t>(address) >> place_bits & (page_places - 1);
    }
    std::size_t slot_of(std::uintptr_t number) const {
        std::size_t mask = m_pages.size() - 1;
        std::size_t at = number * 0x9e3779b97f4a7c15u >> 32 & mask;
        while (m_pages[at].places && m_pages[at].number != number) at = (at + 1) & mask;
        return at;
    }
    int* make(std::uintptr_t number) {
        if (2 * (m_places.size() + 1) > m_pages.size()) {
            std::vector<page> old(2 * m_pages.size());
            old.swap(m_pages);
            for (const page& each : old)
                if (each.places) m_pages[slot_of(each.number)] = each;
        }
        int* places = m_places.emplace_back().data();
        m_pages[slot_of(number)] = {number, places};
        return places;
    }

    std::vector<page> m_pages{16}; ///< open addressing
    std::deque<std::array<int, page_places>> m_places;
};
} // namespace acis_detail
