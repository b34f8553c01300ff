// ENTITY, lists of entities, and the table of their classes.
#include "platform/acis/entity.h"

#include "platform/acis/attrib.h"
#include "platform/acis/fields.h"
#include "platform/acis/place_table.h"
#include <algorithm>
#include <atomic>
#include <cstdint>
#include <utility>

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
    if (!m_unknown) return;
    bool wholeChain = identity() == ENTITY::staticType();
    acis_detail::token_writer writer(image_writer::current().records());
    for (const std::string& name : m_unknown->names)
        writer.name(name, wholeChain && &name == &m_unknown->names.back());
}

void ENTITY::save_common(ENTITY_LIST& list) const {
    if (!m_unknown && identity() == ENTITY::staticType())
        throw acis_detail::failure("an entity without a class cannot be saved");
    if (m_unknown && m_unknown->whole) return;
    acis_detail::field_writer(image_writer::current().records(), list).entity(*this);
}

void ENTITY::save_end(ENTITY_LIST& list) const {
    acis_detail::token_writer writer(image_writer::current().records());
    if (m_unknown) m_unknown->write(writer, list);
    writer.single(acis_detail::tag::end);
}

void ENTITY::restore_common() { acis_detail::field_reader(image_reader::current_records()).entity(*this); }

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

void ENTITY::fix_common(ENTITY* array[], SCAN_TYPE) { acis_detail::pointer_fixer(array).entity(*this); }

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
constexpr std::size_t short_list = 8; ///< as long as it is quicker to look at every entity
static_assert(sizeof(ENTITY) >= 32, "two entities never share a place in the table");
} // namespace

ENTITY_LIST::ENTITY_LIST() = default;
ENTITY_LIST::ENTITY_LIST(const ENTITY_LIST& other)
    : m_entities(other.m_entities), m_gaps(other.m_gaps), m_next(other.m_next) {
    make_places(m_entities.size());
}
ENTITY_LIST::ENTITY_LIST(ENTITY_LIST&& other) noexcept = default;
ENTITY_LIST& ENTITY_LIST::operator=(ENTITY_LIST other) noexcept {
    m_entities.swap(other.m_entities);
    m_places.swap(other.m_places);
    m_gaps = other.m_gaps;
    m_next = other.m_next;
    return *this;
}
ENTITY_LIST::~ENTITY_LIST() = default;

void ENTITY_LIST::make_places(std::size_t count) {
    if (m_places || count <= short_list) return;
    auto places = std::make_unique<acis_detail::place_table>();
    for (std::size_t i = 0; i < m_entities.size(); ++i)
        if (m_entities[i]) places->at(m_entities[i]) = int(i) + 1;
    m_places = std::move(places);
}

int ENTITY_LIST::add(ENTITY* entity) {
    if (!entity) return -1;
    make_places(m_entities.size() + 1);
    if (!m_places) {
        int index = lookup(entity);
        if (index >= 0) return index;
        m_entities.push_back(entity);
        return count() - 1;
    }
    // A place that another entity has is free: that one must have ended, and its memory been used again.
    int& place = m_places->at(entity);
    if (place == 0 || m_entities[place - 1] != entity) {
        m_entities.push_back(entity);
        place = count();
    }
    return place - 1;
}

void ENTITY_LIST::add(const ENTITY_LIST& entities) {
    // What may throw comes first.
    reserve(m_entities.size() + entities.m_entities.size());
    make_places(m_entities.size() + entities.m_entities.size());
    if (m_places)
        for (ENTITY* entity : entities.m_entities) m_places->at(entity);
    for (ENTITY* entity : entities.m_entities) add(entity);
}

int ENTITY_LIST::lookup(const ENTITY* entity) const {
    if (!entity) return -1;
    if (!m_places) {
        auto found = std::find(m_entities.begin(), m_entities.end(), entity);
        return found == m_entities.end() ? -1 : int(found - m_entities.begin());
    }
    int index = m_places->find(entity) - 1;
    return index >= 0 && m_entities[index] == entity ? index : -1;
}

int ENTITY_LIST::remove(const ENTITY* entity) {
    if (!entity) return -1;
    // Not by lookup(): an entity that has ended may have lost its place.
    auto found = std::find(m_entities.begin(), m_entities.end(), entity);
    if (found == m_entities.end()) return -1;
    int index = int(found - m_entities.begin());
    *found = nullptr;
    ++m_gaps;
    if (m_places && m_places->find(entity) == index + 1) m_places->at(entity) = 0;
    return index;
}

void ENTITY_LIST::clear() { *this = ENTITY_LIST(); }

void ENTITY_LIST::reserve(std::size_t count) { m_entities.reserve(count); }

ENTITY* ENTITY_LIST::next() const {
    while (m_next < count())
        if (ENTITY* entity = m_entities[m_next++]) return entity;
    return nullptr;
}
