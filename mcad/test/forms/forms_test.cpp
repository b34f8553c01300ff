// What holds for every class with a form, whichever there are: its cases, and that its form is whole.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <cxxabi.h>

#include "forms/both_ways.h"
#include "support/case_lines.h"
#include "support/case_runner.h"
#include "support/child_process.h"
#include "support/temp_dir.h"
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

/// Calls `visit(form, document)` for the written document of each case of an IJsonObject.
template <class Visit>
void forEachWritten(Visit&& visit) {
    std::map<std::string, const json::FormInfo*> forms;
    for (const json::FormInfo* form : json::allForms())
        if (form->make && !form->isWholeDocument) forms.emplace(form->className(), form);
    for (const std::string& file : test::caseFiles())
        test::forEachLine(file, [&](int number, const JsonValue& line) {
            const std::wstring name = line[L"class"].GetString();
            const auto form = forms.find(std::string(name.begin(), name.end()));
            if (form == forms.end()) return;
            SCOPED_TRACE(file + ":" + std::to_string(number));
            visit(*form->second, line[line.HasMember(L"written") ? L"written" : L"read"]);
        });
}

TEST(AllForms, TakeDamagedBytesAlikeOnBothWays) {
    std::mt19937 random(7);
    forEachWritten([&random](const json::FormInfo& form, const JsonValue& document) {
        std::string bytes;
        JsonBinaryIO::encode(document, bytes);
        EXPECT_NE(test::agreementOn(form, bytes), test::Agreement::none);
        for (int time = 0; time < 60; ++time) { // where a flag, a number, a unit or a name becomes another
            std::string damaged = bytes;
            damaged[random() % damaged.size()] = static_cast<char>(random() % 12);
            EXPECT_NE(test::agreementOn(form, damaged), test::Agreement::none);
        }
    });
}

TEST(AllForms, ReadWhatTheyWriteInOnePass) {
    std::set<std::string> refused;
    forEachWritten([&refused](const json::FormInfo& form, const JsonValue& document) {
        const auto object = std::get<0>(form.make());
        try {
            object->readObject(document);
        } catch (const std::exception&) { // what was taken so far will do
        }
        const std::string bytes = test::binaryForm(*object);
        if (test::agreementOn(form, bytes) != test::Agreement::full) refused.insert(form.className());
    });
    EXPECT_EQ(refused, std::set<std::string>{});
}

/// An object of that kind, with the sections that reading leaves out.
std::shared_ptr<IExchangeObject> withSections(const std::wstring& kind, const std::wstring& text) {
    auto object = ExchangeObjectRegistry::instance().get(kind);
    std::wistringstream stream(text);
    const JsonDocument document = test::parse(stream);
    object->readObject(document);
    if (const auto root = std::dynamic_pointer_cast<ExcRootMechanicalData>(object)) {
        root->setPMIData(readPMIData(document));
    } else if (const auto block = std::dynamic_pointer_cast<ExcBlockMechanicalData>(object)) {
        block->setPMIData(readPMIData(document));
        block->setMappingData(readMappingData(document));
        block->setEntityData(readEntityData(document));
    }
    return object;
}

TEST(AllForms, OfBinaryKindsCrossFromProcessToProcess) {
    std::map<std::wstring, std::vector<std::wstring>> documents; // by kind
    forEachWritten([&documents](const json::FormInfo& form, const JsonValue& document) {
        const auto object = std::dynamic_pointer_cast<IExchangeObject>(std::get<0>(form.make()));
        if (!object || !object->binary()) return;
        JsonDocument whole;
        whole.CopyFrom(document, whole.GetAllocator());
        documents[object->objectName()].push_back(test::textOf(whole));
    });
    std::vector<std::wstring> kinds;
    for (const auto& entry : documents) {
        const std::wstring& kind = entry.first;
        const std::vector<std::wstring>& sent = entry.second;
        kinds.push_back(kind);
        const test::TempDir dir;
        const std::string path = dir.file("documents");
        ASSERT_EQ(test::waitForChild(test::startChild([&] {
                      std::wofstream stream(path);
                      for (const std::wstring& text : sent) {
                          ExchangeObjectWrapper wrapper;
                          wrapper.set(withSections(kind, text));
                          wrapper.writeObject(stream);
                          stream << L'\n';
                      }
                  })),
                  0);
        std::wifstream stream(path);
        std::wstring line;
        for (const std::wstring& text : sent) {
            ASSERT_TRUE(std::getline(stream, line));
            ExchangeObjectWrapper wrapper;
            wrapper.setDelayedLoading(true);
            test::readFrom(wrapper, line);
            loadWithSections(*wrapper.get());
            EXPECT_EQ(test::writtenBy(*wrapper.get()), text);
        }
    }
    EXPECT_EQ(kinds, (std::vector<std::wstring>{L"exc_block_mechanical_data", L"exc_block_visualization",
                                                L"exc_product_structure", L"exc_root_assembly_visualization",
                                                L"exc_root_mechanical_data"}));
}

} // namespace
} // namespace zeq
