// Ways of an object into a shared buffer and out of it again.
#pragma once

#include <memory>
#include <string>

#include "zeq_api/exchange_object/exchange_object.h"

namespace zeq::bench {

/// One way; what an object becomes in between is the way's own matter.
class Pipeline {
public:
    virtual ~Pipeline() = default;
    virtual const char* name() const = 0;
    /// Puts the object into a new shared buffer and returns what read() wants to know.
    virtual std::wstring write(const IExchangeObject& object) = 0;
    /// Takes a new object of the kind of `like` from the buffer, which is removed.
    virtual std::shared_ptr<IExchangeObject> read(const std::wstring& written,
                                                  const IExchangeObject& like) = 0;
};

/// The binary image of this one object, copied into the buffer and out of it: nothing is made of it.
std::unique_ptr<Pipeline> copying(const IExchangeObject& object);
/// What one writes first: a wide document model, written through a stream value by value, deflated by zlib at its
/// default level; and the same way back.
std::unique_ptr<Pipeline> straightforward();
/// The library's own.
std::unique_ptr<Pipeline> library();

/// The bytes of the binary form, before compression.
std::size_t imageSize(const IExchangeObject& object);

} // namespace zeq::bench
