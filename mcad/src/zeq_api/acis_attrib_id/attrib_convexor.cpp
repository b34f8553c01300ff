// Registration, records and methods of the attributes.
#include "zeq_api/acis_attrib_id/attrib_convexor.h"

#include <utility>

namespace {

constexpr const char* parentName = "Morvanta_Convexor_Attribute";
constexpr const char* idName = "Morvanta_Convexor_ID_Attribute";
constexpr int parentLevel = 2;
constexpr int idLevel = 3;

/// Allocates an attribute without an owner and has it read its data.
template <class Attribute>
ENTITY* restore() {
    auto* const attribute = ACIS_NEW Attribute(nullptr);
    try {
        attribute->restore_common();
    } catch (...) {
        attribute->lose();
        throw;
    }
    return attribute;
}

METHOD_TABLE& parentMethods() {
    static METHOD_TABLE table;
    return table;
}
METHOD_TABLE& idMethods() {
    static METHOD_TABLE table;
    return table;
}

bool takes(const METHOD_ID& id, const METHOD_ARGS& args) { return id.args_type() == args.class_name(); }

// Entered while the library is loaded, so that images are understood from the first one on.
[[maybe_unused]] const int registered = ATTRIB_CONVEXOR_ID::staticType();

} // namespace

ATTRIB_CONVEXOR::ATTRIB_CONVEXOR(ENTITY* owner) : ATTRIB(owner) {}

const restore_def& ATTRIB_CONVEXOR::definition() {
    static const restore_def definition(ATTRIB::definition().subclasses(), parentName,
                                        &restore<ATTRIB_CONVEXOR>);
    return definition;
}

int ATTRIB_CONVEXOR::identity(int level) const {
    if (level == 0 || level == parentLevel) return ATTRIB_CONVEXOR::staticType();
    if (level < 0) return ATTRIB::identity(level + 1);
    return level < parentLevel ? ATTRIB::identity(level) : -1;
}

const char* ATTRIB_CONVEXOR::type_name() const { return parentName; }
unsigned ATTRIB_CONVEXOR::size() const { return sizeof *this; }
logical ATTRIB_CONVEXOR::is_deepcopyable() const { return true; }
void ATTRIB_CONVEXOR::debug_ent(FILE* file) const { ATTRIB::debug_ent(file); }

void ATTRIB_CONVEXOR::save(ENTITY_LIST& list) const {
    save_begin();
    save_common(list);
    save_end(list);
}

void ATTRIB_CONVEXOR::save_common(ENTITY_LIST& list) const {
    write_id_level(parentName, parentLevel);
    ATTRIB::save_common(list);
}

ENTITY* ATTRIB_CONVEXOR::copy_data(ENTITY_LIST& list, pointer_map* map, logical dpcpySkip,
                                   SCAN_TYPE reason) const {
    auto* const copy = ACIS_NEW ATTRIB_CONVEXOR(nullptr);
    copy->copy_common(list, this, map, dpcpySkip, reason);
    return copy;
}

void ATTRIB_CONVEXOR::add_method(const METHOD_ID& id, METHOD_FUNCTION function) {
    parentMethods().add_method(id, std::move(function));
}

int ATTRIB_CONVEXOR::call_method(const METHOD_ID& id, const METHOD_ARGS& args) {
    if (!takes(id, args)) return 0;
    const METHOD_FUNCTION* function = parentMethods().lookup(id);
    return function ? (*function)(this, args) : ATTRIB::call_method(id, args);
}

logical is_ATTRIB_CONVEXOR(const ENTITY* entity) {
    return entity && entity->identity(parentLevel) == ATTRIB_CONVEXOR::staticType();
}

ATTRIB_CONVEXOR_ID::ATTRIB_CONVEXOR_ID(ENTITY* owner) : ATTRIB_CONVEXOR(owner) {}

ATTRIB_CONVEXOR_ID::ATTRIB_CONVEXOR_ID(ENTITY* owner, long id) : ATTRIB_CONVEXOR(owner), m_id(id) {
    set_copy_owner_action(CopyCopy);
    set_split_owner_action(SplitKeep);
    set_merge_owner_action(MergeKeepKept);
    set_trans_owner_action(TransApply);
    set_reverse_owner_action(ReverseKeep);
    set_rep_owner_geom_action(RepOwnerGeomKeep);
    set_warp_owner_action(WarpKeep);
    set_lop_change_owner_action(LopChangeKeep);
}

const restore_def& ATTRIB_CONVEXOR_ID::definition() {
    static const restore_def definition(ATTRIB_CONVEXOR::definition().subclasses(), idName,
                                        &restore<ATTRIB_CONVEXOR_ID>);
    return definition;
}

int ATTRIB_CONVEXOR_ID::identity(int level) const {
    if (level == 0 || level == idLevel) return ATTRIB_CONVEXOR_ID::staticType();
    if (level > idLevel) return -1;
    return ATTRIB_CONVEXOR::identity(level < 0 ? level + 1 : level);
}

const char* ATTRIB_CONVEXOR_ID::type_name() const { return idName; }
unsigned ATTRIB_CONVEXOR_ID::size() const { return sizeof *this; }

void ATTRIB_CONVEXOR_ID::debug_ent(FILE* file) const {
    ATTRIB_CONVEXOR::debug_ent(file);
    std::fprintf(file, "\tid\t: %ld\n", m_id);
}

void ATTRIB_CONVEXOR_ID::save_common(ENTITY_LIST& list) const {
    write_id_level(idName, idLevel);
    ATTRIB_CONVEXOR::save_common(list);
    write_long(m_id);
}

void ATTRIB_CONVEXOR_ID::restore_common() {
    ATTRIB_CONVEXOR::restore_common();
    m_id = read_long();
}

ENTITY* ATTRIB_CONVEXOR_ID::copy_data(ENTITY_LIST& list, pointer_map* map, logical dpcpySkip,
                                      SCAN_TYPE reason) const {
    auto* const copy = ACIS_NEW ATTRIB_CONVEXOR_ID(nullptr);
    copy->copy_common(list, this, map, dpcpySkip, reason);
    copy->m_id = m_id;
    return copy;
}

void ATTRIB_CONVEXOR_ID::add_method(const METHOD_ID& id, METHOD_FUNCTION function) {
    idMethods().add_method(id, std::move(function));
}

int ATTRIB_CONVEXOR_ID::call_method(const METHOD_ID& id, const METHOD_ARGS& args) {
    if (!takes(id, args)) return 0;
    const METHOD_FUNCTION* function = idMethods().lookup(id);
    return function ? (*function)(this, args) : ATTRIB_CONVEXOR::call_method(id, args);
}

logical is_ATTRIB_CONVEXOR_ID(const ENTITY* entity) {
    return entity && entity->identity(idLevel) == ATTRIB_CONVEXOR_ID::staticType();
}
