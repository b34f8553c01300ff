// Runs case files: what becomes of documents that are read and written back.
//
// A case file stands in mcad/test/data/cases and is ASCII, one case a line, each a JSON object:
//   "case"       what it claims
//   "class"      the class of the object, by the name of its form
//   "before"     optional: a document that is read first, so that there is something to keep
//   "read"       optional: the document that is read; without it the object is only written
//   "written"    what is written then; without it, just what was read
//   "throws"     optional: the text of the exception that reading throws
//   "log"        optional: the lines that reading logs, [[level, text], ...]; without it, none
//   "log_level"  optional: the level up to which lines count; 3, warnings, without it
//
// Order of members, kinds of numbers and every unit of a text count. What is an IJsonObject goes through each
// case twice, over the document model and over the binary stream; an mp::ISerializable once, over its text.
#pragma once

#include <string>

#include "zeq_api/json/json_value.h"

namespace zeq::test {

/// An object under test on one of its ways in and out.
class CaseSubject {
public:
    virtual ~CaseSubject() = default;
    virtual void read(const JsonValue& document) = 0;
    /// Makes `document` what the object writes.
    virtual void write(JsonDocument& document) const = 0;
};

/// Runs all cases of a file, by the name that forEachLine takes.
void runCases(const std::string& fileName);

} // namespace zeq::test
