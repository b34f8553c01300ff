// The parameters of an exchange structure (ISO 10303-21), read from its text when they are asked for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

namespace zeq::part21 {

class List;

enum class Kind : std::uint8_t {
    unset,     ///< $, also where a parameter is missing
    derived,   ///< *
    reference, ///< #12
    number,
    text,
    enumeration, ///< .TRUE.
    binary,
    list,
    typed,  ///< LENGTH_MEASURE(1.5)
    damaged ///< none of these
};

/// A parameter: a view of the text it stands in, which must outlive it. A value of another kind than the one that
/// is asked for gives what is said to stand for nothing; no call throws or recurses, whatever the text.
class Value {
public:
    Value() = default;
    /// @param text without space and comments around it
    explicit Value(std::string_view text);

    Kind kind() const { return m_kind; }
    bool isSet() const { return m_kind != Kind::unset && m_kind != Kind::derived; }

    /// The number of the instance; 0 for nothing.
    std::uint64_t reference() const;
    /// Also that of a typed value that holds nothing else. Infinite and too large ones are none.
    std::optional<double> number() const;
    /// With all encodings of the format resolved; also that of a typed value. Empty for nothing.
    std::wstring text() const;
    /// Of an enumeration without its dots, of a typed value that of its type; empty for nothing.
    std::string_view name() const;
    /// Whether it is the enumeration .T. (which a boolean is).
    bool isTrue() const { return m_kind == Kind::enumeration && name() == "T"; }
    /// The elements of a list or of a typed value; none for nothing.
    List items() const;
    /// As it stands in the file.
    std::string_view raw() const { return m_text; }

private:
    std::string_view m_text;
    Kind m_kind = Kind::unset;
};

/// Parameters in their order; a view, as Value is. To walk it costs the length of its text once.
class List {
public:
    class Iterator {
    public:
        using value_type = Value;
        using difference_type = std::ptrdiff_t;
        using iterator_category = std::input_iterator_tag;

        Iterator() = default;
        explicit Iterator(std::string_view rest) : m_rest(rest) { read(); }
        const Value& operator*() const { return m_value; }
        const Value* operator->() const { return &m_value; }
        Iterator& operator++() {
            read();
            return *this;
        }
        void operator++(int) { read(); }
        bool operator==(std::default_sentinel_t) const { return m_isAtEnd; }

    private:
        void read();

        std::string_view m_rest;
        Value m_value;
        bool m_isMore = true;
        bool m_isAtEnd = true;
    };

    List() = default;
    /// @param text between the parentheses
    explicit List(std::string_view text) : m_text(text) {}

    Iterator begin() const { return Iterator(m_text); }
    std::default_sentinel_t end() const { return {}; }
    bool empty() const { return begin() == end(); }
    std::size_t size() const;
    /// Unset when there are not so many.
    Value operator[](std::size_t index) const;

private:
    std::string_view m_text;
};

} // namespace zeq::part21
