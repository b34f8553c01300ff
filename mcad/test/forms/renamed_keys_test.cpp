// Keys that are not named after the member behind them (scripts/form_names.txt): what a setter sets stands there.
#include <gtest/gtest.h>

#include <string>

#include "support/json_text.h"
#include "zeq_api/zeq_api.h"

namespace zeq {
namespace {

/// What an object writes after something was set.
template <class T, class Set>
std::wstring written(Set set) {
    T object;
    set(object);
    return test::writtenBy(object);
}

TEST(RenamedKeys, HoldWhatTheirSettersSet) {
    const auto setConfiguration = [](auto& options) { options.setImportConfiguration(L"c"); };
    const auto configuration = L"\"configuration_name\":\"c\"";
    const struct {
        std::wstring text;
        std::wstring expected;
    } rows[] = {
        {written<Command>([](auto& o) { o.setUseMultiThreading(true); }), L"\"mt_mode\":true"},
        {written<LegacyExportOptionsImpl>([](auto& o) { o.setEntities({OdDbHandle(0xBCULL)}); }),
         L"\"selection_set\":["},
        {written<ImportOptionsImpl>([](auto& o) { o.setForceMultiProcessedMode(true); }),
         L"\"force_mp_mode\":true"},
        {written<Result>([](auto& o) { o.setFinished(true); }), L"\"is_finished\":true"},
        {written<Format>([](auto& o) { o.addFilterExtensions(L"*.stp"); }), L"\"filters\":[\"*.stp\"]"},
        {written<ExcFullSubentPath>([](auto& o) { o.refs() = {L"r"}; }), L"\"block_references\":[\"r\"]"},
        {written<ExcMiscPropertiesGroup>([](auto& o) { o.setBim(true); }), L"\"is_bim\":true"},
        {written<OptionsGeneral>([](auto& o) { o.setLogEventLevel(static_cast<ELogEventLevelType>(1)); }),
         L"\"log_event_level_type\":\"" + enumToString(static_cast<ELogEventLevelType>(1))},
        {written<OptionsGeneral>([](auto& o) { o.setLogFileEncoding(static_cast<ELogFileEncodingType>(1)); }),
         L"\"log_file_encoding_type\":\"" + enumToString(static_cast<ELogFileEncodingType>(1))},
        {written<OptionsGeneral>([](auto& o) { o.setLoggingMode(static_cast<ELoggingModeType>(1)); }),
         L"\"logging_mode_type\":\"" + enumToString(static_cast<ELoggingModeType>(1))},
        {written<OptionsGraphical>(
             [](auto& o) { o.setVisuBRepTessellationMode(static_cast<EVisuBRepTessellationModeType>(1)); }),
         L"\"visu_brep_tesselation_mode\":\"" + enumToString(static_cast<EVisuBRepTessellationModeType>(1))},
        {written<OptionsModeler>([](auto& o) { o.setSplineResurfacingTolerance(0.125); }),
         L"\"acis_spline_resurfacing_tolerance\":0.125"},
        {written<OptionsModeler>([](auto& o) { o.setModelerUnits(ELengthUnitType::mile); }),
         L"\"length_unit_type\":\"mile\""},
        {written<imp::OptionsNX>(setConfiguration), configuration},
        {written<imp::OptionsCreo>(setConfiguration), configuration},
        {written<imp::OptionsSolidWorks>(setConfiguration), configuration},
        {written<imp::OptionsCatiaV5>(
             [](auto& o) { o.setProcessInWorkObject(EProcessInWorkObjectModeType::true_); }),
         L"\"in_work_object_mode\":\"true\""},
        {written<imp::OptionsCreo>([](auto& o) {
             o.setTranslateDrivingDimensionsMode(ETranslateDrivingDimensionsModeType::true_);
         }),
         L"\"driving_dimensions_type\":\"true\""},
        {written<ExcMappingData>([](auto& o) {
             const auto imported = std::make_shared<ExcEntity>();
             imported->setType(ExcEntity::EType::mfg);
             o.add(imported, std::make_shared<ExcEntity>());
         }),
         L"\"imported\":{\"type\":\"mfg\""},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_NE(text.find(expected), std::wstring::npos)
            << testing::PrintToString(expected) << " in " << testing::PrintToString(text);
}

} // namespace
} // namespace zeq
