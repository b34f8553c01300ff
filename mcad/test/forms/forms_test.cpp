// What holds for every class with a form, whichever there are: its cases, and that its form is whole.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>

#include <cxxabi.h>

#include "support/case_lines.h"
#include "support/case_runner.h"
#include "zeq_api/json/form_registry.h"
#include "zeq_api/zeq_api.h"

namespace zeq {
namespace {

class Cases : public testing::TestWithParam<std::string> {};

TEST_P(Cases, BecomeWhatTheySay) { test::runCases(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Forms, Cases, testing::ValuesIn(test::caseFiles()), [](const auto& file) {
    const std::string& name = file.param; // cases/NAME.jsonl
    return name.substr(6, name.size() - 12);
});

/// The keys that the documents of the cases have, by class.
std::map<std::string, std::set<std::wstring>> keysInCases() {
    std::map<std::string, std::set<std::wstring>> keys;
    for (const std::string& file : test::caseFiles())
        test::forEachLine(file, [&keys](int, const JsonValue& line) {
            const std::wstring name = line[L"class"].GetString();
            auto& ofClass = keys[std::string(name.begin(), name.end())];
            for (const wchar_t* part : {L"read", L"written"})
                if (line.HasMember(part) && line[part].IsObject())
                    for (const auto& member : line[part].GetObject()) ofClass.insert(member.name.GetString());
        });
    return keys;
}

TEST(AllForms, OccurInTheCasesWithEveryMember) {
    const auto keys = keysInCases();
    for (const json::FormInfo* form : json::allForms()) {
        if (!form->make) continue; // abstract
        SCOPED_TRACE(form->className());
        const auto found = keys.find(form->className());
        if (found == keys.end()) {
            ADD_FAILURE() << "no case";
            continue;
        }
        const json::Shape shape = form->shape();
        const auto* object = std::get_if<json::ObjectShape>(&shape.is);
        if (!object) continue;
        for (const json::MemberShape& member : object->members)
            EXPECT_TRUE(found->second.contains(std::wstring(member.key)))
                << "no case with " << testing::PrintToString(std::wstring(member.key));
    }
}

TEST(AllForms, HaveEachKeyOnceTheirBasesIncluded) {
    for (const json::FormInfo* form : json::allForms()) {
        const json::Shape shape = form->shape();
        const auto* object = std::get_if<json::ObjectShape>(&shape.is);
        if (!object) continue;
        std::set<std::wstring_view> keys;
        for (const json::MemberShape& member : object->members)
            EXPECT_TRUE(keys.insert(member.key).second)
                << form->className() << ' ' << testing::PrintToString(std::wstring(member.key));
    }
}

TEST(AllForms, OfDerivedClassesBeginWithThoseOfTheirBases) {
    for (const json::FormInfo* form : json::allForms()) {
        const json::FormInfo* base = nullptr;
        const std::type_info* type = form->type;
        while (const auto* derived = dynamic_cast<const abi::__si_class_type_info*>(type)) {
            type = derived->__base_type;
            if ((base = json::findForm(*type))) break;
        }
        EXPECT_EQ(form->base, base ? base->type : nullptr) << form->className();
    }
}

} // namespace
} // namespace zeq
