// An image in memory, and what a test does with one.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>

#include "platform/acis/acis.h"

namespace zeq::test {

class MemoryFile : public BinaryFile {
public:
    explicit MemoryFile(std::string content = {}) : bytes(std::move(content)) {}

    void write(const void* data, std::size_t length, int) override {
        bytes.append(static_cast<const char*>(data), length);
    }
    std::size_t read(void* data, std::size_t length, int) override {
        const std::size_t got = std::min(length, bytes.size() - position);
        std::memcpy(data, bytes.data() + position, got);
        position += got;
        return got;
    }
    FilePosition set_mark() override { return static_cast<FilePosition>(position); }
    void goto_mark(FilePosition mark) override { position = static_cast<std::size_t>(mark); }

    std::string bytes;
    std::size_t position = 0;
};

inline std::string message(const outcome& result) {
    return result.get_error_info() ? result.get_error_info()->error_message() : "";
}

/// The image with its date blotted out, or "error: " and what went wrong.
inline std::string saved(const ENTITY_LIST& entities) {
    FileInfo info;
    info.set_product_id("Test");
    info.set_units(1);
    api_set_file_info(FileIdent | FileUnits, info);
    MemoryFile file;
    const outcome result = api_save_entity_list_file(&file, entities);
    if (!result.ok()) return "error: " + message(result);
    const std::size_t kernel = file.bytes.find("ACIS 7.0 NT");
    file.bytes.replace(kernel + 13, 24, 24, '-');
    return file.bytes;
}

} // namespace zeq::test
