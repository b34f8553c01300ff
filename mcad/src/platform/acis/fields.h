// What is done with the members of a bundled entity: each of these visitors takes them one by one, as the
// class's `walk` names them in the order of the record, and the functions of entity_of are one visit each.
//
//   down     a pointer to something that is copied along with this entity
//   up       a pointer to something that is not
//   chained  a pointer (down) that starts or continues a list: nothing may be pointed to like this twice
//   ring     a pointer (up) that nothing may be pointed to like this twice
//   sibling  a member (up) by which attributes of one owner are chained; those not copied drop out of it
//   data     a value; an optional integer is one that later versions have there: it is written if it was read
//   bspline  the block of a B-spline: name, whether it is exact, B-spline, fit tolerance, further tokens
#pragma once

#include "platform/acis/bspline_block.h"
#include "platform/acis/geometry.h"
#include "platform/acis/image.h"
#include "platform/acis/unknown_tokens.h"
#include <array>
#include <charconv>
#include <optional>
#include <string>
#include <type_traits>

namespace acis_detail {

/// The visitors that only look at pointers pass over everything else.
struct no_data {
    template <class... T>
    void data(T&&...) {}
    template <class... T>
    void bspline(const char*, T&&...) {}
};

/// The external names of a record, as they stand in it.
struct name_chain {
    std::array<char, 64> bytes{};
    std::size_t size = 0;

    constexpr void add(std::string_view name, bool last) {
        bytes[size++] = char(last ? tag::ident : tag::subident);
        bytes[size++] = char(name.size());
        for (char c : name) bytes[size++] = c;
    }
};

class field_writer {
public:
    field_writer(record_writer& records, ENTITY_LIST& list) : m_writer(records), m_list(list) {}

    void names(const name_chain& chain) { m_writer.raw(chain.bytes.data(), chain.size); }
    void entity(const ENTITY& entity) {
        up(entity.attrib());
        data(entity.id());
    }
    template <class T>
    void down(T* pointer) {
        m_writer.integer(pointer ? m_list.add(pointer) : -1, tag::pointer);
    }
    template <class T, class Object>
    void sibling(T* Object::*member, const Object& object) {
        up(object.*member);
    }
    template <class T>
    void up(T* pointer) {
        down(pointer);
    }
    template <class T>
    void chained(T* pointer) {
        down(pointer);
    }
    template <class T>
    void ring(T* pointer) {
        down(pointer);
    }
    void data(double value) { m_writer.real(value); }
    void data(long value) { m_writer.integer(value); }
    void data(std::optional<long> value) {
        if (value) m_writer.integer(*value);
    }
    void data(logical value) { m_writer.logical_value(value); }
    void data(const std::string& value) { m_writer.string(value); }
    void data(const SPAposition& value) { m_writer.position(value); }
    void data(const SPAvector& value) { m_writer.vector(value); }
    void data(const SPApar_vec& value) { m_writer.par_vec(value); }
    void data(const SPAinterval& value) {
        bound(value.bounded_below(), value.start_pt());
        bound(value.bounded_above(), value.end_pt());
    }
    void data(const SPAtransf& value) { m_writer.literal(text_of(value)); }
    template <class Spline>
    void bspline(const char* name, bool exact, const Spline& spline, double tolerance,
                 const kept_tokens& rest) {
        m_writer.pause();
        write_bspline(m_writer.records(), m_list, name, exact ? &spline : nullptr, tolerance,
                      entity_access::tokens(rest));
        m_writer.resume();
    }

private:
    void bound(bool bounded, double value) {
        m_writer.logical_value(bounded);
        if (bounded) m_writer.real(value);
    }

    token_writer m_writer;
    ENTITY_LIST& m_list;
};

class field_reader {
public:
    explicit field_reader(record_reader& reader) : m_reader(reader) {}

    void entity(ENTITY& entity) {
        ATTRIB* attribute = nullptr;
        long id = 0;
        up(attribute);
        data(id);
        entity.set_attrib(attribute);
        entity.set_id(id);
    }

    template <class T>
    void down(T*& pointer) {
        pointer = index_as_pointer<T>(m_reader.pointer());
    }
    template <class T, class Object>
    void sibling(T* Object::*member, Object& object) {
        up(object.*member);
    }
    template <class T>
    void up(T*& pointer) {
        down(pointer);
    }
    template <class T>
    void chained(T*& pointer) {
        down(pointer);
    }
    template <class T>
    void ring(T*& pointer) {
        down(pointer);
    }
    void data(double& value) { value = m_reader.real(); }
    void data(long& value) { value = m_reader.integer(); }
    void data(std::optional<long>& value) {
        if (m_reader.next_is(tag::integer)) value = m_reader.integer();
    }
    void data(logical& value) { value = m_reader.logical_value(); }
    void data(std::string& value) { value = m_reader.string(); }
    void data(SPAposition& value) { value = m_reader.position(); }
    void data(SPAvector& value) { value = m_reader.vector(); }
    void data(SPAunit_vector& value) {
        SPAvector v = m_reader.vector();
        value = {v.x(), v.y(), v.z()};
    }
    void data(SPApar_vec& value) { value = m_reader.par_vec(); }
    void data(SPAinterval& value) {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        double start = m_reader.logical_value() ? m_reader.real() : -infinity;
        double end = m_reader.logical_value() ? m_reader.real() : infinity;
        value = {start, end};
    }
    void data(SPAtransf& value) {
        if (!take_text(m_reader.literal(), value))
            m_reader.fail("expected 13 numbers in the literal of a transform");
    }
    template <class Spline>
    void bspline(const char* name, bool& exact, Spline& spline, double& tolerance, kept_tokens& rest) {
        exact = read_bspline(m_reader, name, spline, tolerance, entity_access::tokens(rest));
    }

private:
    record_reader& m_reader;
};

/// Copies members; pointers become indexes into the list of originals.
class field_copier {
public:
    explicit field_copier(const ENTITY_LIST& list) : m_list(list) {}

    template <class T>
    void down(T*& to, T* from) {
        to = index_as_pointer<T>(m_list.lookup(from));
    }
    template <class T, class Object>
    void sibling(T* Object::*member, Object& to, const Object& from) {
        T* next = from.*member;
        while (next && m_list.lookup(next) < 0) next = next->*member;
        down(to.*member, next);
    }
    template <class T>
    void up(T*& to, T* from) {
        down(to, from);
    }
    template <class T>
    void chained(T*& to, T* from) {
        down(to, from);
    }
    template <class T>
    void ring(T*& to, T* from) {
        down(to, from);
    }
    template <class T>
    void data(T& to, const T& from) {
        to = from;
    }
    template <class Spline>
    void bspline(const char*, bool& exact, bool fromExact, Spline& spline, const Spline& fromSpline,
                 double& tolerance, double fromTolerance, kept_tokens& rest, const kept_tokens& fromRest) {
        exact = fromExact;
        spline = fromSpline;
        tolerance = fromTolerance;
        rest = fromRest;
        each_pointer(rest);
    }
    void each_pointer(kept_tokens& rest) {
        if (auto& tokens = entity_access::tokens(rest))
            tokens->each_pointer([&](ENTITY*& pointer) { down(pointer, pointer); });
    }

private:
    const ENTITY_LIST& m_list;
};

/// Makes indexes pointers.
class pointer_fixer : public no_data {
public:
    explicit pointer_fixer(ENTITY* array[]) : m_array(array), m_restoring(image_reader::current()) {}

    void entity(ENTITY& entity) {
        ATTRIB* attribute = entity.attrib();
        down(attribute);
        entity.set_attrib(attribute);
        if (auto& unknown = entity_access::unknown(entity))
            unknown->each_pointer([&](ENTITY*& pointer) { down(pointer); });
    }

    template <class T>
    void down(T*& pointer) {
        fix(pointer);
    }
    template <class T, class Object>
    void sibling(T* Object::*member, Object& object) {
        up(object.*member);
    }
    template <class T>
    void up(T*& pointer) {
        fix(pointer);
    }
    template <class T>
    void chained(T*& pointer) {
        long index = fix(pointer);
        if (m_restoring) m_restoring->take(index, image_reader::in_list);
    }
    template <class T>
    void ring(T*& pointer) {
        long index = fix(pointer);
        if (m_restoring) m_restoring->take(index, image_reader::in_ring);
    }
    template <class... T>
    void bspline(const char*, T&... parts) {
        (fix_tokens(parts), ...);
    }

private:
    template <class T>
    long fix(T*& pointer) {
        long index = pointer_as_index(pointer);
        pointer = nullptr;
        if (index < 0) return index;
        if (m_restoring) m_restoring->check_index(index);
        ENTITY* entity = m_array[index];
        if constexpr (!std::is_same_v<T, ENTITY>)
            if (m_restoring ? !m_restoring->is_a(index, T::definition()) : !is_entity<T>(entity))
                image_reader::fail_wrong_class(index, T::definition().name());
        pointer = static_cast<T*>(entity);
        return index;
    }
    template <class T>
    void fix_tokens(T&) {}
    void fix_tokens(kept_tokens& rest) {
        if (auto& tokens = entity_access::tokens(rest))
            tokens->each_pointer([&](ENTITY*& pointer) { fix(pointer); });
    }

    ENTITY** m_array;
    image_reader* m_restoring;
};

/// Adds to a list what an entity points to.
class pointer_scanner : public no_data {
public:
    pointer_scanner(ENTITY_LIST& list, SCAN_TYPE reason) : m_list(list), m_all(reason == SCAN_DELETE) {}

    template <class T>
    void down(T* pointer) {
        m_list.add(pointer);
    }
    template <class T, class Object>
    void sibling(T* Object::*member, const Object& object) {
        up(object.*member);
    }
    template <class T>
    void up(T* pointer) {
        if (m_all) m_list.add(pointer);
    }
    template <class T>
    void chained(T* pointer) {
        down(pointer);
    }
    template <class T>
    void ring(T* pointer) {
        up(pointer);
    }
    template <class... T>
    void bspline(const char*, T&... parts) {
        (scan_tokens(parts), ...);
    }

private:
    template <class T>
    void scan_tokens(const T&) {}
    void scan_tokens(const kept_tokens& rest) {
        if (auto& tokens = entity_access::tokens(rest))
            tokens->each_pointer([&](ENTITY* pointer) { m_list.add(pointer); });
    }

    ENTITY_LIST& m_list;
    bool m_all;
};
} // namespace acis_detail

template <class Self, class Base>
const restore_def& entity_of<Self, Base>::definition() {
    static const restore_def theDefinition(Base::definition().subclasses(), Self::external_name,
                                           []() -> ENTITY* {
                                               auto* entity = ACIS_NEW Self;
                                               entity->restore_common();
                                               return entity;
                                           });
    return theDefinition;
}

template <class Self, class Base>
const bool entity_of<Self, Base>::s_registered = (Self::definition(), true);

template <class Self, class Base>
int entity_of<Self, Base>::identity(int level) const {
    return definition().identity(level);
}

template <class Self, class Base>
const char* entity_of<Self, Base>::type_name() const {
    const char* unknown = acis_detail::unknown_name(*this);
    return unknown ? unknown : Self::external_name;
}

template <class Self, class Base>
unsigned entity_of<Self, Base>::size() const {
    return sizeof(Self);
}

template <class Self, class Base>
template <class Visitor, class Object>
void entity_of<Self, Base>::visit(Visitor& visitor, Object& object) {
    if constexpr (std::is_same_v<Base, ENTITY>)
        visitor.entity(object);
    else
        Base::visit(visitor,
                    static_cast<std::conditional_t<std::is_const_v<Object>, const Base, Base>&>(object));
    Self::walk(visitor, object);
}

template <class Self, class Base>
constexpr void entity_of<Self, Base>::add_names(acis_detail::name_chain& chain) {
    constexpr bool last = std::is_same_v<Base, ENTITY>;
    chain.add(Self::external_name, last);
    if constexpr (!last) Base::add_names(chain);
}

template <class Self, class Base>
[[gnu::flatten]] void entity_of<Self, Base>::save_common(ENTITY_LIST& list) const {
    static constexpr acis_detail::name_chain names = [] {
        acis_detail::name_chain chain;
        Self::add_names(chain);
        return chain;
    }();
    acis_detail::field_writer visitor(acis_detail::image_writer::current().records(), list);
    visitor.names(names);
    visit(visitor, static_cast<const Self&>(*this));
}

template <class Self, class Base>
[[gnu::flatten]] void entity_of<Self, Base>::restore_common() {
    acis_detail::field_reader visitor(acis_detail::image_reader::current_records());
    visit(visitor, static_cast<Self&>(*this));
}

template <class Self, class Base>
ENTITY* entity_of<Self, Base>::copy_data(ENTITY_LIST& list, pointer_map* map, logical dpcpy_skip,
                                         SCAN_TYPE reason) const {
    auto* copy = ACIS_NEW Self;
    copy->copy_common(list, static_cast<const Self*>(this), map, dpcpy_skip, reason);
    return copy;
}

template <class Self, class Base>
void entity_of<Self, Base>::copy_common(ENTITY_LIST& list, const Self* from, pointer_map* map,
                                        logical dpcpy_skip, SCAN_TYPE reason) {
    Base::copy_common(list, from, map, dpcpy_skip, reason);
    acis_detail::field_copier visitor(list);
    Self::walk(visitor, static_cast<Self&>(*this), *from);
}

template <class Self, class Base>
void entity_of<Self, Base>::copy_scan(ENTITY_LIST& list, SCAN_TYPE reason, logical dpcpy_skip) const {
    Base::copy_scan(list, reason, dpcpy_skip);
    acis_detail::pointer_scanner visitor(list, reason);
    Self::walk(visitor, static_cast<const Self&>(*this));
}

template <class Self, class Base>
[[gnu::flatten]] void entity_of<Self, Base>::fix_common(ENTITY* array[], SCAN_TYPE) {
    acis_detail::pointer_fixer visitor(array);
    visit(visitor, static_cast<Self&>(*this));
}

// Their walks are known in one source file each, while classes in others derive from them.
extern template class entity_of<ATTRIB, ENTITY>;
extern template class entity_of<CURVE, ENTITY>;
extern template class entity_of<SURFACE, ENTITY>;
