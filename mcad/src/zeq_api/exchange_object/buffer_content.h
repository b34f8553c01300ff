// What the shared buffers of binary objects hold. Internal.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "mp/shared_buffer.h"
#include "zeq_api/codec/binary_json.h"
#include "zeq_api/codec/gzip_stream.h"
#include "zeq_api/exchange_object/exchange_object.h"
#include "zeq_api/json/byte_model.h"
#include "zeq_api/json/dom_model.h"

namespace zeq::detail {

/// The content of a shared buffer through a window.
class StreamedContent {
public:
    explicit StreamedContent(const mp::SharedBuffer<char>& buffer);
    /// Calls `read(view)` with the whole content, any number of times.
    /// @throws json::NotInOnePass if the content, or the compressed data behind it, are damaged
    template <class Read>
    void pass(Read&& read) {
        open();
        const json::ByteView::Visited value(*m_source);
        read(value.view);
        value.leave();
        close();
    }

private:
    void open();
    void close();

    const mp::SharedBuffer<char>& m_buffer;
    unsigned long m_size;
    bool m_isCompressed;
    std::unique_ptr<GzipDecoder> m_decoder;
    std::unique_ptr<json::ByteSource> m_source;
};

/// The content of a shared buffer as a document.
class DocumentContent {
public:
    /// @throws std::runtime_error, std::length_error or std::invalid_argument for damaged content
    explicit DocumentContent(const mp::SharedBuffer<char>& buffer);
    template <class Read>
    void pass(Read&& read) const {
        read(json::DomView(m_document));
    }

private:
    JsonDocument m_document;
};

/// Whether `read(content)` could be done in one pass through the content. If not, it has left nothing behind, in the
/// object nor in the log.
bool readInOnePass(const mp::SharedBuffer<char>& buffer, IExchangeObject& object,
                   const std::function<void(StreamedContent&)>& read);

/// Calls `read(content)`, which reads the object, with the content of a shared buffer. The buffer is removed, whatever
/// happens; content that cannot be decoded leaves the object as it is.
/// @throws mp::SharedMemoryException, std::runtime_error, std::length_error or std::invalid_argument
template <class Read>
void takeContent(const std::wstring& bufferName, IExchangeObject& object, Read&& read) {
    const mp::SharedBuffer<char> buffer(bufferName, true);
    if (readInOnePass(buffer, object, read)) return;
    DocumentContent content(buffer);
    read(content);
}

} // namespace zeq::detail
