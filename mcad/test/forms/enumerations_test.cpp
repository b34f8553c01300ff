// The names of all enumerations, and what becomes of values and names that are not in their tables.
#include "zeq_api/json/enum_names.h"

#include <map>
#include <set>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/case_lines.h"
#include "zeq_api/json/form_registry.h"
#include "zeq_api/zeq_api.h"

namespace zeq {
namespace {

using Tables = std::map<std::string_view, const EnumTable*>;

/// Adds the tables that a shape refers to; classes have shapes of their own.
void addTables(const json::Shape& shape, Tables& tables) {
    if (const auto* name = std::get_if<json::NameShape>(&shape.is)) {
        tables.emplace(name->names->enumeration(), name->names);
    } else if (const auto* array = std::get_if<json::ArrayShape>(&shape.is)) {
        addTables(*array->element, tables);
    } else if (const auto* map = std::get_if<json::MapShape>(&shape.is)) {
        if (map->names) tables.emplace(map->names->enumeration(), map->names);
        addTables(*map->value, tables);
    } else if (const auto* object = std::get_if<json::ObjectShape>(&shape.is)) {
        for (const json::MemberShape& member : object->members) addTables(member.shape, tables);
    }
}

Tables allTables() {
    Tables tables;
    for (const EnumTable* inNoForm :
         {&enumTable(EMassUnitType{}), &enumTable(ETimeUnitType{}), &enumTable(ETemperatureUnitType{}),
          &enumTable(EPersistentNameProcessingModeType{}), &enumTable(ExcMiscMaterial::EProperty{})})
        tables.emplace(inNoForm->enumeration(), inNoForm);
    for (const json::FormInfo* form : json::allForms()) addTables(form->shape(), tables);
    return tables;
}

TEST(Enumerations, HaveTheNamesOfTheDataFile) {
    Tables tables = allTables();
    test::forEachLine("enumerations.jsonl", [&](int, const JsonValue& line) {
        const std::wstring wide = line[L"enumeration"].GetString();
        const std::string name(wide.begin(), wide.end());
        SCOPED_TRACE(name);
        const auto found = tables.extract(name);
        ASSERT_FALSE(found.empty()) << "no form has a member of it";
        const EnumTable& table = *found.mapped();

        std::multimap<int, std::wstring> rows; // the smallest value first
        for (const EnumEntry& entry : table.entries()) rows.emplace(entry.value, entry.name);
        std::multimap<int, std::wstring> expected;
        for (const JsonValue& row : line[L"names"].GetArray())
            expected.emplace(row[0].GetInt(), row[1].GetString());
        EXPECT_EQ(rows, expected);

        std::map<std::wstring, int> values; // of a name that is there twice, the first
        for (const auto& [value, text] : expected) {
            values.emplace(text, value);
            EXPECT_EQ(table.nameOf(value), expected.find(value)->second);
            EXPECT_EQ(table.valueOf(text), values[text]);
        }
        EXPECT_EQ(table.nameOf(-1), expected.begin()->second);
        for (const wchar_t* unknown : {L"", L"no such name"})
            EXPECT_EQ(table.valueOf(unknown), values.begin()->second);
    });
    for (const auto& [name, table] : tables) ADD_FAILURE() << name << " is not in the data file";
}

TEST(Enumerations, AreReadFromStringsOnly) {
    JsonDocument object;
    object.Parse(L"{\"name\":\"no such name\",\"number\":1}");
    EWorldOrientation out = EWorldOrientation::up_z;
    EXPECT_FALSE(readEnum(object, L"number", out));
    EXPECT_FALSE(readEnum(object, L"missing", out));
    EXPECT_FALSE(readEnum(object[L"name"], L"name", out));
    EXPECT_EQ(out, EWorldOrientation::up_z);
    EXPECT_TRUE(readEnum(object, L"name", out));
    EXPECT_EQ(out, EWorldOrientation::unknown);
}

TEST(Enumerations, OfTwoEqualNamesTheFirstIsRead) {
    using enum EMiscValueType;
    EXPECT_EQ(enumToString(rstifnes_2), L"rstifnes");
    EXPECT_EQ(enumFromString<ExcMiscProperty::EValueType>(L"rstifnes"), rstifnes);
    EXPECT_EQ(static_cast<int>(numberdensity_2), 303);
    EXPECT_EQ(enumToString(temperature_gradient), L"temperature_gradient");
}

TEST(Enumerations, AGapHasTheNameOfTheSmallestValue) {
    EXPECT_EQ(enumToString(static_cast<EMassUnitType>(2)), L"unknown");
    EXPECT_EQ(enumToString(EMassUnitType::centigram), L"centigram");
}

} // namespace
} // namespace zeq
