// The linter: what it says of documents, and that the readers do as it says.
#include "inspection/linter.h"

#include <array>
#include <functional>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "inspection/document_classes.h"
#include "mp/shared_buffer.h"
#include "support/case_lines.h"
#include "support/json_text.h"
#include "text/text.h"
#include "zeq_api/json/codecs.h"
#include "zeq_api/zeq_api.h"

namespace zeq::inspection {
namespace {

std::string narrow(const JsonValue& string) {
    return text::validUtf8(std::wstring(string.GetString(), string.GetStringLength()));
}

std::vector<Finding> lintAll(const JsonValue& document, const json::FormInfo& form) {
    std::vector<Finding> findings;
    lint(document, form, [&findings](const Finding& finding) { findings.push_back(finding); });
    return findings;
}

/// A finding without the list of names, where that is not part of the claim.
std::string shown(const Finding& finding, const std::string& expected) {
    const std::string full = fullText(finding);
    return full.starts_with(expected) && (finding.text == expected || full.ends_with(expected) ||
                                          full.substr(expected.size()).starts_with(" There are "))
               ? expected
               : full;
}

TEST(Linter, SaysWhatItsCasesSay) {
    test::forEachLine("lint.jsonl", [](int number, const JsonValue& line) {
        SCOPED_TRACE("lint.jsonl:" + std::to_string(number) + " " + narrow(line[L"case"]));
        const JsonValue& document = line[L"read"];
        const json::FormInfo* form =
            line.HasMember(L"class") ? findClass(narrow(line[L"class"])) : recognise(document);
        const auto expected = line[L"findings"].GetArray();
        if (!form) {
            EXPECT_TRUE(expected.Empty()) << "no class";
            return;
        }
        const std::vector<Finding> findings = lintAll(document, *form);
        ASSERT_EQ(findings.size(), expected.Size());
        for (rapidjson::SizeType i = 0; i < expected.Size(); ++i) {
            const std::string text = narrow(expected[i][2]);
            EXPECT_EQ(nameOf(findings[i].severity), narrow(expected[i][0]));
            EXPECT_EQ(findings[i].pointer, narrow(expected[i][1]));
            EXPECT_EQ(shown(findings[i], text), text);
        }
    });
}

TEST(Linter, LooksIntoTheSharedBufferAndLeavesIt) {
    const std::wstring name = IExchangeObject::generateUUID();
    const std::string bytes = [] {
        std::wistringstream text(LR"({"blocks":[{"id":-1}]})");
        std::string encoded;
        JsonBinaryIO::encode(test::parse(text), encoded);
        return encoded;
    }();
    const mp::SharedBuffer<char> owner(name, true);
    mp::SharedBuffer<char>(name, false).setBuffer(bytes.data(), bytes.size());
    std::wistringstream wrapper(LR"({"exchange_object_name":"exc_product_structure","binary":true,)"
                                LR"("exchange_object_data":")" +
                                name + LR"("})");
    const JsonDocument document = test::parse(wrapper);
    for (int time = 0; time < 2; ++time) {
        const std::vector<Finding> findings = lintAll(document, *recognise(document));
        ASSERT_EQ(findings.size(), 1U);
        EXPECT_EQ(findings[0].buffer, name);
        EXPECT_EQ(findings[0].pointer, "/blocks/0/id");
    }
}

/// Reads a document into a new object and returns what that writes; the reason when it refuses.
std::wstring rewritten(const json::FormInfo& form, const std::wstring& text) {
    try {
        return std::visit(
            [&text](const auto& object) {
                test::readFrom(*object, text);
                return test::writtenBy(*object);
            },
            form.make());
    } catch (const std::invalid_argument& error) {
        const std::string reason = error.what();
        return L"refused: " + std::wstring(reason.begin(), reason.end());
    }
}

/// Steps from the root to a value: names of members, positions in arrays.
using Steps = std::vector<std::wstring>;

JsonValue* follow(JsonValue& root, const Steps& steps) {
    JsonValue* value = &root;
    for (const std::wstring& step : steps) {
        if (value->IsArray()) {
            const auto index = static_cast<rapidjson::SizeType>(std::stoul(step));
            if (index >= value->Size()) return nullptr;
            value = &(*value)[index];
        } else {
            if (!value->IsObject() || !value->HasMember(step.c_str())) return nullptr;
            value = &(*value)[step.c_str()];
        }
    }
    return value;
}

/// Calls `visit(steps)` for each member of each object in the document.
void forEachMember(const JsonValue& value, Steps& steps, const std::function<void(const Steps&)>& visit) {
    if (value.IsArray()) {
        for (rapidjson::SizeType i = 0; i < value.Size(); ++i) {
            steps.push_back(std::to_wstring(i));
            forEachMember(value[i], steps, visit);
            steps.pop_back();
        }
    } else if (value.IsObject()) {
        for (const auto& member : value.GetObject()) {
            steps.emplace_back(member.name.GetString());
            visit(steps);
            forEachMember(member.value, steps, visit);
            steps.pop_back();
        }
    }
}

std::string pointerOf(const Steps& steps) {
    std::string pointer;
    for (const std::wstring& step : steps) pointer += '/' + text::validUtf8(step);
    return pointer;
}

/// What reading makes of a document in which one member is something else has to be what the linter says.
void probe(const JsonDocument& document, const Steps& steps, const std::wstring& value,
           const json::FormInfo& form) {
    JsonDocument changed;
    changed.CopyFrom(document, changed.GetAllocator());
    std::wistringstream text(value);
    const JsonDocument replacement = test::parse(text);
    follow(changed, steps)->CopyFrom(replacement, changed.GetAllocator());

    const std::string pointer = pointerOf(steps);
    const std::vector<Finding> findings = lintAll(changed, form);
    std::wstring written = rewritten(form, test::textOf(changed));
    if (findings.empty()) {
        std::wistringstream stream(written);
        JsonDocument back = test::parse(stream);
        // A member at its default may be left out, an object is more than what it reads, elements may be
        // sorted, and a bulk array is written as text.
        const JsonValue* member = steps.size() == 1 ? follow(back, steps) : nullptr;
        if (member) {
            EXPECT_TRUE(*member == replacement || replacement.IsObject() ||
                        (replacement.IsArray() && member->IsString()))
                << pointer << " is clean but is not read";
        }
    } else if (findings.front().pointer == pointer && findings.front().text.ends_with("it is not read")) {
        const Steps parent(steps.begin(), steps.end() - 1);
        follow(changed, parent)->EraseMember(steps.back().c_str());
        EXPECT_EQ(text::validUtf8(written), text::validUtf8(rewritten(form, test::textOf(changed))))
            << pointer << " is read, though the linter says: " << findings.front().text;
    }
}

class CaseFiles : public testing::TestWithParam<std::string> {};

TEST_P(CaseFiles, AreReadAsTheLinterSays) {
    static const std::array<std::wstring, 10> probes{L"null", L"true",  L"5",     L"-1",  L"5.5",
                                                     L"1e10", L"70000", L"\"z\"", L"[1]", L"{}"};
    std::size_t documents = 0;
    test::forEachLine(GetParam(), [&](int number, const JsonValue& line) {
        if (line.HasMember(L"throws")) return;
        SCOPED_TRACE(GetParam() + ":" + std::to_string(number));
        const json::FormInfo& form = *findClass(narrow(line[L"class"]));
        JsonDocument document;
        document.CopyFrom(line[line.HasMember(L"written") ? L"written" : L"read"], document.GetAllocator());
        ++documents;
        for (const Finding& finding : lintAll(document, form))
            EXPECT_EQ(finding.severity, Severity::note) << finding.pointer << ": " << fullText(finding);
        Steps steps;
        forEachMember(document, steps, [&](const Steps& member) {
            for (const std::wstring& value : probes) probe(document, member, value, form);
        });
    });
    EXPECT_GT(documents, 0U);
}

INSTANTIATE_TEST_SUITE_P(Linter, CaseFiles, testing::ValuesIn([] {
                             std::vector<std::string> files = test::caseFiles();
                             std::erase(files, "cases/documents.jsonl"); // they move shared buffers
                             std::erase(files, "cases/block_geometry.jsonl");
                             return files;
                         }()));

} // namespace
} // namespace zeq::inspection
