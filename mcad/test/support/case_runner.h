// Runs case files: what becomes of documents that are read and written back.
//
// A case file stands in mcad/test/data and is ASCII, one case a line, each a JSON object:
//   "case"       what it claims
//   "class"      the class of the object, by the name under which it was added
//   "before"     optional: a document that is read first, so that there is something to keep
//   "read"       optional: the document that is read; without it the object is only written
//   "written"    what is written then; without it, just what was read
//   "throws"     optional: the text of the exception that reading throws
//   "log"        optional: the lines that reading logs, [[level, text], ...]; without it, none
//   "log_level"  optional: the level up to which lines count; 3, warnings, without it
//
//     TEST(Colors, BecomeWhatTheirCasesSay) {
//     test::CaseRunner().add<ExcColor>("ExcColor").run("colors.jsonl"); }
//
// Order of members, kinds of numbers and every unit of a text count. What is an IJsonObject goes through each
// case twice, over the document model and over the binary stream; an mp::ISerializable once, over its text.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "mp/serializable.h"
#include "zeq_api/json/json_object.h"

namespace zeq::test {

/// An object under test on one of its ways in and out.
class CaseSubject {
public:
    virtual ~CaseSubject() = default;
    virtual void read(const JsonValue& document) = 0;
    /// Makes `document` what the object writes.
    virtual void write(JsonDocument& document) const = 0;
};

class CaseRunner {
public:
    /// Makes a class known to the case files; each class must have cases.
    template <class T>
    CaseRunner& add(const std::string& className) {
        if constexpr (std::is_base_of_v<mp::ISerializable, T>) {
            m_subjects[className] = {[] { return overText(std::make_unique<T>()); }};
        } else {
            m_subjects[className] = {[] { return overDocument(std::make_unique<T>()); },
                                     [] { return overBytes(std::make_unique<T>()); }};
        }
        return *this;
    }

    /// Runs all cases of a file.
    void run(const std::string& fileName) const;

private:
    using Subject = std::unique_ptr<CaseSubject>;

    static Subject overDocument(std::unique_ptr<IJsonObject> object);
    static Subject overBytes(std::unique_ptr<IJsonObject> object);
    static Subject overText(std::unique_ptr<mp::ISerializable> object);

    std::map<std::string, std::vector<std::function<Subject()>>> m_subjects;
};

} // namespace zeq::test
