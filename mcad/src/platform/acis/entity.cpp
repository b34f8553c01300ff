// ENTITY, lists of entities, and the table of their classes.
#include "platform/acis/entity.h"

#include "platform/acis/attrib.h"
#include "platform/acis/fields.h"
#include <atomic>
#include <cstdint>

using acis_detail::image_reader;
using acis_detail::image_writer;

const restore_def* subtype_table::lookup(std::string_view externalName) const {
    auto found = m_subclasses.find(externalName);
    return found == m_subclasses.end() ? nullptr : found->second;
}

namespace {
std::atomic<int> types_handed_out = 0;
}

restore_def::restore_def(const char* externalName, restore_function function)
    : m_name(externalName), m_restore(function), m_parent(nullptr), m_level(0), m_type(types_handed_out++),
      m_subclasses(*this) {}

restore_def::restore_def(subtype_table& parentSubclasses, const char* externalName, restore_function function)
    : m_name(externalName), m_restore(function), m_parent(&parentSubclasses.owner()),
      m_level(m_parent->level() + 1), m_type(types_handed_out++), m_subclasses(*this) {
    parentSubclasses.m_subclasses.emplace(m_name, this);
}

int restore_def::identity(int level) const {
    int wanted = level > 0 ? level : m_level + level;
    if (wanted < 0 || wanted > m_level) return -1;
    const restore_def* ancestor = this;
    while (ancestor->m_level > wanted) ancestor = ancestor->m_parent;
    return ancestor->m_type;
}

ENTITY::ENTITY() {
    if (image_reader* reader = image_reader::current()) reader->constructed(this);
}

ENTITY::~ENTITY() {
    if (image_reader* reader = image_reader::current()) reader->destroyed(this);
}

const restore_def& ENTITY::definition() {
    static const restore_def theDefinition("entity", []() -> ENTITY* {
        auto* entity = ACIS_NEW ENTITY;
        entity->restore_common();
        return entity;
    });
    return theDefinition;
}

int ENTITY::staticType() { return definition().type(); }
int ENTITY::identity(int level) const { return definition().identity(level); }

const char* ENTITY::type_name() const {
    const char* unknown = acis_detail::unknown_name(*this);
    return unknown ? unknown : definition().name();
}

unsigned ENTITY::size() const { return sizeof(ENTITY); }

void ENTITY::debug_ent(FILE* file) const {
    std::fprintf(file, "%s %p: id %ld, attribute %p\n", type_name(), static_cast<const void*>(this), m_id,
                 static_cast<const void*>(m_attrib));
}

void ENTITY::save(ENTITY_LIST& list) const {
    save_begin();
    save_common(list);
    save_end(list);
}

void ENTITY::save_begin() const {
    bool wholeChain = identity() == ENTITY::staticType();
    if (!m_unknown) {
        if (wholeChain) throw acis_detail::failure("an entity without a class cannot be saved");
        return;
    }
    for (const std::string& name : m_unknown->names)
        image_writer::current().records().name(name, wholeChain && &name == &m_unknown->names.back());
}

void ENTITY::save_common(ENTITY_LIST& list) const {
    if (m_unknown && m_unknown->whole) return;
    write_ptr(m_attrib, list);
    write_long(m_id);
}

void ENTITY::save_end(ENTITY_LIST& list) const {
    acis_detail::record_writer& records = image_writer::current().records();
    if (m_unknown) m_unknown->write(records, list);
    records.single(acis_detail::tag::end);
}

void ENTITY::restore_common() {
    acis_detail::field_reader visitor(image_reader::current_records());
    visitor.up(m_attrib);
    visitor.data(m_id);
}

ENTITY* ENTITY::copy_data(ENTITY_LIST& list, pointer_map* map, logical dpcpy_skip, SCAN_TYPE reason) const {
    auto* copy = ACIS_NEW ENTITY;
    copy->copy_common(list, this, map, dpcpy_skip, reason);
    return copy;
}

void ENTITY::copy_common(ENTITY_LIST& list, const ENTITY* from, pointer_map*, logical, SCAN_TYPE) {
    const ATTRIB* attribute = from->m_attrib;
    while (attribute && list.lookup(attribute) < 0) attribute = attribute->next();
    m_attrib = acis_detail::index_as_pointer<ATTRIB>(list.lookup(attribute));
    if (!from->m_unknown) return;
    m_unknown = std::make_unique<unknown_tokens>(*from->m_unknown);
    m_unknown->each_pointer(
        [&](ENTITY*& pointer) { pointer = acis_detail::index_as_pointer<ENTITY>(list.lookup(pointer)); });
}

void ENTITY::copy_scan(ENTITY_LIST& list, SCAN_TYPE reason, logical) const {
    for (ATTRIB* attribute = m_attrib; attribute; attribute = attribute->next())
        if (reason == SCAN_DELETE || attribute->get_copy_owner_action() == CopyCopy) list.add(attribute);
    if (m_unknown) m_unknown->each_pointer([&](ENTITY* pointer) { list.add(pointer); });
}

void ENTITY::fix_pointers(ENTITY* array[], SCAN_TYPE reason) { fix_common(array, reason); }

void ENTITY::fix_common(ENTITY* array[], SCAN_TYPE) {
    acis_detail::pointer_fixer fixer(array);
    fixer.down(m_attrib);
    if (m_unknown) m_unknown->each_pointer([&](ENTITY*& pointer) { fixer.down(pointer); });
}

void ENTITY::fixup_copy(ENTITY*) const {}

void ENTITY::lose() {
    if (image_reader::is_reading(this)) m_attrib = nullptr;
    // Attributes may have attributes; the innermost go first, so that none finds any of its own and nothing
    // recurses.
    ENTITY_LIST attributes;
    for (const ENTITY* owner = this; owner; owner = attributes.next())
        for (ATTRIB* attribute = owner->m_attrib; attribute; attribute = attribute->next())
            attributes.add(attribute);
    for (int i = attributes.count(); i-- > 0;) attributes[i]->lose();
    delete this;
}

int ENTITY::call_method(const METHOD_ID&, const METHOD_ARGS&) { return 0; }

namespace {
std::size_t hash_of(const ENTITY* entity) {
    // Entities lie 16 bytes apart at least; the multiplication spreads what is left over the upper half.
    return (reinterpret_cast<std::uintptr_t>(entity) >> 4) * 0x9e3779b97f4a7c15u >> 32;
}
} // namespace

std::size_t ENTITY_LIST::slot_of(const ENTITY* entity) const {
    std::size_t mask = m_slots.size() - 1;
    std::size_t at = hash_of(entity) & mask;
    while (m_slots[at] != 0 && m_entities[m_slots[at] - 1] != entity) at = (at + 1) & mask;
    return at;
}

void ENTITY_LIST::rehash(std::size_t slots) {
    m_slots.assign(slots, 0);
    for (int i = 0; i < count(); ++i)
        if (m_entities[i]) m_slots[slot_of(m_entities[i])] = i + 1;
}

int ENTITY_LIST::add(ENTITY* entity) {
    if (!entity) return -1;
    if (2 * (m_entities.size() + 1) > m_slots.size()) rehash(m_slots.empty() ? 16 : 2 * m_slots.size());
    int& index = m_slots[slot_of(entity)];
    if (index == 0) {
        m_entities.push_back(entity);
        index = count();
    }
    return index - 1;
}

void ENTITY_LIST::add(const ENTITY_LIST& entities) {
    for (ENTITY* entity : entities.m_entities) add(entity);
}

int ENTITY_LIST::lookup(const ENTITY* entity) const {
    if (!entity || m_slots.empty()) return -1;
    return m_slots[slot_of(entity)] - 1;
}

int ENTITY_LIST::remove(const ENTITY* entity) {
    int index = lookup(entity);
    if (index < 0) return -1;
    m_entities[index] = nullptr;
    ++m_gaps;
    rehash(m_slots.size()); // removals are rare, and open addressing knows no simple one
    return index;
}

void ENTITY_LIST::clear() { *this = ENTITY_LIST(); }

void ENTITY_LIST::reserve(std::size_t count) {
    m_entities.reserve(count);
    std::size_t slots = 16;
    while (slots < 2 * (count + 1)) slots *= 2;
    if (slots > m_slots.size()) rehash(slots);
}

ENTITY* ENTITY_LIST::next() const {
    while (m_next < count())
        if (ENTITY* entity = m_entities[m_next++]) return entity;
    return nullptr;
}
