// The wrapper document, and the way of binary objects into shared buffers.
#include "zeq_api/exchange_object/exchange_object_wrapper.h"

#include <stdexcept>
#include <string>
#include <utility>

#include "mp/shared_buffer.h"
#include "mv_cvx/logger.h"
#include "zeq_api/codec/gzip_output.h"
#include "zeq_api/codec/gzip_stream.h"
#include "zeq_api/exchange_object/area.h"
#include "zeq_api/exchange_object/exchange_object_registry.h"
#include "zeq_api/json/form.h"
#include "zeq_api/json/text_io.h"

namespace zeq {

namespace {

constexpr const wchar_t* nameKey = L"exchange_object_name";
constexpr const wchar_t* binaryKey = L"binary";
constexpr const wchar_t* dataKey = L"exchange_object_data";

/// Makes a new shared buffer the binary form of the object, and returns its name.
std::wstring publish(const IExchangeObject& object) {
    std::wstring name = IExchangeObject::generateUUID();
    try {
        mp::SharedBuffer<char> buffer(name, false);
        const json::ByteStore store = [&buffer](const char* bytes, std::size_t size, std::uint64_t at) {
            buffer.write(bytes, size, at);
        };
        const auto writeTo = [&object](json::BlockOutput&& output) {
            json::ByteSink sink(output);
            json::writeNested(object, sink);
            sink.finish();
        };
        if (object.compress()) {
            writeTo(detail::GzipOutput(store));
            detail::traceCompression();
        } else {
            writeTo(json::PlainOutput(store));
        }
    } catch (...) { // nobody was told the name
        mp::removeObject(name);
        throw;
    }
    return name;
}

} // namespace

struct ExchangeObjectWrapper::JsonForm {
    using This = ExchangeObjectWrapper;

    /// The kind of object; reading makes a new one.
    struct Name {
        using Owner = This;
        std::wstring_view key;

        template <class Members>
        void read(This& wrapper, Members& members) const {
            wrapper.m_object.reset();
            std::wstring name;
            if (const auto value = members.find(key); value && value->take(name))
                wrapper.m_object = ExchangeObjectRegistry::instance().get(name);
        }
        template <class Sink>
        void write(const This& wrapper, Sink& sink) const {
            sink.member(key, [&](auto&& to) { to.value(std::wstring_view(wrapper.m_object->objectName())); });
        }
        json::MemberShape describe() const {
            return {
                key, {json::StringShape{{}, ExchangeObjectRegistry::instance().names()}}, true, true, true};
        }
    };

    /// That the data is the name of a shared buffer; written only then, and read with the data.
    struct Mark {
        using Owner = This;
        std::wstring_view key;

        template <class Members>
        void read(This&, Members&) const {}
        template <class Sink>
        void write(const This& wrapper, Sink& sink) const {
            if (wrapper.m_object->binary()) sink.member(key, [](auto&& to) { to.value(true); });
        }
        json::MemberShape describe() const { return {key, json::Codec<bool>::shape(), false}; }
    };

    /// The object itself, or the name of its shared buffer.
    struct Data {
        using Owner = This;
        std::wstring_view key;

        template <class Members>
        void read(This& wrapper, Members& members) const {
            if (!wrapper.m_object) return;
            bool binary = false;
            if (const auto mark = members.find(binaryKey)) mark->take(binary);
            const auto data = members.find(key);
            if (binary) {
                std::wstring source;
                if (!data || !data->take(source)) {
                    ZEQ_LOG(Error)
                        << "ExchangeObjectWrapper JSON object should have UUID in Exchange Object Data field "
                           "(if binary).";
                    return;
                }
                wrapper.m_object->setSource(source);
                if (!wrapper.m_delayedLoading) wrapper.m_object->load();
            } else if (data) {
                json::readNested(*wrapper.m_object, *data);
            } else {
                ZEQ_LOG(Error) << "ExchangeObjectWrapper JSON object has no Exchange Object data.";
            }
        }
        template <class Sink>
        void write(const This& wrapper, Sink& sink) const {
            sink.member(key, [&](auto&& to) {
                if (wrapper.m_object->binary())
                    to.value(std::wstring_view(publish(*wrapper.m_object)));
                else
                    json::writeNested(*wrapper.m_object, to);
            });
        }
        json::MemberShape describe() const {
            json::ChoiceShape choice{json::ChoiceShape::Asked::siblings, {}};
            const ExchangeObjectRegistry& registry = ExchangeObjectRegistry::instance();
            for (const std::wstring& name : registry.names()) {
                const auto made = registry.get(name);
                const IExchangeObject& object = *made;
                const json::Condition isKind{nameKey, name, {}};
                const std::type_info& type = typeid(object);
                choice.alternatives.push_back({{isKind, {binaryKey, true, {}}}, {json::BufferShape{&type}}});
                choice.alternatives.push_back({{isKind}, {json::ClassShape{&type}}});
            }
            return {key, {std::move(choice)}, true, true, true};
        }
    };

    static constexpr json::Form form{
        json::Head{"ExchangeObjectWrapper",
                   area::untraced, // the stream's functions have their own trace lines
                   json::throwsInvalid("ExchangeObjectWrapper::readObject: invalid json document")},
        Name{nameKey},
        Mark{binaryKey},
        Data{dataKey},
    };
};

void ExchangeObjectWrapper::writeObject(mp::OutputStream& stream) const {
    json::trace(area::exchangeObject,
                "virtual void zeq::ExchangeObjectWrapper::writeObject(mp::OutputStream &) const");
    if (!m_object) throw std::invalid_argument("ExchangeObjectWrapper::writeObject > m_pObject == nullptr");
    JsonDocument document;
    json::write<JsonForm>(*this, document, document.GetAllocator());
    try {
        JsonTextIO::write(stream, document, 0);
    } catch (...) { // nobody was told the name
        if (m_object->binary()) mp::removeObject(findString(document, dataKey)->GetString());
        throw;
    }
}

void ExchangeObjectWrapper::readObject(mp::InputStream& stream) {
    json::trace(area::exchangeObject,
                "virtual void zeq::ExchangeObjectWrapper::readObject(mp::InputStream &)");
    JsonDocument document;
    JsonTextIO::read(stream, document); // what is no document counts as null, which no form takes
    json::read<JsonForm>(*this, document);
}

} // namespace zeq
