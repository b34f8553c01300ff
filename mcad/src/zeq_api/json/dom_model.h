// The document model as a sink and a view of forms: what readObject and writeObject work on.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "zeq_api/json/json_value.h"

namespace zeq::json {

/// What stands at a place of a document.
enum class Kind {
    null,
    boolean,
    number,
    string,
    array,
    object
};

/// Code units as bytes, at any address.
struct Units {
    const char* bytes;
    std::size_t count;
};

/// Looks members up in the order in which the form asks for them. While the document has that order too, each
/// look-up is one comparison; any other order costs a search. Of duplicate keys the first counts: only
/// members that were all asked for are ever passed without being searched again.
class DomMembers {
public:
    explicit DomMembers(const JsonValue& object) : m_next(object.MemberBegin()), m_end(object.MemberEnd()) {}

    /// The value of the first member with this name; null when there is none.
    const JsonValue* find(std::wstring_view key);

private:
    JsonValue::ConstMemberIterator m_next;
    JsonValue::ConstMemberIterator m_end;
};

/// One look-up by itself; null, too, when `object` is no object.
const JsonValue* findMember(const JsonValue& object, std::wstring_view key);

/// Reads one value of the document model. Each `take` tells whether the value is of that type, and only then
/// assigns: the integer types by the range that holds the number, a double only from a floating-point number.
class DomView {
public:
    explicit DomView(const JsonValue& value) : m_value(&value) {}

    Kind kind() const;
    bool take(bool& out) const;
    bool take(int& out) const;
    bool take(unsigned& out) const;
    bool take(long long& out) const;
    bool take(unsigned long long& out) const;
    bool take(double& out) const;
    bool take(std::wstring& out) const;
    /// The units of a string where they lie, until anything else is read.
    bool take(Units& out) const {
        if (!m_value->IsString()) return false;
        forEachPiece([&out](const Units& whole) { out = whole; });
        return true;
    }

    /// The number of units of a string.
    std::size_t textSize() const { return m_value->GetStringLength(); }
    /// Visits the units of a string in order, whole groups of four up to the last piece.
    template <class Visit>
    void forEachPiece(Visit&& visit) const {
        visit(Units{reinterpret_cast<const char*>(m_value->GetString()), textSize()});
    }

    /// Number of elements of an array.
    std::size_t size() const { return m_value->Size(); }
    bool isEmpty() const { return size() == 0; }
    /// A string member of an object, without reading that.
    bool takeMember(std::wstring_view key, std::wstring& out) const {
        const auto value = members().find(key);
        return value && value->take(out);
    }

    /// Calls `visit(DomView)` for each element of an array until it returns false.
    template <class Visit>
    void forEach(Visit&& visit) const {
        for (const JsonValue& element : m_value->GetArray())
            if (!visit(DomView(element))) return;
    }

    class Members {
    public:
        explicit Members(const JsonValue& object) : m_members(object) {}
        std::optional<DomView> find(std::wstring_view key) {
            const JsonValue* value = m_members.find(key);
            return value ? std::optional(DomView(*value)) : std::nullopt;
        }
        void finish() const {} // members that nobody asked for are no matter

    private:
        DomMembers m_members;
    };
    /// The members of an object.
    Members members() const { return Members(*m_value); }

    /// Calls `visit(name, DomView)` for each member of an object.
    template <class Visit>
    void forEachMember(Visit&& visit) const {
        for (const auto& member : m_value->GetObject())
            visit(std::wstring(member.name.GetString(), member.name.GetStringLength()),
                  DomView(member.value));
    }

    const JsonValue& value() const { return *m_value; }
    /// The value itself; `scratch` is for models that have to build one.
    const JsonValue& dom(JsonDocument& /*scratch*/) const { return *m_value; }

private:
    const JsonValue* m_value;
};

/// Makes one value of the document model.
class DomSink {
public:
    DomSink(JsonValue& out, JsonAllocator& allocator) : m_out(&out), m_allocator(&allocator) {}

    void null() { m_out->SetNull(); }
    void value(bool v) { m_out->SetBool(v); }
    void value(int v) { m_out->SetInt(v); }
    void value(unsigned v) { m_out->SetUint(v); }
    void value(long long v) { m_out->SetInt64(v); }
    void value(unsigned long long v) { m_out->SetUint64(v); }
    void value(double v) { m_out->SetDouble(v); }
    void value(std::wstring_view v);

    /// Makes the value a string; `fill(bytes, first, count)` writes so many of its units, in order, as bytes.
    template <class Fill>
    void text(std::size_t units, Fill&& fill) {
        fill(allocateText(units), std::size_t{0}, units);
    }

    /// Makes the value an object; `fill(sink)` adds its members with member().
    template <class Fill>
    void object(Fill&& fill) {
        m_out->SetObject();
        fill(*this);
    }
    /// Makes the value an array; `fill(sink)` adds its elements with element().
    template <class Fill>
    void array(Fill&& fill) {
        m_out->SetArray();
        fill(*this);
    }
    /// Adds a member, whose name must be a constant; `give(sink)` makes its value.
    template <class Give>
    void member(std::wstring_view key, Give&& give) {
        JsonValue made;
        give(DomSink(made, *m_allocator));
        addMember(key, made);
    }
    /// The same with a copy of the name.
    template <class Give>
    void ownedMember(std::wstring_view key, Give&& give) {
        JsonValue made;
        give(DomSink(made, *m_allocator));
        addOwnedMember(key, made);
    }
    template <class Give>
    void element(Give&& give) {
        JsonValue made;
        give(DomSink(made, *m_allocator));
        addElement(made);
    }

    JsonValue& out() { return *m_out; }
    JsonAllocator& allocator() { return *m_allocator; }

private:
    // Out of line: every row of every form would have a copy.
    char* allocateText(std::size_t units);
    void addMember(std::wstring_view key, JsonValue& value);
    void addOwnedMember(std::wstring_view key, JsonValue& value);
    void addElement(JsonValue& value);

    JsonValue* m_out;
    JsonAllocator* m_allocator;
};

} // namespace zeq::json
