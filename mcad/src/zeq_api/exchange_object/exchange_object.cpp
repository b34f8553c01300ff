// Loading from shared buffers, and the names of new ones.
#include "zeq_api/exchange_object/exchange_object.h"

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

#include "mv_cvx/held_log.h"
#include "zeq_api/codec/compressor.h"
#include "zeq_api/exchange_object/area.h"
#include "zeq_api/exchange_object/buffer_content.h"
#include "zeq_api/json/codecs.h"

namespace zeq {

namespace detail {

StreamedContent::StreamedContent(const mp::SharedBuffer<char>& buffer)
    : m_buffer(buffer), m_size(buffer.size()) {
    char head[3];
    m_isCompressed = Compressor::isCompressed(head, m_buffer.read(head, sizeof head, 0));
    if (m_isCompressed) traceDecompression();
}

static_assert(json::ByteSource::historySize >= GzipDecoder::historySize);

void StreamedContent::open() {
    constexpr std::size_t windowSize = 1 << 20;
    constexpr std::uint64_t largestRatio = 1032; // that deflate can reach
    const auto fromBuffer = [this, at = 0UL](char* out, std::size_t size) mutable {
        const unsigned long count = m_buffer.read(out, size, at);
        at += count;
        return count;
    };
    if (m_isCompressed) {
        m_decoder = newFastDecoder(fromBuffer);
        m_source = std::make_unique<json::ByteSource>(
            [this](char* out, std::size_t size) { return m_decoder->read(out, size); }, m_size * largestRatio,
            windowSize);
    } else {
        m_source = std::make_unique<json::ByteSource>(fromBuffer, m_size, windowSize);
    }
}

void StreamedContent::close() {
    m_source->drain();
    if (m_decoder && !m_decoder->isWhole()) throw json::NotInOnePass{};
}

DocumentContent::DocumentContent(const mp::SharedBuffer<char>& buffer) {
    std::vector<char> bytes;
    buffer.get(bytes);
    Compressor::makePlain(bytes);
    JsonBinaryIO::decode(bytes.data(), bytes.size(), m_document, m_document.GetAllocator());
}

bool readInOnePass(const mp::SharedBuffer<char>& buffer, IExchangeObject& object,
                   const std::function<void(StreamedContent&)>& read) {
    const json::FormInfo* const form = json::findForm(typeid(object));
    if (!form || !form->keep) return false; // a class of the library's user
    const std::function<void()> restore = form->keep(dynamic_cast<void*>(&object));
    mv_cvx::HeldLog log;
    try {
        StreamedContent content(buffer);
        read(content);
        log.release();
        return true;
    } catch (...) { // whatever it was, it comes again on the other way, which says it in the right words
        restore();
        return false;
    }
}

} // namespace detail

void IExchangeObject::load() {
    json::trace(area::exchangeObject, "virtual void zeq::IExchangeObject::load()");
    if (m_loaded || m_source.empty() || !binary()) return;
    detail::takeContent(m_source, *this, [this](auto& content) {
        content.pass([this](const auto& view) { json::readNested(*this, view); });
    });
    m_loaded = true;
}

std::wstring IExchangeObject::generateUUID() { return to_wstring(boost::uuids::random_generator()()); }

} // namespace zeq
