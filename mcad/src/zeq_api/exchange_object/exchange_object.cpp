// Loading from shared buffers, and the names of new ones.
#include "zeq_api/exchange_object/exchange_object.h"

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

#include "mp/shared_buffer.h"
#include "zeq_api/codec/compressor.h"
#include "zeq_api/exchange_object/area.h"
#include "zeq_api/exchange_object/buffer_content.h"
#include "zeq_api/json/codecs.h"

namespace zeq {

std::vector<char> detail::takeBuffer(const std::wstring& name) {
    const mp::SharedBuffer<char> buffer(name, true);
    std::vector<char> bytes;
    buffer.get(bytes);
    Compressor::makePlain(bytes);
    return bytes;
}

void IExchangeObject::load() {
    json::trace(area::exchangeObject, "virtual void zeq::IExchangeObject::load()");
    if (m_loaded || m_source.empty() || !binary()) return;
    detail::takeContent(m_source, [this](const auto& view) { json::readNested(*this, view); });
    m_loaded = true;
}

std::wstring IExchangeObject::generateUUID() { return to_wstring(boost::uuids::random_generator()()); }

} // namespace zeq
