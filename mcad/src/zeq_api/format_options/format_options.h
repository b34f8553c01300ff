// The base of all option groups, which a command carries beside its file name. Objects are used by one thread
// at a time.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "zeq_api/format_options/format_type.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// A group of settings for one file format or for one area common to all formats.
///
/// Every setting is always written. A setting that is missing or of the wrong type when read keeps its value.
class IFormatOptions : public IJsonObject {
public:
    /// Makes the group that `object` names by its operation and format type, and reads it.
    /// @return null, with a log line, if the object names no known group
    static std::shared_ptr<IFormatOptions> readOptions(const JsonValue& object);
    /// The group for that operation and format, with its defaults; null when there is none.
    static std::shared_ptr<IFormatOptions> make(EOperationType operation, EFormatType format);
    /// The operations and formats for which there are groups.
    static std::vector<std::pair<EOperationType, EFormatType>> kinds();

    /// Checks that the object is meant for this group; a mismatch is logged, no more.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    virtual EFormatType formatType() const = 0;
    virtual EOperationType operationType() const { return EOperationType::options; }

private:
    struct JsonForm;
};

namespace imp {

/// A group of settings for importing one file format.
class FormatOptions : public IFormatOptions {
public:
    EOperationType operationType() const override { return EOperationType::import; }
};

} // namespace imp

namespace exp {

/// A group of settings for exporting to one file format.
class FormatOptions : public IFormatOptions {
public:
    EOperationType operationType() const override { return EOperationType::export_; }
};

} // namespace exp

} // namespace zeq
