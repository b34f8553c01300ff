// The message of an exception, wide and narrow.
#include "mp/exception.h"

#include "mp/string.h"

namespace mp {

Exception::Exception(const wchar_t* message) : m_message(message) {}
Exception::Exception(const std::wstring& message) : m_message(message) {}

const char* Exception::what() const noexcept {
    try {
        static const std::string first = toUtf8String(m_message); // sic: one text a process
        return first.c_str();
    } catch (const std::exception&) {
        return "mp::Exception";
    }
}

} // namespace mp
