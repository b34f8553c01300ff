// The output that only passes bytes on.
#include "zeq_api/json/block_output.h"

namespace zeq::json {

void PlainOutput::finish(Block& block) {
    const auto size = static_cast<std::size_t>(block.next - block.begin);
    m_store(block.begin, size, m_size);
    m_size += size;
}

void PlainOutput::pass(Block& block) {
    if (block.begin) finish(block);
    block = {m_bytes.get(), m_bytes.get(), m_bytes.get() + blockSize, m_marks.get(), m_marks.get()};
}

void PlainOutput::setLength(std::uint64_t at, std::uint64_t length) {
    m_store(reinterpret_cast<const char*>(&length), sizeof length, at);
}

} // namespace zeq::json
