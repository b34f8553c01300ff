// The interface of everything that the two processes send each other as data. Objects are used by one thread
// at a time.
#pragma once

#include <memory>
#include <string>

#include "zeq_api/json/json_object.h"

namespace zeq {

/// A document that travels in an ExchangeObjectWrapper, which tells the receiver its kind.
///
/// A binary object does not stand in the text of the wrapper: the text names a shared buffer, and load()
/// takes the object from there.
class IExchangeObject : public IJsonObject {
public:
    /// The name of this kind of object.
    virtual const std::wstring& objectName() const = 0;
    /// A new object of the same class, with its defaults.
    virtual std::shared_ptr<IExchangeObject> clone() const = 0;
    /// Whether objects of this class travel in a shared buffer.
    virtual bool binary() const { return false; }
    /// Whether the content of that buffer is compressed.
    virtual bool compress() const { return false; }
    /// Whether load() has succeeded.
    virtual bool isLoaded() const { return m_loaded; }
    /// Reads a binary object from the buffer that source() names, and removes the buffer, whatever happens.
    /// Does nothing for an object that is loaded already, has no source or is not binary.
    /// @throws mp::SharedMemoryException if the buffer cannot be read
    /// @throws std::runtime_error, std::length_error or std::invalid_argument if its content is damaged; the
    ///         object is not loaded then
    virtual void load();

    /// The name of the shared buffer; empty for an object that was read from text.
    const std::wstring& source() const { return m_source; }
    void setSource(const std::wstring& source) { m_source = source; }

    /// A new random UUID, 36 characters in lower case.
    static std::wstring generateUUID();

protected:
    /// For another way of loading than load().
    void setLoaded() { m_loaded = true; }

private:
    std::wstring m_source;
    bool m_loaded = false;
};

} // namespace zeq
