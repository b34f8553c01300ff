// Saving and restoring whole images: header, records, and what holds between records.
#pragma once

#include "platform/acis/attrib.h"
#include "platform/acis/geometry.h"
#include "platform/acis/record_stream.h"
#include <array>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// What the kernel's own functions need of the inside of entities.
struct entity_access {
    static std::unique_ptr<unknown_tokens>& unknown(ENTITY& entity) { return entity.m_unknown; }
    static const std::unique_ptr<unknown_tokens>& unknown(const ENTITY& entity) { return entity.m_unknown; }
    static std::unique_ptr<unknown_tokens>& tokens(kept_tokens& rest) { return rest.m_tokens; }
    static const std::unique_ptr<unknown_tokens>& tokens(const kept_tokens& rest) { return rest.m_tokens; }
    static void destroy(ENTITY* entity) { delete entity; }
};

namespace acis_detail {
/// The most derived name of a record of unknown class, or null.
const char* unknown_name(const ENTITY& entity);

/// Who walks a list of entities fetches those so many places behind into the processor's cache: they lie about
/// in memory, and waiting for them one by one would take longer than what is done with them.
inline constexpr int prefetch_distance = 8;
inline void prefetch(const ENTITY* entity) {
    if (!entity) return;
    const auto* at = reinterpret_cast<const char*>(entity);
    __builtin_prefetch(at);
    __builtin_prefetch(at + 64);
}

/// The version of the format that is written.
inline constexpr int format_version = 700;

/// The image that this thread saves.
class image_writer {
public:
    image_writer(const FileInfo& info, width integers);
    image_writer(const image_writer&) = delete;
    ~image_writer();

    void save(const ENTITY_LIST& entities);
    record_writer& records() { return m_records; }
    static image_writer& current();

private:
    void header(const FileInfo& info);

    record_writer m_records;
    std::size_t m_countsAt = 0;
    image_writer* m_outer;
};

/// Takes the whole rest of a file and says how long it is.
std::size_t read_all(BinaryFile& file, byte_block& bytes);

/// What an image begins with.
struct image_header {
    FileInfo info;
    long records = 0;  ///< 0: not told
    long entities = 0; ///< those at the top, which come first; 0: not told
};
/// Reads it, and tells the reader how wide integers are.
image_header read_header(record_reader& reader);
/// Whether a record of such a name, its parts joined by "-", ends the image.
bool ends_image(std::string_view name);

/// How much of an image to understand. Images of other versions than ours may give their records other
/// layouts.
enum class restore_level {
    everything,
    attributes, ///< all other records become unknown ones
    nothing
};

/// The image that this thread restores.
class image_reader {
public:
    image_reader(const char* data, std::size_t length, restore_level level);
    image_reader(const image_reader&) = delete;
    /// Deletes the entities, unless release() was called.
    ~image_reader();

    /// The version in the header, as soon as that has been read.
    int version() const { return m_header.info.file_version(); }
    const FileInfo& info() const { return m_header.info; }
    void restore();
    ENTITY_LIST top() const;
    /// The caller owns everything from now on.
    void release() { m_entities.clear(); }
    /// Number of bytes that the image takes.
    std::size_t length() const { return m_length; }

    /// Null while this thread restores nothing.
    static image_reader* current();
    static record_reader& current_records();
    static restore_level current_level() { return current()->m_level; }

    /// Entities are noted while they are made, because a restore function that fails does not give its own
    /// back.
    void constructed(ENTITY* entity) { m_pending.push_back(entity); }
    void destroyed(ENTITY* entity);
    /// Whether the record of an entity is at hand: what are to be its pointers are indexes yet.
    static bool is_reading(const ENTITY* entity);

    /// @name While indexes are made pointers
    /// @{
    enum use : unsigned char {
        in_list = 1,
        in_ring = 2
    };
    void check_index(long index);
    bool is_a(long index, const restore_def& kind) const {
        const restore_def* own = m_kinds[std::size_t(index)];
        while (own->level() > kind.level()) own = own->parent();
        return own == &kind;
    }
    /// A record may be used once in each of these ways, so lists end and rings close.
    void take(long index, use how);
    [[noreturn]] static void fail_wrong_class(long index, const char* expected);
    /// @}

private:
    /// How records with one chain of external names are restored.
    struct record_class {
        const restore_def* definition = nullptr; ///< the most derived known class
        std::vector<std::string> unknown_names;
        bool ends_image = false;
    };

    /// An entity of a walk through all of them.
    ENTITY* walked(std::size_t index) const {
        if (index + prefetch_distance < m_entities.size()) prefetch(m_entities[index + prefetch_distance]);
        return m_entities[index];
    }
    void choose_top();
    /// False at the end of the image.
    bool record();
    const record_class& class_at_hand();
    record_class class_of(std::string_view chain) const;
    void fix_pointers();
    void drop_unreachable();
    void check_structure();
    void check_attributes();
    /// With the place of a record, which nobody has kept.
    [[noreturn]] void fail_in(std::size_t record, const std::string& message);
    [[noreturn]] void fail_at(const ENTITY* entity, const char* message);
    void destroy_all();

    record_reader m_records;
    restore_level m_level;
    image_header m_header;
    std::vector<long> m_top; ///< indexes of the top entities
    std::vector<ENTITY*> m_entities;
    std::vector<const restore_def*> m_kinds; ///< the classes of the entities
    std::size_t m_start = 0;                 ///< of the first record
    bool m_allNamed = true;                  ///< each record that is not at the top, by one before it
    std::vector<unsigned char> m_uses;
    std::size_t m_fixed = 0; ///< the record whose indexes are being made pointers
    std::vector<ENTITY*> m_pending;
    std::unordered_map<std::string_view, record_class> m_classes;       ///< by the bytes of the chain
    std::array<const decltype(m_classes)::value_type*, 256> m_latest{}; ///< by a hash of its first bytes
    std::size_t m_length = 0;
    image_reader* m_outer;
};
} // namespace acis_detail
