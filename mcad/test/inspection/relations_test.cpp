// What is found between objects: the rows hold a product structure, which stands in the buffer "s", geometry,
// mechanical and display data.
#include "inspection/relations.h"

#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "inspection/document_classes.h"
#include "support/case_lines.h"
#include "support/json_text.h"
#include "text/text.h"

namespace zeq::inspection {
namespace {

std::string narrow(const JsonValue& string) {
    return text::validUtf8(std::wstring(string.GetString(), string.GetStringLength()));
}

TEST(Relations, AreAsTheirCasesSay) {
    test::forEachLine("relations.jsonl", [](int number, const JsonValue& line) {
        SCOPED_TRACE("relations.jsonl:" + std::to_string(number) + " " + narrow(line[L"case"]));
        std::vector<std::string> findings;
        const auto report = [&findings](const Finding& finding) {
            findings.push_back(std::string(nameOf(finding.severity)) + ' ' + text::validUtf8(finding.buffer) +
                               finding.pointer + ": " + finding.text);
        };
        const auto open = [&line](const std::wstring& name, JsonDocument& content) {
            if (name != L"s") throw std::runtime_error("there is none");
            content.CopyFrom(line[L"structure"], content.GetAllocator());
        };
        Relations relations(report, open, line.HasMember(L"live"));
        const auto add = [&relations](const std::wstring& text, const std::string& pointer) {
            std::wistringstream stream(text);
            const JsonDocument document = test::parse(stream);
            relations.add(document, *findClass("ExchangeObjectWrapper"), pointer);
        };
        for (const auto& [list, name, pointer] :
             {std::tuple(L"geometry", L"exc_block_geometry", "/g"),
              std::tuple(L"mechanical", L"exc_block_mechanical_data", "/m"),
              std::tuple(L"display", L"exc_block_visualization", "/v"),
              std::tuple(L"root", L"exc_root_mechanical_data", "/r")}) {
            if (!line.HasMember(list)) continue;
            for (const JsonValue& data : line[list].GetArray()) {
                JsonDocument object;
                object.CopyFrom(data, object.GetAllocator());
                add(std::wstring(LR"({"exchange_object_name":")") + name + LR"(","exchange_object_data":)" +
                        test::textOf(object) + L"}",
                    pointer);
            }
        }
        for (const wchar_t* const buffer : {L"s", L"other"}) // one that cannot be opened is for the linter
            add(LR"({"exchange_object_name":"exc_product_structure","binary":true,"exchange_object_data":")" +
                    std::wstring(line.HasMember(L"structure") ? buffer : L"other") + LR"("})",
                "");
        relations.finish();
        std::vector<std::string> expected;
        for (const JsonValue& finding : line[L"findings"].GetArray()) expected.push_back(narrow(finding));
        EXPECT_EQ(findings, expected);
    });
}

TEST(Relations, OfASingleReferenceAreItsOwn) {
    std::wistringstream text(LR"({"block_id":7,"guid":"x"})");
    const JsonDocument reference = test::parse(text);
    std::vector<std::string> pointers;
    Relations relations([&](const Finding& finding) { pointers.push_back(finding.pointer); },
                        openSharedBuffer, true);
    relations.add(reference, *findClass("ExcBlockReference"), "/r");
    relations.finish();
    EXPECT_EQ(pointers, std::vector<std::string>{"/r/guid"}); // block 7 may be anywhere
}

} // namespace
} // namespace zeq::inspection
