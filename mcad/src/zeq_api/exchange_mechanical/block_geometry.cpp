// The form of block geometry, and the calls of the kernel that save and restore it.
#include "zeq_api/exchange_mechanical/block_geometry.h"

#include <exception>
#include <string>

#include "mp/exception.h"
#include "mv_cvx/logger.h"
#include "zeq_api/exchange_common/area.h"
#include "zeq_api/exchange_object/exchange_object_registry.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

StaticExchangeObject<ExcBlockGeometry> prototype;

/// The text of the exception that is being handled.
std::string currentReason() {
    try {
        throw;
    } catch (const mp::Exception& error) {
        return mp::toUtf8String(error.message());
    } catch (const std::exception& error) {
        return error.what();
    }
}

/// What the kernel says of a failure; empty when it says nothing.
std::string reasonOf(const outcome& result) {
    const error_info* info = result.get_error_info();
    return info && info->error_message() ? info->error_message() : "";
}

} // namespace

struct ExcBlockGeometry::JsonForm {
    using This = ExcBlockGeometry;

    struct BlockId : json::Field<This, std::uint64_t, decltype(json::always)> {
        template <class Members>
        void read(This& geometry, Members& members) const {
            if (!Field::read(geometry, members)) {
                ZEQ_LOG(Error) << "ExcBlockGeometry: Failed to read block Id from JSON object.";
            }
        }
    };

    /// The name of the buffer: that which is held is written, that which is read is for load().
    struct BufferName {
        using Owner = This;
        std::wstring_view key;

        template <class Members>
        void read(This& geometry, Members& members) const {
            const auto value = members.find(key);
            if (value && value->take(geometry.m_name))
                geometry.m_loaded = false;
            else
                ZEQ_LOG(Error) << "ExcBlockGeometry: Failed to read shared memory buffer name.";
        }
        template <class Sink>
        void write(const This& geometry, Sink& sink) const {
            if (!geometry.m_buffer) {
                ZEQ_LOG(Error) << "ExcBlockGeometry: ACIS buffer was not initialized in shared memory.";
            }
            sink.member(key, [&](auto&& to) {
                if (geometry.m_buffer)
                    to.value(std::wstring_view(geometry.m_buffer->name()));
                else
                    to.null();
            });
        }
        json::MemberShape describe() const { return {key, {json::StringShape{}, true}}; }
    };

    static constexpr json::Form form{
        json::Head{"ExcBlockGeometry", area::exchangeCommon},
        BlockId{{L"block_id", &This::m_blockId, json::always}},
        BufferName{L"shared_acis_buffer_name"},
    };
};

ZEQ_JSON_OBJECT(ExcBlockGeometry)

const std::wstring& ExcBlockGeometry::objName() {
    static const std::wstring name = L"exc_block_geometry";
    return name;
}

std::shared_ptr<IExchangeObject> ExcBlockGeometry::clone() const {
    return std::make_shared<ExcBlockGeometry>();
}

void ExcBlockGeometry::own(bool own) {
    m_own = own;
    if (m_buffer) m_buffer->setRemoveOnDestroy(own);
}

void ExcBlockGeometry::makeBuffer() {
    m_bufferError.clear();
    m_buffer = std::make_shared<ExcSharedAcisBuffer>(generateUUID(), m_own);
}

bool ExcBlockGeometry::publish(bool compress, const char* failed) {
    try {
        m_buffer->flush(compress);
        return true;
    } catch (...) {
        const std::string reason = currentReason();
        ZEQ_LOG(Error) << failed << reason;
        m_bufferError = mp::toWideString(reason);
        mp::removeObject(m_buffer->name()); // it exists, and is not filled
        return false;
    }
}

bool ExcBlockGeometry::setGeometry(const ENTITY_LIST& entities, bool compress) {
    json::trace(area::exchangeCommon, "bool zeq::ExcBlockGeometry::setGeometry(const ENTITY_LIST &, bool)");
    constexpr const char* failed = "Failed to write geometry into shared ACIS buffer: ";
    makeBuffer();
    const outcome result = api_block([&] {
        FileInfo info;
        info.set_product_id("Morvanta Convexor");
        info.set_units(1.0);
        const outcome installed = api_set_file_info(FileIdent | FileUnits, info);
        return installed.ok() ? api_save_entity_list_file(m_buffer.get(), entities) : installed;
    });
    if (!result.ok()) {
        ZEQ_LOG(Error) << failed << reasonOf(result);
        return false;
    }
    return publish(compress, failed);
}

bool ExcBlockGeometry::setBinaryData(const char* data, std::size_t size, bool compress) {
    json::trace(area::exchangeCommon,
                "bool zeq::ExcBlockGeometry::setBinaryData(const char *, std::size_t, bool)");
    constexpr const char* failed = "Work with shared ACIS buffer failed with message: ";
    try {
        makeBuffer();
        m_buffer->write(data, size, 0);
    } catch (...) {
        ZEQ_LOG(Error) << failed << currentReason();
        return false;
    }
    return publish(compress, failed);
}

void ExcBlockGeometry::load() {
    json::trace(area::exchangeCommon, "virtual void zeq::ExcBlockGeometry::load()");
    if (m_buffer) return;
    try {
        m_buffer = std::make_shared<ExcSharedAcisBuffer>(m_name, true);
        m_buffer->load();
        m_loaded = true;
    } catch (...) {
        ZEQ_LOG(Error) << "Failed to load ACIS buffer: " << currentReason();
        m_loaded = false;
    }
}

bool ExcBlockGeometry::getGeometry(ENTITY_LIST& entities) const {
    json::trace(area::exchangeCommon, "bool zeq::ExcBlockGeometry::getGeometry(ENTITY_LIST &) const");
    constexpr const char* failed = "Failed to get geometry from shared memory buffer: ";
    if (!m_buffer) {
        ZEQ_LOG(Error) << failed << "Invalid buffer object.";
        return false;
    }
    const outcome result = api_block([&] { return api_restore_entity_list_file(m_buffer.get(), entities); });
    if (!result.ok()) {
        ZEQ_LOG(Error) << failed << reasonOf(result);
    }
    return result.ok();
}

} // namespace zeq
