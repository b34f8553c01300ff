// The stream in memory, and its way into shared memory and back.
#include "zeq_api/exchange_mechanical/shared_acis_buffer.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "zeq_api/codec/compressor.h"
#include "zeq_api/exchange_common/area.h"
#include "zeq_api/json/form_registry.h"

namespace zeq {

ExcSharedAcisBuffer::~ExcSharedAcisBuffer() {
    if (m_removeOnDestroy) mp::removeObject(m_name);
}

void ExcSharedAcisBuffer::init(const mp::String& name, bool removeOnDestroy) {
    m_name = name;
    m_removeOnDestroy = removeOnDestroy;
}

void ExcSharedAcisBuffer::write(const void* data, std::size_t size, int) {
    if (m_failed) {
        m_position = -1;
        return;
    }
    const auto* const bytes = static_cast<const char*>(data);
    const std::size_t over = std::min(size, m_content.size() - m_writeAt);
    std::copy_n(bytes, over, m_content.begin() + static_cast<std::ptrdiff_t>(m_writeAt));
    m_content.insert(m_content.end(), bytes + over, bytes + size);
    m_writeAt += size;
    m_position = static_cast<long long>(m_writeAt);
}

std::size_t ExcSharedAcisBuffer::read(void* data, std::size_t size, int) {
    const std::size_t count = m_failed ? 0 : std::min(size, m_content.size() - m_readAt);
    if (count > 0) std::memcpy(data, m_content.data() + m_readAt, count);
    m_readAt += count;
    m_position = m_failed ? -1 : static_cast<long long>(m_readAt);
    return count;
}

void ExcSharedAcisBuffer::goto_mark(long long mark) {
    m_failed = m_failed || mark < 0 || static_cast<unsigned long long>(mark) > m_content.size();
    if (!m_failed) m_readAt = m_writeAt = static_cast<std::size_t>(mark);
    m_position = mark;
}

void ExcSharedAcisBuffer::flush(bool compress) {
    json::trace(area::exchangeCommon, "void zeq::ExcSharedAcisBuffer::flush(bool)");
    m_sharedBuffer = std::make_unique<mp::SharedBuffer<char>>(m_name, false);
    if (m_content.empty()) {
        m_sharedBuffer->setSize(0);
        return;
    }
    if (compress) {
        std::vector<char> compressed;
        Compressor::compress(compressed, m_content.data(), m_content.size(), -1);
        m_sharedBuffer->setBuffer(compressed.data(), compressed.size());
    } else {
        m_sharedBuffer->setBuffer(m_content.data(), m_content.size());
    }
    m_sharedBuffer.reset();
}

void ExcSharedAcisBuffer::load() {
    json::trace(area::exchangeCommon, "void zeq::ExcSharedAcisBuffer::load()");
    m_sharedBuffer = std::make_unique<mp::SharedBuffer<char>>(m_name, false);
    cleanUp();
    m_readAt = m_writeAt = 0; // also where the content ends, should it be damaged
    m_sharedBuffer->get(m_content);
    m_sharedBuffer.reset();
    Compressor::makePlain(m_content);
}

void ExcSharedAcisBuffer::cleanUp() {
    m_failed = false;
    m_position = 0;
}

} // namespace zeq
