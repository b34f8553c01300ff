// What the translator says of the file beside what arrived.
#include "zeq/contents_report.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace zeq::host {
namespace {

using Properties = std::vector<std::pair<std::wstring, std::wstring>>;

ContentsReport reportOf(const std::wstring& kind, const Properties& properties) {
    ExcMiscPropertiesGroup group;
    group.name() = L"contents of the file: " + kind;
    for (const auto& [name, value] : properties) {
        ExcMiscProperty property;
        property.name() = name;
        property.value() = value;
        group.addProperty(property);
    }
    ExcMiscData data;
    data.addGroup(ExcMiscPropertiesGroup());
    data.addGroup(group);
    ContentsReport report;
    report.add(data);
    report.compare({{L"views", 3}});
    return report;
}

TEST(ContentsReport, TellsWhatIsMissingAndWhy) {
    const struct {
        Properties properties;
        std::string text; ///< of the row behind its kind, and of the lines below
        std::uint64_t missing;
    } rows[] = {
        {{{L"in the file", L"3"}, {L"sent", L"3"}}, "3 3 3", 0},
        {{{L"in the file", L"5"}, {L"sent", L"3"}},
         "5 3 3 <- 2 left out views: 2 left out for no stated reason",
         2},
        {{{L"in the file", L"5"},
          {L"items: no camera", L"#1"},
          {L"sent", L"4"},
          {L"left out: no camera", L"1"}},
         "5 4 3 <- 1 left out, 1 lost views: 1 left out: no camera (#1)",
         2},
        {{{L"in the file", L"9"},
          {L"sent", L"3"},
          {L"left out: views are switched off", L"5"},
          {L"left out: no camera", L"1"}},
         "9 3 3 <- 5 switched off, 1 left out views: 5 left out: views are switched off views: 1 left out: "
         "no camera",
         1},
        {{{L"in the file", L"4"}, {L"sent", L"3"}, {L"left out: switched off", L"9"}}, // more than there is
         "4 3 3 <- 1 switched off views: 9 left out: switched off",
         0},
        {{{L"in the file", L"1"}, {L"sent", L"2"}}, "1 2 3 <- 1 more than in the file, 1 more than sent", 0},
        {{{L"in the file", L"x"}, {L"left out: none", L"0"}}, "- - 3", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const ContentsReport report = reportOf(L"views", row.properties);
        std::istringstream lines(report.text(false));
        std::string words, word;
        std::getline(lines, word); // titles
        lines >> word;             // the kind
        while (lines >> word) words += (words.empty() ? "" : " ") + word;
        EXPECT_EQ(words, row.text);
        const auto missing = report.missing();
        EXPECT_EQ(missing.contains("views") ? missing.at("views") : 0, row.missing);
    }
}

TEST(ContentsReport, ShowsKindsThatAreUnknownAndCutsLongLists) {
    const ContentsReport report = reportOf(
        L"wheels\x1B",
        {{L"in the file", L"90"}, {L"left out: round", L"90"}, {L"items: round", std::wstring(90, L'#')}});
    EXPECT_NE(report.text(false).find("\n  wheels\\x1B           90     -        -\n"), std::string::npos)
        << report.text(false);
    EXPECT_NE(report.text(false).find(std::string(59, '#') + "…)"), std::string::npos) << report.text(false);
    EXPECT_NE(report.text(true).find(std::string(90, '#') + ")"), std::string::npos) << report.text(true);
    EXPECT_EQ(report.jsonMember(),
              R"("contents":[{"kind":"wheels\u001B","in_file":90,"sent":null,"arrived":null,)"
              R"("missing":0,"left_out":[{"reason":"round","count":90,"items":")" +
                  std::string(90, '#') + R"("}]}])");
    EXPECT_TRUE(ContentsReport().isEmpty());
}

} // namespace
} // namespace zeq::host
