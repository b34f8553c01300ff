// The exceptions of the shared-memory layer, which carry wide messages. Any thread may throw them.
#pragma once

#include <exception>
#include <string>

namespace mp {

/// An error with a wide message.
class Exception : public std::exception {
public:
    explicit Exception(const wchar_t* message);
    explicit Exception(const std::wstring& message);

    const std::wstring& message() const noexcept { return m_message; }

    /// The narrow text of the *first* exception of the process on which it was called, whatever the object;
    /// // sic code that needs the message of a particular exception reads message().
    const char* what() const noexcept override;

private:
    std::wstring m_message;
};

/// An error of a shared buffer.
class SharedMemoryException : public Exception {
public:
    using Exception::Exception;
};

} // namespace mp
