// Names of the choices of the export groups.
#include "zeq_api/format_options/export_modes.h"

namespace zeq {

const EnumTable& enumTable(EExportVersionStep) {
    using E = EExportVersionStep;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::AP203, L"AP203"}, {E::AP214, L"AP214"}, {E::AP242, L"AP242"}};
    static const EnumTable table{"EExportVersionStep", names};
    return table;
}

const EnumTable& enumTable(EExportVersionAcis) {
    using E = EExportVersionAcis;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::current, L"current"},
                                          {E::R18, L"R18"},
                                          {E::R19, L"R19"},
                                          {E::R20, L"R20"},
                                          {E::R21, L"R21"},
                                          {E::R22, L"R22"},
                                          {E::R23, L"R23"},
                                          {E::R24, L"R24"},
                                          {E::R25, L"R25"},
                                          {E::R2016_1_0, L"2016_1_0"},
                                          {E::R2017_1_0, L"2017_1_0"},
                                          {E::R2018_1_0, L"2018_1_0"},
                                          {E::R2019_1_0, L"2019_1_0"},
                                          {E::R2020_1_0, L"2020_1_0"},
                                          {E::R2021_1_0, L"2021_1_0"},
                                          {E::R2022_1_0, L"2022_1_0"},
                                          {E::R2023_1_0, L"2023_1_0"},
                                          {E::R2024_1_0, L"2024_1_0"},
                                          {E::R2025_1_0, L"2025_1_0"}};
    static const EnumTable table{"EExportVersionAcis", names};
    return table;
}

const EnumTable& enumTable(EExportVersionParasolid) {
    using E = EExportVersionParasolid;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::current, L"current"}, {E::r12, L"r12"}, {E::r13, L"r13"},
        {E::r14, L"r14"},         {E::r15, L"r15"},         {E::r16, L"r16"}, {E::r17, L"r17"},
        {E::r18, L"r18"},         {E::r19, L"r19"},         {E::r20, L"r20"}, {E::r21, L"r21"},
        {E::r22, L"r22"},         {E::r23, L"r23"},         {E::r24, L"r24"}, {E::r25, L"r25"},
        {E::r26, L"r26"},         {E::r27, L"r27"},         {E::r28, L"r28"}, {E::r29, L"r29"},
        {E::r30, L"r30"},         {E::r31, L"r31"},         {E::r32, L"r32"}, {E::r33, L"r33"},
        {E::r34, L"r34"},         {E::r35, L"r35"},         {E::r36, L"r36"}, {E::r37, L"r37"}};
    static const EnumTable table{"EExportVersionParasolid", names};
    return table;
}

const EnumTable& enumTable(EExportVersionCatiaV5) {
    using E = EExportVersionCatiaV5;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"},       {E::current, L"current"},       {E::V5_R16, L"V5_R16"},
        {E::V5_R17, L"V5_R17"},         {E::V5_R18, L"V5_R18"},         {E::V5_R19, L"V5_R19"},
        {E::V5_R20, L"V5_R20"},         {E::V5_R21, L"V5_R21"},         {E::V5_6_R2012, L"V5_6_R2012"},
        {E::V5_6_R2013, L"V5_6_R2013"}, {E::V5_6_R2014, L"V5_6_R2014"}, {E::V5_6_R2015, L"V5_6_R2015"},
        {E::V5_6_R2016, L"V5_6_R2016"}, {E::V5_6_R2017, L"V5_6_R2017"}, {E::V5_6_R2018, L"V5_6_R2018"},
        {E::V5_6_R2019, L"V5_6_R2019"}, {E::V5_6_R2020, L"V5_6_R2020"}, {E::V5_6_R2021, L"V5_6_R2021"},
        {E::V5_6_R2022, L"V5_6_R2022"}, {E::V5_6_R2023, L"V5_6_R2023"}, {E::V5_6_R2024, L"V5_6_R2024"},
        {E::V5_6_R2025, L"V5_6_R2025"}};
    static const EnumTable table{"EExportVersionCatiaV5", names};
    return table;
}

const EnumTable& enumTable(EExportVersionCatiaV4) {
    using E = EExportVersionCatiaV4;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::v4_1_9, L"4.1.9"}, {E::v4_2_0, L"4.2.0"}, {E::v4_2_1, L"4.2.1"},
        {E::v4_2_2, L"4.2.2"},    {E::v4_2_3, L"4.2.3"}, {E::v4_2_4, L"4.2.4"}};
    static const EnumTable table{"EExportVersionCatiaV4", names};
    return table;
}

const EnumTable& enumTable(EExportVersionXCGM) {
    using E = EExportVersionXCGM;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::current, L"current"},
                                          {E::CGM_R2013x, L"CGM_R2013x"},
                                          {E::CGM_R2014, L"CGM_R2014"},
                                          {E::CGM_R2014x, L"CGM_R2014x"},
                                          {E::CGM_R2015x_B1, L"CGM_R2015x_B1"},
                                          {E::CGM_R2015x_B5, L"CGM_R2015x_B5"},
                                          {E::CGM_R2015x_B5_SP1, L"CGM_R2015x_B5_SP1"},
                                          {E::CGM_R2016_1_0, L"CGM_R2016_1_0"},
                                          {E::CGM_R2016_1_1, L"CGM_R2016_1_1"},
                                          {E::CGM_R2017_1_0, L"CGM_R2017_1_0"},
                                          {E::CGM_R2017_1_1, L"CGM_R2017_1_1"},
                                          {E::CGM_R2018_1_0, L"CGM_R2018_1_0"},
                                          {E::CGM_R2018_1_1, L"CGM_R2018_1_1"},
                                          {E::CGM_R2019_1_0, L"CGM_R2019_1_0"},
                                          {E::CGM_R2020_1_0, L"CGM_R2020_1_0"},
                                          {E::CGM_R2021_1_0, L"CGM_R2021_1_0"},
                                          {E::CGM_R2022_1_0, L"CGM_R2022_1_0"},
                                          {E::CGM_R2023_1_0, L"CGM_R2023_1_0"},
                                          {E::CGM_R2024_1_0, L"CGM_R2024_1_0"},
                                          {E::CGM_R2025_1_0, L"CGM_R2025_1_0"}};
    static const EnumTable table{"EExportVersionXCGM", names};
    return table;
}

const EnumTable& enumTable(EExportSaveMode) {
    using E = EExportSaveMode;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::text, L"text"}, {E::binary_le, L"binary_le"}};
    static const EnumTable table{"EExportSaveMode", names};
    return table;
}

const EnumTable& enumTable(EExportCgrCompatibilityMode) {
    using E = EExportCgrCompatibilityMode;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::catia_v5, L"catia_v5"}, {E::catia_3dexperience, L"catia_3dexperience"}};
    static const EnumTable table{"EExportCgrCompatibilityMode", names};
    return table;
}

const EnumTable& enumTable(EDefaultColorMode) {
    using E = EDefaultColorMode;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::false_, L"false"}, {E::catiav5, L"catiav5"}};
    static const EnumTable table{"EDefaultColorMode", names};
    return table;
}

const EnumTable& enumTable(EGraphicalPMIContainerMode) {
    using E = EGraphicalPMIContainerMode;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::true_, L"true"}, {E::false_, L"false"}};
    static const EnumTable table{"EGraphicalPMIContainerMode", names};
    return table;
}

const EnumTable& enumTable(EEdgeCurveMode) {
    using E = EEdgeCurveMode;
    static constexpr EnumEntry names[] = {
        {E::unknown, L"unknown"}, {E::curves_2d_and_3d, L"2d+3d"}, {E::curves_2d, L"2d"}};
    static const EnumTable table{"EEdgeCurveMode", names};
    return table;
}

} // namespace zeq
