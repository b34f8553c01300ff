/// @file
/// The root of everything that a model consists of, lists of such entities, and the table of their classes.
#pragma once

#include "platform/acis/file.h"
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

class ATTRIB;
class METHOD_ARGS;
class METHOD_ID;
class restore_def;

/// Entities are made with it, wherever the kernel has them deleted later.
#define ACIS_NEW new

/// The kernel's map from originals to copies; here the list of originals serves as the map.
class pointer_map;

/// Why the pointers of an entity are looked through.
enum SCAN_TYPE {
    SCAN_COPY,   ///< to find what is copied along with an entity: what lies below it
    SCAN_DELETE, ///< to find everything that an entity leads to
};

/// The subclasses of an entity class, by external name.
class subtype_table {
public:
    explicit subtype_table(const restore_def& owner) : m_owner(owner) {}
    /// The class whose subclasses these are.
    const restore_def& owner() const { return m_owner; }
    /// Null if there is none of that name.
    const restore_def* lookup(std::string_view externalName) const;

private:
    friend restore_def;
    const restore_def& m_owner;
    std::map<std::string_view, const restore_def*> m_subclasses;
};

/// What is known of an entity class: its name in images, its place in the hierarchy, and how one is restored.
/// Its constructor registers it, so it is a static object that lives for ever.
class restore_def {
public:
    /// Allocates an entity and has it read its data.
    using restore_function = ENTITY* (*)();

    /// The class of ENTITY itself.
    restore_def(const char* externalName, restore_function function);
    restore_def(subtype_table& parentSubclasses, const char* externalName, restore_function function);
    restore_def(const restore_def&) = delete;
    restore_def& operator=(const restore_def&) = delete;

    const char* name() const { return m_name; }
    /// The number handed out to this class; numbers differ from process to process.
    int type() const { return m_type; }
    /// Derivation level: 0 for ENTITY.
    int level() const { return m_level; }
    const restore_def* parent() const { return m_parent; }
    ENTITY* restore() const { return m_restore(); }
    subtype_table& subclasses() const { return m_subclasses; }
    /// Level 0 gives the class itself, a positive level its ancestor on that derivation level, a negative one
    /// the ancestor that many levels up; -1 where there is no such class.
    int identity(int level) const;

private:
    const char* m_name;
    restore_function m_restore;
    const restore_def* m_parent;
    int m_level;
    int m_type;
    mutable subtype_table m_subclasses;
};

/// The tokens of a record, or of a part of one, that the kernel has no class for.
class unknown_tokens;

/// Something in a model: topology, geometry or an attribute. Entities live on the heap and refer to each
/// other by plain pointers; lose() or the api_del_* functions end them.
class ENTITY {
public:
    ENTITY();
    ENTITY& operator=(const ENTITY&) = delete;

    static const restore_def& definition();
    static int staticType();

    /// The type numbers of an entity's classes, see restore_def::identity.
    virtual int identity(int level = 0) const;
    /// The name of its class in images; of a record of unknown class, the most derived name in it.
    virtual const char* type_name() const;
    virtual unsigned size() const;
    virtual logical is_deepcopyable() const { return true; }
    virtual void debug_ent(FILE* file) const;

    /// Writes the record: save_common between its beginning and its end.
    virtual void save(ENTITY_LIST& list) const;
    /// Writes the external names from the class up to ENTITY, then the data from ENTITY down to the class.
    virtual void save_common(ENTITY_LIST& list) const;
    /// Reads the data that save_common wrote; the names have been read already.
    virtual void restore_common();

    /// A copy whose pointers are indexes into the list of all originals.
    virtual ENTITY* copy_data(ENTITY_LIST& list, pointer_map* = nullptr, logical dpcpy_skip = false,
                              SCAN_TYPE reason = SCAN_COPY) const;
    void copy_common(ENTITY_LIST& list, const ENTITY* from, pointer_map* = nullptr,
                     logical dpcpy_skip = false, SCAN_TYPE reason = SCAN_COPY);
    /// Adds what this entity points to and what therefore is copied, or deleted, with it.
    virtual void copy_scan(ENTITY_LIST& list, SCAN_TYPE reason = SCAN_COPY, logical dpcpy_skip = false) const;
    /// Makes indexes, as read_ptr and copy_data leave them, pointers to the entities of the array.
    virtual void fix_pointers(ENTITY* array[], SCAN_TYPE reason = SCAN_COPY);
    virtual void fix_common(ENTITY* array[], SCAN_TYPE reason = SCAN_COPY);
    /// Called when a copy takes its original's place; there is no history here, so nothing has to be done.
    virtual void fixup_copy(ENTITY* copy) const;
    /// Ends this entity and its attributes, and takes it off whatever list it is on.
    virtual void lose();

    /// Calls the function that the class has for the method; 0 if it has none.
    virtual int call_method(const METHOD_ID& id, const METHOD_ARGS& args);

    /// Its first attribute, or null.
    ATTRIB* attrib() const { return m_attrib; }
    /// Makes an attribute the first of the chain. Attributes do so themselves.
    void set_attrib(ATTRIB* attrib) { m_attrib = attrib; }
    /// The number that keeps an entity known across images; -1 if nobody asked for one.
    long id() const { return m_id; }
    void set_id(long id) { m_id = id; }
    /// Whether its record has a class or data that this kernel does not know; it is written back as it came.
    logical is_unknown() const { return m_unknown != nullptr; }

protected:
    ENTITY(const ENTITY&) = delete;
    virtual ~ENTITY();
    /// What stands before and behind save_common in a record.
    void save_begin() const;
    void save_end(ENTITY_LIST& list) const;

private:
    friend struct entity_access;

    ATTRIB* m_attrib = nullptr;
    long m_id = -1;
    std::unique_ptr<unknown_tokens> m_unknown;
};

namespace acis_detail {
struct name_chain;
class place_table;
} // namespace acis_detail

/// Fills in the virtual functions of a bundled entity class from its one description, a static
/// `walk(visitor, object...)` that names its members in the order of the record. `Self::external_name` is its
/// name.
template <class Self, class Base>
class entity_of : public Base {
public:
    using Base::Base;
    static const restore_def& definition();
    static int staticType() { return definition().type(); }
    int identity(int level = 0) const override;
    const char* type_name() const override;
    unsigned size() const override;
    void save_common(ENTITY_LIST& list) const override;
    void restore_common() override;
    ENTITY* copy_data(ENTITY_LIST& list, pointer_map* map = nullptr, logical dpcpy_skip = false,
                      SCAN_TYPE reason = SCAN_COPY) const override;
    void copy_common(ENTITY_LIST& list, const Self* from, pointer_map* map = nullptr,
                     logical dpcpy_skip = false, SCAN_TYPE reason = SCAN_COPY);
    void copy_scan(ENTITY_LIST& list, SCAN_TYPE reason = SCAN_COPY,
                   logical dpcpy_skip = false) const override;
    void fix_common(ENTITY* array[], SCAN_TYPE reason = SCAN_COPY) override;

protected:
    /// All members, from those of ENTITY to those of Self.
    template <class Visitor, class Object>
    static void visit(Visitor& visitor, Object& object);
    static constexpr void add_names(acis_detail::name_chain& chain);

private:
    static const bool s_registered;
};

/// Whether an entity is of a class or one derived from it; false for null.
template <class T>
logical is_entity(const ENTITY* entity) {
    const restore_def& definition = T::definition();
    return entity != nullptr && entity->identity(definition.level()) == definition.type();
}
inline logical is_ENTITY(const ENTITY* entity) { return entity != nullptr; }

/// A list of entities, in the order in which they came, each once. It does not own them.
class ENTITY_LIST {
public:
    ENTITY_LIST();
    ENTITY_LIST(const ENTITY_LIST& other);
    ENTITY_LIST(ENTITY_LIST&& other) noexcept;
    ENTITY_LIST& operator=(ENTITY_LIST other) noexcept;
    ~ENTITY_LIST();

    /// The index of an entity, which is put at the end unless it is listed already; -1 for null.
    int add(ENTITY* entity);
    /// Adds all of them; if an exception is thrown, none.
    void add(const ENTITY_LIST& entities);
    /// The index of an entity, or -1.
    int lookup(const ENTITY* entity) const;
    /// Leaves a gap, so that other indexes stay; -1 if it was not listed.
    int remove(const ENTITY* entity);
    void clear();
    void reserve(std::size_t count);

    /// Number of indexes, gaps included.
    int count() const { return static_cast<int>(m_entities.size()); }
    int iteration_count() const { return count() - m_gaps; }
    /// Null for a gap.
    ENTITY* operator[](int index) const { return m_entities[index]; }

    /// Walks the entities without the gaps: init(), then next() until null.
    void init() const { m_next = 0; }
    ENTITY* next() const;
    ENTITY* first() const {
        init();
        return next();
    }

private:
    void make_places(std::size_t count);

    std::vector<ENTITY*> m_entities;
    std::unique_ptr<acis_detail::place_table> m_places; ///< an index plus one; null for a short list
    int m_gaps = 0;
    mutable int m_next = 0;
};
