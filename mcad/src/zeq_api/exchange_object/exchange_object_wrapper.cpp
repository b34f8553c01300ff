// The wrapper document, and the way of binary objects into shared buffers.
#include "zeq_api/exchange_object/exchange_object_wrapper.h"

#include <stdexcept>
#include <string>

#include "mp/shared_buffer.h"
#include "mv_cvx/logger.h"
#include "zeq_api/codec/compressor.h"
#include "zeq_api/exchange_object/exchange_object_registry.h"
#include "zeq_api/json/codecs.h"
#include "zeq_api/json/text_io.h"

namespace zeq {

namespace {

constexpr const wchar_t* nameKey = L"exchange_object_name";
constexpr const wchar_t* binaryKey = L"binary";
constexpr const wchar_t* dataKey = L"exchange_object_data";

JsonValue text(const std::wstring& value, JsonAllocator& alloc) {
    return JsonValue(value.data(), static_cast<rapidjson::SizeType>(value.size()), alloc);
}

/// Makes the shared buffer `name` the binary form of the object.
void publish(const IExchangeObject& object, const std::wstring& name) {
    std::string bytes;
    json::ByteSink sink(bytes);
    json::writeNested(object, sink);
    if (object.compress()) {
        std::string compressed;
        Compressor::compress(compressed, bytes.data(), bytes.size(), -1);
        bytes.swap(compressed);
    }
    mp::SharedBuffer<char>(name, false).setBuffer(bytes.data(), bytes.size());
}

} // namespace

void ExchangeObjectWrapper::writeObject(mp::OutputStream& stream) const {
    json::trace(area::exchangeObject,
                "virtual void zeq::ExchangeObjectWrapper::writeObject(mp::OutputStream &) const");
    if (!m_object) throw std::invalid_argument("ExchangeObjectWrapper::writeObject > m_pObject == nullptr");
    JsonDocument document(rapidjson::kObjectType);
    JsonAllocator& alloc = document.GetAllocator();
    document.AddMember(rapidjson::StringRef(nameKey), text(m_object->objectName(), alloc), alloc);
    if (!m_object->binary()) {
        JsonValue data;
        m_object->writeObject(data, alloc);
        document.AddMember(rapidjson::StringRef(dataKey), data, alloc);
        return JsonTextIO::write(stream, document, 0);
    }
    const std::wstring name = IExchangeObject::generateUUID();
    document.AddMember(rapidjson::StringRef(binaryKey), true, alloc);
    document.AddMember(rapidjson::StringRef(dataKey), text(name, alloc), alloc);
    try {
        publish(*m_object, name);
        JsonTextIO::write(stream, document, 0);
    } catch (...) { // nobody was told the name
        mp::removeObject(name);
        throw;
    }
}

void ExchangeObjectWrapper::readObject(mp::InputStream& stream) {
    json::trace(area::exchangeObject,
                "virtual void zeq::ExchangeObjectWrapper::readObject(mp::InputStream &)");
    JsonDocument document;
    if (!JsonTextIO::read(stream, document) || !document.IsObject())
        throw std::invalid_argument("ExchangeObjectWrapper::readObject: invalid json document");
    m_object.reset();
    auto members = json::DomView(document).members();
    std::wstring name;
    if (const auto member = members.find(nameKey); member && member->take(name))
        m_object = ExchangeObjectRegistry::instance().get(name);
    if (!m_object) return;

    bool binary = false;
    if (const auto member = members.find(binaryKey)) member->take(binary);
    const auto data = members.find(dataKey);
    if (binary) {
        std::wstring source;
        if (!data || !data->take(source)) {
            ZEQ_LOG(Error)
                << "ExchangeObjectWrapper JSON object should have UUID in Exchange Object Data field "
                   "(if binary).";
            return;
        }
        m_object->setSource(source);
        if (!m_delayedLoading) m_object->load();
    } else if (data) {
        m_object->readObject(data->value());
    } else {
        ZEQ_LOG(Error) << "ExchangeObjectWrapper JSON object has no Exchange Object data.";
    }
}

} // namespace zeq
