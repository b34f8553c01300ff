// What annotations say; the rows hold documents as translators send them.
#include "pmi/value_text.h"

#include <clocale>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/json_text.h"
#include "text/table.h"
#include "transport/utf8.h"
#include "zeq/organisation_tables.h"
#include "zeq/pmi_table.h"

namespace zeq::host {
namespace {

template <class T>
std::shared_ptr<T> read(const std::string& json) {
    std::wistringstream stream(transport::fromUtf8(json));
    const JsonDocument document = test::parse(stream);
    auto object = std::make_shared<T>();
    object->readObject(document);
    return object;
}

struct Row {
    std::string members; ///< of the JSON object
    std::string text;
};

/// In millimetres, with the datums A and B and the target A1.
template <class T>
void expectTexts(const std::vector<Row>& rows) {
    pmi::Context context;
    context.unit = ExcPMIDimension::EDimUnit::mm;
    context.labels = {{L"1", L"A"}, {L"2", L"B"}, {L"3", L"A1"}};
    for (const Row& row : rows)
        EXPECT_EQ(pmi::valueText(*read<T>("{" + row.members + "}"), context), row.text) << row.members;
}

TEST(PMIText, DimensionsHaveTheirSymbolsTolerancesAndUnits) {
    expectTexts<ExcPMIDimension>({
        {R"("value":25.0)", "25"},
        {R"("value":7.619999999999999)", "7.62"}, // what conversions leave
        {R"("value":1e300,"value_precision":400.0)", "1e+300"},
        {R"("value":0.5,"value_precision":400.0)", "0.500000000000000"},
        {R"("value":25.0,"value_precision":2.0)", "25.00"},
        {R"("sub_type":"diameter","value":35.0,"numerical_tolerance":[0.0,0.2])", "⌀35 +0.2/0"},
        {R"("sub_type":"diameter_cylinder","value":25.0,"numerical_tolerance":[-0.15,0.15])", "⌀25 ±0.15"},
        {R"("value":25.0,"numerical_tolerance":[-0.3,-0.1],"tolerance_precision_value":2.0)",
         "25 -0.10/-0.30"},
        {R"("value":25.0,"numerical_tolerance":[0.1,0.3])", "25 +0.3/+0.1"},
        {R"("value":35.0,"value_precision":1.0,"numerical_tolerance":[34.8,35.2])", "34.8–35.2"},
        {R"("sub_type":"radius","numerical_tolerance":[34.8,35.2])", "R34.8–35.2"},
        {R"("sub_type":"angle","value":45.0,"unit":"degree","numerical_tolerance":[-1.0,1.0])", "45° ±1°"},
        {R"("sub_type":"angle","value":2.0,"unit":"radian")", "2 radian"},
        {R"("main_type":"reference","value":0.75)", "(0.75)"},
        {R"("main_type":"basic","value":2.0,"unit":"mm")", "[2]"},
        {R"("main_type":"basic","value":2.0,"unit":"inch")", "[2 inch]"},
        {R"("sub_type":"diameter","value":20.0,"alphanumerical_tolerance":["","H7"])", "⌀20 H7"},
        {R"("value":20.0,"alphanumerical_tolerance":["g6","H7"])", "20 H7/g6"},
        {R"("value":20.0,"alphanumerical_tolerance":["","H7"],"numerical_tolerance":[0.0,0.021])",
         "20 H7 +0.021/0"},
        {R"("value":35.0,"alphanumerical_tolerance":["34.80","35.2"],"numerical_tolerance":[-0.2,0.2])",
         "34.80–35.2"},
        {R"("value":35.0,"alphanumerical_tolerance":["0","+0.2"],"numerical_tolerance":[0.0,0.2])",
         "35 +0.2/0"},
        {R"("sub_type":"radius","value":0.1,"pmi_dimension_note":{"text_suffix":"max"})", "R0.1 max"},
        {R"("sub_type":"diameter","value":8.0,"pmi_dimension_note":{"text_prefix":"S⌀"})", "S⌀8"},
        {R"("sub_type":"radius","value":8.0,"main_type":"reference","pmi_dimension_note":{"text_prefix":"SR"})",
         "(SR8)"},
        {R"("sub_type":"angle","unit":"degree","alphanumerical_tolerance":["44","46"])", "44°–46°"},
        {R"("sub_type":"diameter","value":8.0,"pmi_dimension_note":{"text_before":"4X","text_prefix":"⌀",
             "text_after":"THRU","text_upper":"A\u0007","text_lower":"L","text_below":"x\ny"})",
         "A\\x07\n4X ⌀8 THRU\nL\nx\ny"},
        {R"("sub_type":"coord_dimension_3d","coord":[1.0,2.5,0.0])", "(1, 2.5, 0)"},
        {R"("value":9.0,"callout_feature_annotation_type":"hole_callout_counter_bore_diameter")", "⌴⌀9"},
        {R"("value":9.0,"callout_feature_annotation_type":"hole_callout_depth","text_callout":"MIN")",
         "↧9 MIN"},
        {R"("value":9.0,"fake_numerical_value":10.0)", "10"},
        {R"("value":9.0,"fake_alphanumerical_value":"SEE NOTE")", "SEE NOTE"},
    });
}

TEST(PMIText, FramesHaveARowForEachTolerance) {
    const auto withRow = [](const std::string& type, const std::string& row) {
        return R"("tolerance_type":")" + type + R"(","pmi_gdt_rows":[{)" + row + "}]";
    };
    const auto frame = [](const std::string& references) {
        return R"("tolerance_value":0.5,"ref_frame":{"datum_refs":[)" + references + "]}";
    };
    std::vector<Row> rows{
        {withRow("location_true_position",
                 R"("tolerance_value_type":"diameter","tolerance_value":0.2,
                    "zone_modifiers":[{"zone_modifier_zone":"material_condition_maximum"}],
                    "ref_frame":{"datum_refs":[{"modified_datums":[{"datum_id":"1"}]},
                      {"modified_datums":[{"datum_id":"2",
                        "zone_modifiers":[{"zone_modifier_zone":"material_condition_maximum"}]}]},
                      {"label":"C"}]})"),
         "⌖ | ⌀0.2 Ⓜ | A | B Ⓜ | C"},
        // Where no datum has the id, the compartment tells its letter, and the id stands in for one of several.
        {withRow("form_flatness", frame(R"({"label":"D","modified_datums":[{"datum_id":"9"}]})")),
         "⏥ | 0.5 | D"},
        {withRow("form_flatness", frame(R"({"label":"A-B","modified_datums":[{"datum_id":"1"},
             {"datum_id":"2"},{"datum_id":"9"}]})")),
         "⏥ | 0.5 | A-B-9"},
        {withRow("form_straightness", R"("tolerance_value":0.005,"rate_unit":[0.25,0.25])"),
         "⏤ | 0.005/0.25×0.25"},
        {withRow("form_straightness", R"("tolerance_value":0.005,"rate_unit":[25.0,0.0])"), "⏤ | 0.005/25"},
        {withRow("unknown", R"("tolerance_value":1.0,"refine_tolerance":0.5)"), "? | 1 refined to 0.5"},
        {R"("tolerance_type":"form_profile_any_surface","all_around":1.0,"pmi_gdt_rows":
             [{"tolerance_value":1.0},{"tolerance_value":0.5}],"pmi_gdt_note":{"text_below":"2 SURFACES"})",
         "⌮ ⌓ | 1\n⌓ | 0.5\n2 SURFACES"},
        {R"("tolerance_type":"run_out_total")", "⌰"},
    };
    const std::vector<std::pair<std::string, std::string>> zones{
        {"none", ""}, {"diameter", "⌀"}, {"radius", "R"}, {"spherical", "S⌀"}, {"square", "□"}};
    for (const auto& [name, symbol] : zones)
        rows.push_back(
            {withRow("unknown", R"("tolerance_value_type":")" + name + '"'), "? | " + symbol + "0"});
    expectTexts<ExcPMIGDT>(rows);
}

TEST(PMIText, EachCharacteristicAndModifierHasItsSymbol) {
    const std::vector<std::string> symbols{"?", "⏤", "⏥", "○", "⌭", "⌒", "⌓", "∥", "⟂",
                                           "∠", "⌖", "◎", "◎", "⌯", "⌖", "⌖", "↗", "⌰"};
    const auto types = enumTable(ExcPMIGDT::EToleranceType{}).entries();
    ASSERT_EQ(types.size(), symbols.size());
    for (const EnumEntry& type : types) {
        ExcPMIGDT tolerance;
        tolerance.setToleranceType(static_cast<ExcPMIGDT::EToleranceType>(type.value));
        EXPECT_EQ(pmi::valueText(tolerance, {}), symbols[static_cast<std::size_t>(type.value)]);
        EXPECT_EQ(pmi::kindOf(tolerance).find('_'), std::string::npos);
    }
    const std::map<std::wstring, std::string> known{
        {L"material_condition_maximum", "Ⓜ"},
        {L"material_condition_least", "Ⓛ"},
        {L"material_condition_regardless_of_feature_size", "Ⓢ"},
        {L"tangent_plane_tangent", "Ⓣ"},
        {L"free_state_free", "Ⓕ"},
        {L"statistical_symbol", "ST "},
        {L"common_zone", "CZ "},
        {L"projected_state_projected", "Ⓟ"},
        {L"circle_u", "Ⓤ"},
        {L"minimum_circumscribed_feature", "Ⓝ"},
        {L"maximum_inscribed_feature", "Ⓧ"},
        {L"separate_zone", "SZ "},
        {L"minimum_circumscribed_association", "N "},
        {L"standard_deviation", "Q "},
        {L"no_modifier", ""},
        {L"tangent_plane_non_tangent", ""},
        {L"free_state_not_free", ""},
        {L"projected_state_not_projected", ""},
    };
    for (const EnumEntry& entry : enumTable(ExcPMIGDT::EToleranceModifier{}).entries()) {
        const auto row = std::make_shared<ExcPMIGDT::Row>();
        row->addZoneModifier(static_cast<ExcPMIGDT::EToleranceModifier>(entry.value), 2.5);
        ExcPMIGDT tolerance;
        tolerance.addGdtRow(row);
        const std::string text = pmi::valueText(tolerance, {});
        const auto symbol = known.find(entry.name);
        if (symbol == known.end()) continue;
        EXPECT_EQ(text, "? | 0" + (symbol->second.empty() ? "" : " " + symbol->second + "2.5"));
    }
}

TEST(PMIText, TheOtherKindsSayWhatTheyAre) {
    expectTexts<ExcPMIDatum>(
        {{R"("label":"A")", "A"}, {R"("label":"A","target_ids":["3","9"])", "A (A1, 9)"}});
    expectTexts<ExcPMIDatumTarget>(
        {{R"("label":"A1","target_type":"area_circular","has_diameter":true,"upper_text":"5","lower_text":"A1")",
          "A1 area circular ⌀5"}});
    expectTexts<ExcPMIRoughness>(
        {{R"("fields":["","3.2"],"obtention_type":"matching_forbidden")", "√ 3.2 not machined"}});
    expectTexts<ExcPMINote>({{R"("texts":[{"label":"a\r\n\nb\u001B"},{"label":"c"}])", "a\nb\\x1B c"}});

    EXPECT_EQ(pmi::kindOf(*read<ExcPMINote>(R"({"is_flag_note":true})")), "flag note");
    EXPECT_EQ(pmi::kindOf(*read<ExcPMINote>(R"({"is_noa":true})")), "general note");
    EXPECT_EQ(pmi::kindOf(ExcPMIDatumTarget()), "datum target");
    EXPECT_EQ(pmi::kindOf(*read<ExcPMIDimension>(R"({"sub_type":"radius_tangent"})")), "radius tangent");
    EXPECT_EQ(pmi::kindOf(*read<ExcPMIDimension>(
                  R"({"callout_feature_annotation_type":"hole_callout_counter_sink_angle"})")),
              "counter sink angle");
}

TEST(PMITable, ManyLinksAndManyAnnotationsAreCutUnlessAllAreWanted) {
    std::vector<ExcEntityPtr> elements;
    for (const char* const json :
         {R"({"type":"fsp","fsp":{"subent_id":12,"subent_type":"\u0001"}})",
          R"({"type":"fsp","description":"path","fsp":{"subent_id":33,"subent_type":"\u0002"}})",
          R"({"type":"original","id":"#77","description":"plane"})"})
        elements.push_back(read<ExcEntity>(json));
    EXPECT_EQ(linkedText(elements, false), "12, edge 33 (path), #77 plane");
    elements.resize(20, elements[0]);
    EXPECT_EQ(linkedText(elements, false), "12, edge 33 (path), #77 plane, 12, 12 + 15 more");
    const std::string whole = linkedText(elements, true);
    EXPECT_EQ(std::count(whole.begin(), whole.end(), '\n'), 2);

    const auto view = std::make_shared<ExcPMIAnnotationView>();
    for (int i = 0; i < 70; ++i)
        view->addDatum(read<ExcPMIDatum>(R"({"label":"Z","id":")" + std::to_string(i) + "\"}"));
    const auto set = std::make_shared<ExcPMIAnnotationSet>();
    set->addView(view);
    const auto data = std::make_shared<ExcPMIData>();
    data->addAnnotationSet(set);
    PMITables tables;
    tables.add(7, data);
    tables.add(std::nullopt, data);
    const auto rowsOf = [&tables](bool all) {
        const std::string text = tables.text(nullptr, all);
        return std::count(text.begin(), text.end(), 'Z');
    };
    EXPECT_EQ(rowsOf(false), 100);
    EXPECT_EQ(rowsOf(true), 140);
    const std::string text = tables.text(nullptr, false);
    EXPECT_TRUE(text.starts_with("\nPMI of the assembly: 70 annotations\n  Kind   Value\n")) << text;
    EXPECT_TRUE(text.ends_with("... and 40 more annotations; --all shows them\n")) << text;
}

TEST(Table, ColumnsAlignByTheWidthOfCharacters) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    text::Table table({{"Name"}, {"n", true}, {"never"}, {"last"}});
    table.addRow({"e\u0301", "7", "", "x\ny"}); // a combining accent
    table.addRow({"注意", "12", "", "z"});      // wide ones
    EXPECT_EQ(table.text(), "  Name   n  last\n"
                            "  e\u0301      7  x\n"
                            "            y\n"
                            "  注意  12  z\n");
    EXPECT_EQ(text::shortened("注意注意", 5), "注意…");
    EXPECT_EQ(text::shortened("注意", 4), "注意");
}

TEST(OrganisationTables, UnitsAreThoseThatTheDocumentNames) {
    using EProperty = ExcMiscMaterial::EProperty;
    const auto whole = read<ExcMiscMaterialProperty>(
        R"({"value":200.5,"unit":{"material_units":{"units":"GPa"},"mass":{"units":"kg"}}})");
    const auto parts = read<ExcMiscMaterialProperty>(
        R"({"value":7.85,"unit":{"mass":{"units":"g"},"length":{"units":"cm"}}})");
    EXPECT_EQ(propertyText(EProperty::youngs_modulus, *whole), "200.5 GPa");
    EXPECT_EQ(propertyText(EProperty::density, *parts), "7.85 g/cm³");
    EXPECT_EQ(propertyText(EProperty::poissons_ratio, *parts), "7.85");
}

} // namespace
} // namespace zeq::host
