// The exact geometry of one block on its way between the processes. Objects are used by one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "zeq_api/exchange_mechanical/shared_acis_buffer.h"
#include "zeq_api/exchange_object/exchange_object.h"

namespace zeq {

/// The entities of a block, saved in the kernel's binary format. The document holds no more than the block's
/// id and the name of the shared buffer with the image.
///
/// The writer keeps the object until the reader has loaded it, if own() is set. The reader loads the image,
/// and then restores the entities as often as it likes after goto_mark(0). Nothing here throws: what fails is
/// logged.
class ExcBlockGeometry : public IExchangeObject {
public:
    static const std::wstring& objName();

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& objectName() const override { return objName(); }
    std::shared_ptr<IExchangeObject> clone() const override;

    std::uint64_t blockId() const { return m_blockId; }
    void setBlockId(std::uint64_t id) { m_blockId = id; }

    /// Whether the shared buffer that is written, or was, is removed with this object.
    void own(bool own);

    /// Saves the entities into a new shared buffer. When that fails, no buffer is left.
    bool setGeometry(const ENTITY_LIST& entities, bool compress);
    /// Puts a saved image into a new shared buffer. When that fails, no buffer is left.
    bool setBinaryData(const char* data, std::size_t size, bool compress);
    /// Why the last of these calls could not write its buffer; empty if that was not what failed.
    const mp::String& bufferError() const { return m_bufferError; }

    /// Takes the image from the shared buffer that the document named, which is removed with this object.
    void load() override;
    bool isLoaded() const override { return m_loaded && m_buffer; }
    /// Restores the entities of the image into the list. They belong to the caller (see OwnedEntities).
    bool getGeometry(ENTITY_LIST& entities) const;

private:
    struct JsonForm;

    void makeBuffer();
    /// Makes the shared buffer hold the image that was saved; else says why not, and leaves none.
    bool publish(bool compress, const char* failed);

    mp::String m_name;
    bool m_loaded = false;
    bool m_own = false;
    std::uint64_t m_blockId = 0;
    std::shared_ptr<ExcSharedAcisBuffer> m_buffer;
    mp::String m_bufferError;
};

} // namespace zeq
