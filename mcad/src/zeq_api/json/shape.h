// What the form of a class says of its documents, as data: which members there are and what each has to be in
// order to be taken. Made from the rows that read and write; the linter and the schema are made from it.
#pragma once

#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <typeinfo>
#include <utility>
#include <variant>
#include <vector>

#include "zeq_api/json/enum_names.h"

namespace zeq::json {

struct Shape;
struct MemberShape;
struct Alternative;

/// Whatever there is; a class without a form, for one.
struct AnyShape {};

struct BooleanShape {};

struct IntegerShape {
    long long least;
    unsigned long long most;
    bool wraps = false; ///< a number beyond the range is taken all the same, modulo the range
};

/// A number that is written with a fraction or an exponent.
struct RealShape {};

struct StringShape {
    std::optional<std::size_t> length;    ///< in code units; any without it
    std::vector<std::wstring> registered; ///< if not empty, the names that stand for something
};

/// A string that is a name of an enumeration.
struct NameShape {
    const EnumTable* names;
    bool unknownIsZero = false; ///< an unknown name is read as 0, and not by the rule of the table

    int valueOf(const std::wstring& name) const {
        return unknownIsZero && !names->hasName(name) ? 0 : names->valueOf(name);
    }
};

struct ArrayShape {
    std::shared_ptr<const Shape> element;
    std::optional<std::size_t> size; ///< exactly so many elements; any number without it
};

/// An object whose members have names of the user's, or those of an enumeration.
struct MapShape {
    std::shared_ptr<const Shape> value;
    const EnumTable* names = nullptr;
};

/// Base64 text of an array of 4-byte numbers, or an array.
struct BulkShape {
    std::shared_ptr<const Shape> array;
};

struct ObjectShape {
    std::vector<MemberShape> members; ///< in written order
};

/// What the form of another class says.
struct ClassShape {
    const std::type_info* type;
};

/// A string that names a shared buffer with the binary form of an object of that class.
struct BufferShape {
    const std::type_info* type;
};

/// The first alternative of which all conditions hold; without one, the value is not read.
struct ChoiceShape {
    /// Whose members the conditions are about: those beside this value, or those of the value itself.
    enum class Asked {
        siblings,
        itself
    };

    Asked asked;
    std::vector<Alternative> alternatives;
};

struct Shape {
    std::variant<AnyShape, BooleanShape, IntegerShape, RealShape, StringShape, NameShape, ArrayShape,
                 MapShape, BulkShape, ObjectShape, ClassShape, BufferShape, ChoiceShape>
        is;
    bool mayBeNull = false; ///< null stands for an object that is not set
};

/// That a member is this boolean, or this string; of enumerations, a name that is read as the same value.
struct Condition {
    std::wstring_view key;
    std::variant<bool, std::wstring> value;
    std::optional<NameShape> names;
};

struct Alternative {
    std::vector<Condition> conditions;
    Shape shape;
};

struct MemberShape {
    std::wstring_view key;
    Shape shape;
    bool isAlwaysWritten = true;
    bool isRead = true;
    bool isRequired = false; ///< a document without it is refused
};

template <class Integer>
Shape integerShape() {
    using Limits = std::numeric_limits<Integer>;
    return {
        IntegerShape{static_cast<long long>(Limits::min()), static_cast<unsigned long long>(Limits::max())}};
}

inline Shape arrayShape(Shape element, std::optional<std::size_t> size = {}) {
    return {ArrayShape{std::make_shared<Shape>(std::move(element)), size}};
}

inline Shape mapShape(Shape value, const EnumTable* names = nullptr) {
    return {MapShape{std::make_shared<Shape>(std::move(value)), names}};
}

inline Shape bulkShape(Shape element) {
    return {BulkShape{std::make_shared<Shape>(arrayShape(std::move(element)))}};
}

} // namespace zeq::json
