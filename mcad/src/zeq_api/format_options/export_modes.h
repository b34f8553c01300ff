// The choices of the export groups, above all the versions of the formats. In all of them `unknown` leaves
// the choice to the translator. Any thread may use the names.
#pragma once

#include "zeq_api/json/enum_names.h"

namespace zeq {

/// The application protocol of a STEP file.
enum class EExportVersionStep {
    unknown,
    AP203,
    AP214,
    AP242
};
const EnumTable& enumTable(EExportVersionStep);

/// The version of an ACIS file.
enum class EExportVersionAcis {
    unknown,
    current,
    R18,
    R19,
    R20,
    R21,
    R22,
    R23,
    R24,
    R25,
    R2016_1_0,
    R2017_1_0,
    R2018_1_0,
    R2019_1_0,
    R2020_1_0,
    R2021_1_0,
    R2022_1_0,
    R2023_1_0,
    R2024_1_0,
    R2025_1_0
};
const EnumTable& enumTable(EExportVersionAcis);

/// The version of a Parasolid file.
enum class EExportVersionParasolid {
    unknown,
    current,
    r12,
    r13,
    r14,
    r15,
    r16,
    r17,
    r18,
    r19,
    r20,
    r21,
    r22,
    r23,
    r24,
    r25,
    r26,
    r27,
    r28,
    r29,
    r30,
    r31,
    r32,
    r33,
    r34,
    r35,
    r36,
    r37
};
const EnumTable& enumTable(EExportVersionParasolid);

/// The version of a CATIA V5 file.
enum class EExportVersionCatiaV5 {
    unknown,
    current,
    V5_R16,
    V5_R17,
    V5_R18,
    V5_R19,
    V5_R20,
    V5_R21,
    V5_6_R2012,
    V5_6_R2013,
    V5_6_R2014,
    V5_6_R2015,
    V5_6_R2016,
    V5_6_R2017,
    V5_6_R2018,
    V5_6_R2019,
    V5_6_R2020,
    V5_6_R2021,
    V5_6_R2022,
    V5_6_R2023,
    V5_6_R2024,
    V5_6_R2025
};
const EnumTable& enumTable(EExportVersionCatiaV5);

/// The version of a CATIA V4 file.
enum class EExportVersionCatiaV4 {
    unknown,
    v4_1_9,
    v4_2_0,
    v4_2_1,
    v4_2_2,
    v4_2_3,
    v4_2_4
};
const EnumTable& enumTable(EExportVersionCatiaV4);

/// The version of an XCGM file.
enum class EExportVersionXCGM {
    unknown,
    current,
    CGM_R2013x,
    CGM_R2014,
    CGM_R2014x,
    CGM_R2015x_B1,
    CGM_R2015x_B5,
    CGM_R2015x_B5_SP1,
    CGM_R2016_1_0,
    CGM_R2016_1_1,
    CGM_R2017_1_0,
    CGM_R2017_1_1,
    CGM_R2018_1_0,
    CGM_R2018_1_1,
    CGM_R2019_1_0,
    CGM_R2020_1_0,
    CGM_R2021_1_0,
    CGM_R2022_1_0,
    CGM_R2023_1_0,
    CGM_R2024_1_0,
    CGM_R2025_1_0
};
const EnumTable& enumTable(EExportVersionXCGM);

/// Whether an STL file is text or little-endian binary.
enum class EExportSaveMode {
    unknown,
    text,
    binary_le
};
const EnumTable& enumTable(EExportSaveMode);

/// Which product the display data of a CATIA V5 file is made for.
enum class EExportCgrCompatibilityMode {
    unknown,
    catia_v5,
    catia_3dexperience
};
const EnumTable& enumTable(EExportCgrCompatibilityMode);

/// Which colour stands in where the model gives none.
enum class EDefaultColorMode {
    unknown,
    false_,
    catiav5
};
const EnumTable& enumTable(EDefaultColorMode);

/// Whether displayed PMI is exported in a container.
enum class EGraphicalPMIContainerMode {
    unknown,
    true_,
    false_
};
const EnumTable& enumTable(EGraphicalPMIContainerMode);

/// Which curves of an edge are written: those in the parameters of its faces (2d) and the one in space (3d),
/// or the former alone.
enum class EEdgeCurveMode {
    unknown,
    curves_2d_and_3d,
    curves_2d
};
const EnumTable& enumTable(EEdgeCurveMode);

} // namespace zeq
