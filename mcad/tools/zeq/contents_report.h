// Whether everything that a file holds arrived: what the translator says of it, beside what is there.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "text/json_writer.h"
#include "zeq_api/exchange_common/misc_data.h"

namespace zeq::host {

/// Takes the report of a translator, which stands in the properties of the file as a whole: for each kind of contents
/// a group "contents of the file: KIND" with the integers "in the file" and "sent" and, for each reason why something
/// is left out, the integer "left out: REASON" and the string "items: REASON".
class ContentsReport {
public:
    /// Whether a group of properties belongs to such a report.
    static bool isOwn(const ExcMiscPropertiesGroup& group);

    void add(const ExcMiscData& properties);
    /// What arrived, by kind; kinds that are not in the report are of no interest.
    void compare(const std::map<std::wstring, std::uint64_t>& arrived);
    bool isEmpty() const { return m_rows.empty(); }

    /// What did not arrive although nobody asked for that, by kind: what was lost on the way, and what was left out
    /// for any reason but that it is "switched off". Only kinds of which something is missing.
    std::map<std::string, std::uint64_t> missing() const;

    /// A table, and below it why things were left out; of the things that are named, the first, unless all are wanted.
    std::string text(bool all) const;
    /// "contents":[...]
    std::string jsonMember() const;
    /// Appends to an array, for each kind, an object with "what", the figures "file", "sent" and "arrived" that are
    /// known, and "reasons", the lines below the table.
    void writeLosses(text::JsonWriter& json) const;

private:
    using Figure = std::optional<std::uint64_t>;
    struct Reason {
        std::wstring text;
        std::uint64_t count = 0;
        std::wstring items;
    };
    struct Row {
        std::wstring kind;
        Figure inFile;
        Figure sent;
        Figure arrived;
        std::vector<Reason> reasons;

        Reason& reason(const std::wstring& text);
        /// What is in the file and was not sent.
        std::uint64_t unsent() const;
        /// Of that, what is left out for these reasons.
        std::uint64_t explained(bool onlySwitchedOff) const;
        std::uint64_t lost() const;
        std::uint64_t missing() const;
        std::string remark() const;
        /// "2 left out: REASON (ITEMS)".
        std::vector<std::string> explanations(bool all) const;
    };

    std::vector<Row> m_rows; ///< in the order of the report
};

} // namespace zeq::host
