// The file that a command names, compressed or not.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string_view>

#include "transport/descriptor.h"

namespace zeq::convexor {

/// A file that cannot be imported, with a reason for the user in UTF-8.
class ImportError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// @throws ImportError "Cannot read '<path>': <reason>"
[[noreturn]] void cannotRead(const std::filesystem::path& path, const std::string& reason);

/// Gives the kernel, which opens files by their names and reads no compressed ones, a name under which it
/// finds the plain content. What is unpacked stays in memory, so that a crash leaves no file behind.
class InputFile {
public:
    /// @throws ImportError for what the kernel would answer with a crash or a wrong reason, and for damaged
    ///         compression
    explicit InputFile(const std::filesystem::path& path);
    /// The file that the host knows by that path, with another content.
    InputFile(const std::filesystem::path& path, std::string_view content);

    /// As the host knows it.
    const std::filesystem::path& path() const { return m_path; }
    /// Where its plain content is, as long as this object lives.
    const std::filesystem::path& plainPath() const { return m_plainPath; }

private:
    void unpack();
    /// Makes a nameless file of the memory for its content.
    void openMemory();
    void require(bool done) const;
    void write(std::string_view portion);

    std::filesystem::path m_path;
    std::filesystem::path m_plainPath;
    transport::Descriptor m_unpacked;
};

} // namespace zeq::convexor
