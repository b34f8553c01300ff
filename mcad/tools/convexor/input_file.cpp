// Looks at a file before the kernel does, and unpacks it into a nameless file of the memory.
#include "convexor/input_file.h"

#include <array>
#include <cerrno>
#include <fstream>
#include <memory>
#include <string_view>
#include <system_error>

#include <sys/mman.h>
#include <unistd.h>
#include <zlib.h>

namespace zeq::convexor {

namespace {

constexpr std::uintmax_t mostBytes = std::uintmax_t{8} << 30;

void requireReadable(const std::filesystem::path& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found) cannotRead(path, "there is no such file");
    if (error) cannotRead(path, error.message());
    if (!std::filesystem::is_regular_file(status)) cannotRead(path, "it is not a regular file");
    if (::access(path.c_str(), R_OK) != 0) cannotRead(path, std::generic_category().message(errno));
    if (std::filesystem::is_empty(path, error)) cannotRead(path, "the file is empty");
}

bool isGzip(const std::filesystem::path& path) {
    std::array<char, 2> magic{};
    std::ifstream(path, std::ios::binary).read(magic.data(), magic.size());
    return std::string_view(magic.data(), magic.size()) == "\x1F\x8B";
}

} // namespace

void cannotRead(const std::filesystem::path& path, const std::string& reason) {
    throw ImportError("Cannot read '" + path.string() + "': " + reason);
}

InputFile::InputFile(const std::filesystem::path& path) : m_path(path), m_plainPath(path) {
    requireReadable(path);
    if (isGzip(path)) unpack();
}

InputFile::InputFile(const std::filesystem::path& path, std::string_view content) : m_path(path) {
    openMemory();
    write(content);
}

void InputFile::require(bool done) const {
    if (!done) cannotRead(m_path, std::generic_category().message(errno));
}

void InputFile::openMemory() {
    m_unpacked = transport::Descriptor(::memfd_create("unpacked", MFD_CLOEXEC));
    require(m_unpacked.isOpen());
    m_plainPath = "/proc/self/fd/" + std::to_string(m_unpacked.get());
}

void InputFile::write(std::string_view portion) {
    while (!portion.empty()) {
        const ssize_t count = ::write(m_unpacked.get(), portion.data(), portion.size());
        require(count > 0);
        portion.remove_prefix(static_cast<std::size_t>(count));
    }
}

void InputFile::unpack() {
    const std::unique_ptr<gzFile_s, int (*)(gzFile)> packed(::gzopen(m_path.c_str(), "rb"), ::gzclose);
    require(packed != nullptr);
    openMemory();
    std::array<char, 64 * 1024> portion;
    std::uintmax_t total = 0;
    for (;;) {
        const int count = ::gzread(packed.get(), portion.data(), portion.size());
        int state = Z_OK;
        const std::string problem = ::gzerror(packed.get(), &state); // begins with the name of the file
        if (state != Z_OK && state != Z_STREAM_END)
            cannotRead(m_path, "its compression is damaged:" + problem.substr(problem.rfind(':') + 1));
        if (count == 0) break;
        total += static_cast<std::uintmax_t>(count);
        if (total > mostBytes) cannotRead(m_path, "it unpacks to more than 8 GiB");
        write({portion.data(), static_cast<std::size_t>(count)});
    }
}

} // namespace zeq::convexor
