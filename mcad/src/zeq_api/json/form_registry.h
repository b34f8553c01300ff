// What the library knows of every form at run time: how objects of a class cross to and from bytes, and the
// log lines and errors that all forms share.
#pragma once

#include <string>
#include <typeinfo>
#include <vector>

#include "zeq_api/json/byte_model.h"
#include "zeq_api/json/dom_model.h"
#include "zeq_api/json/shape.h"

/// The files that trace lines name, one for each area of the library.
namespace zeq::area {
inline constexpr const char* exchangeCommon = "mcad/src/zeq_api/zeq_api_exchange_common";
inline constexpr const char* exchangeObject = "mcad/src/zeq_api/zeq_api_exchange_object";
inline constexpr const char* exchangeStructure = "mcad/src/zeq_api/zeq_api_exchange_structure";
inline constexpr const char* command = "mcad/src/zeq_api/zeq_api_command";
inline constexpr const char* convexorInfo = "mcad/src/zeq_api/zeq_api_convexor_info";
inline constexpr const char* formatOptions = "mcad/src/zeq_api/format_options";
/// For the few classes that log no trace lines.
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
    /// Empty stands for "<Class> object should have a JSON object type."
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

/// A form with its types erased. Objects are passed by the address of the class's own subobject.
struct FormInfo {
    const std::type_info* type;
    const Head* head;
    Kind kind; // the JSON type of the form
    void (*read)(void* object, const ByteView& view);
    void (*write)(const void* object, ByteSink& sink);
    Shape (*shape)();
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
