// Loading from shared buffers, and the names of new ones.
#include "zeq_api/exchange_object/exchange_object.h"

#include <vector>

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

#include "mp/shared_buffer.h"
#include "zeq_api/codec/binary_json.h"
#include "zeq_api/codec/compressor.h"
#include "zeq_api/exchange_object/area.h"
#include "zeq_api/json/codecs.h"

namespace zeq {

namespace {

std::vector<char> takeBuffer(const std::wstring& name) {
    const mp::SharedBuffer<char> buffer(name, true);
    std::vector<char> bytes;
    buffer.get(bytes);
    Compressor::makePlain(bytes);
    return bytes;
}

} // namespace

void IExchangeObject::load() {
    json::trace(area::exchangeObject, "virtual void zeq::IExchangeObject::load()");
    if (m_loaded || m_source.empty() || !binary()) return;
    const std::vector<char> bytes = takeBuffer(m_source);
    if (json::ByteView::isExact(bytes.data(), bytes.size())) {
        json::readNested(*this, json::ByteView(bytes.data()));
    } else {
        JsonDocument document;
        JsonBinaryIO::decode(bytes.data(), bytes.size(), document, document.GetAllocator());
        readObject(document);
    }
    m_loaded = true;
}

std::wstring IExchangeObject::generateUUID() { return to_wstring(boost::uuids::random_generator()()); }

} // namespace zeq
