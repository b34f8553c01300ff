// What the library knows of every form at run time: how objects of a class cross to and from bytes, and the
// log lines and errors that all forms share.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <typeinfo>
#include <variant>
#include <vector>

#include "mp/serializable.h"
#include "zeq_api/json/byte_model.h"
#include "zeq_api/json/dom_model.h"
#include "zeq_api/json/json_object.h"
#include "zeq_api/json/shape.h"

namespace zeq::area {
/// In place of the file that trace lines name, for the few classes that log none. Each folder with documents
/// declares its own in an area.h.
inline constexpr const char* untraced = nullptr;
} // namespace zeq::area

namespace zeq::json {

/// What happens when a value is not of the form's JSON type.
struct Mismatch {
    enum class Action {
        error,
        warning,
        silent,
        exception
    };

    Action action = Action::error;
    /// Null stands for "<Class> object should have a JSON object type."
    const char* message = nullptr;
};

/// Logged at the error level.
constexpr Mismatch logsError(const char* message) { return {Mismatch::Action::error, message}; }
/// Logged at the warning level.
constexpr Mismatch logsWarning(const char* message) { return {Mismatch::Action::warning, message}; }
/// Thrown as std::invalid_argument.
constexpr Mismatch throwsInvalid(const char* message) { return {Mismatch::Action::exception, message}; }
inline constexpr Mismatch silently{Mismatch::Action::silent, nullptr};

/// The head of a form: the class as trace lines and messages name it (inside namespace zeq).
struct Head {
    constexpr Head(const char* className, const char* traceArea, Mismatch whenMismatched = {},
                   unsigned sourceLine = __builtin_LINE())
        : name(className), area(traceArea), mismatch(whenMismatched), line(sourceLine) {}

    const char* name;
    const char* area;
    Mismatch mismatch;
    unsigned line;
};

void traceRead(const Head& head);
void traceWrite(const Head& head);
/// Logs a trace line for any function: `<area>(<line>): <signature>`.
void trace(const char* area, const char* signature, unsigned line = __builtin_LINE());
/// Does what the head says of a value that is not of the form's JSON type.
void reportMismatch(const Head& head);

/// A new object of a class with a form, by the interface that it is read and written through.
using MadeObject = std::variant<std::shared_ptr<IJsonObject>, std::shared_ptr<mp::ISerializable>>;

/// A form with its types erased. Objects are passed by the address of the class's own subobject.
struct FormInfo {
    const std::type_info* type;
    const std::type_info* base; ///< the class of the base row; null without one
    const Head* head;
    Kind kind; ///< the JSON type of the form
    void (*read)(void* object, const ByteView& view);
    void (*write)(const void* object, ByteSink& sink);
    /// The members alone, of an object that a derived class reads or writes.
    void (*readDomMembers)(void* object, DomView::Members& members);
    void (*readByteMembers)(void* object, ByteView::Members& members);
    void (*writeDomMembers)(const void* object, DomSink& sink);
    void (*writeByteMembers)(const void* object, ByteSink& sink);
    Shape (*shape)();
    MadeObject (*make)(); ///< null for an abstract class
    /// A function that gives the object back the state that it has now. Null for a class whose objects do not load
    /// themselves.
    std::function<void()> (*keep)(void* object);
    bool isWholeDocument; ///< it crosses a stream on its own, and not inside another one

    /// The name of the class inside namespace zeq.
    std::string className() const;
};

/// Called during static initialisation, by the form engine.
bool registerForm(const FormInfo& form);
/// The form of a class; null when it has none.
const FormInfo* findForm(const std::type_info& type);
/// All forms, in the order of their class names.
std::vector<const FormInfo*> allForms();

} // namespace zeq::json
