// The interface of the documents that travel as a whole stream of wide characters. Objects are used by one
// thread at a time.
#pragma once

#include <istream>
#include <ostream>

namespace mp {

using OutputStream = std::wostream;
using InputStream = std::wistream;

/// A document that writes itself to a stream and reads itself from one.
class ISerializable {
public:
    virtual ~ISerializable() = default;
    virtual void writeObject(OutputStream& stream) const = 0;
    virtual void readObject(InputStream& stream) = 0;
};

} // namespace mp
