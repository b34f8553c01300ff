// The document in which exchange objects travel, one at a time. Objects are used by one thread at a time.
#pragma once

#include <memory>

#include "mp/serializable.h"
#include "zeq_api/exchange_object/exchange_object.h"

namespace zeq {

/// An exchange object together with the name of its kind: one line of JSON.
class ExchangeObjectWrapper : public mp::ISerializable {
public:
    /// Writes a binary object into a new shared buffer, which stays until somebody loads the object.
    /// @throws std::invalid_argument if no object is held
    /// @throws mp::SharedMemoryException if the buffer cannot be written
    /// @throws std::runtime_error if the document cannot be written; no buffer is left then
    void writeObject(mp::OutputStream& stream) const override;
    /// Replaces the object by a new one of the kind that the document names, and loads it unless that is
    /// delayed. Of an unknown kind there is no object, and that is no error.
    /// @throws std::invalid_argument if the stream is not one JSON object; the object held stays then
    /// @throws whatever the object's load() and readObject() throw; the new object is held then
    void readObject(mp::InputStream& stream) override;

    const std::shared_ptr<IExchangeObject>& get() const { return m_object; }
    void set(const std::shared_ptr<IExchangeObject>& object) { m_object = object; }

    /// Whether it is left to the caller to load() binary objects that are read.
    void setDelayedLoading(bool delayed) { m_delayedLoading = delayed; }

private:
    struct JsonForm;

    std::shared_ptr<IExchangeObject> m_object;
    bool m_delayedLoading = false;
};

} // namespace zeq
