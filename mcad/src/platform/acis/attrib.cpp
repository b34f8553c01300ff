// Attributes and their method tables.
#include "platform/acis/attrib.h"

#include "platform/acis/fields.h"

void METHOD_TABLE::add_method(const METHOD_ID& id, METHOD_FUNCTION function) {
    m_methods.insert_or_assign(id, std::move(function));
}

const METHOD_FUNCTION* METHOD_TABLE::lookup(const METHOD_ID& id) const {
    auto found = m_methods.find(id);
    return found == m_methods.end() ? nullptr : &found->second;
}

ATTRIB::ATTRIB(ENTITY* owner) : m_owner(owner) {
    if (!owner) return;
    m_next = owner->attrib();
    if (m_next) m_next->m_previous = this;
    owner->set_attrib(this);
}

void ATTRIB::unhook() {
    if (!acis_detail::image_reader::is_reading(this)) {
        if (m_next) m_next->m_previous = m_previous;
        if (m_previous)
            m_previous->m_next = m_next;
        else if (m_owner)
            m_owner->set_attrib(m_next);
    }
    m_next = m_previous = nullptr;
    m_owner = nullptr;
}

void ATTRIB::lose() {
    unhook();
    ENTITY::lose();
}

int ATTRIB::call_method(const METHOD_ID&, const METHOD_ARGS&) { return 0; }

template <class Visitor, class... Object>
void ATTRIB::walk(Visitor& visitor, Object&... object) {
    visitor.sibling(&ATTRIB::m_next, object...);
    visitor.sibling(&ATTRIB::m_previous, object...);
    visitor.up(object.m_owner...);
}
template class entity_of<ATTRIB, ENTITY>;

ATTRIB_ST::ATTRIB_ST(ENTITY* owner) : entity_of(owner) {}

template <class Visitor, class... Object>
void ATTRIB_ST::walk(Visitor&, Object&...) {}
template class entity_of<ATTRIB_ST, ATTRIB>;

ATTRIB_RGB::ATTRIB_RGB(ENTITY* owner, double red, double green, double blue)
    : entity_of(owner), m_red(red), m_green(green), m_blue(blue) {
    set_copy_owner_action(CopyCopy);
    set_split_owner_action(SplitCopy);
}

void ATTRIB_RGB::set_color(double red, double green, double blue) {
    m_red = red;
    m_green = green;
    m_blue = blue;
}

template <class Visitor, class... Object>
void ATTRIB_RGB::walk(Visitor& visitor, Object&... object) {
    visitor.data(object.m_red...);
    visitor.data(object.m_green...);
    visitor.data(object.m_blue...);
}
template class entity_of<ATTRIB_RGB, ATTRIB_ST>;
