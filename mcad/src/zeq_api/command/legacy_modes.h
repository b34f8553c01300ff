// What the options of the legacy interface choose from. Any thread may use the names.
#pragma once

#include "platform/oda/units_value.h"
#include "zeq_api/json/enum_names.h"

namespace OdDb {
const zeq::EnumTable& enumTable(UnitsValue);
} // namespace OdDb

namespace zeq {

/// What becomes of PMI.
enum class EImportPMIMode {
    none,
    graphical,
    semantic
};
const EnumTable& enumTable(EImportPMIMode);

/// What an imported assembly becomes.
enum class EImportProductStructureMode {
    none,
    as_blocks,
    as_mechanical_components
};
const EnumTable& enumTable(EImportProductStructureMode);

/// What a colour of the file becomes.
enum class EImportColorsMode {
    rgb,
    matching_index,
    nearest_index
};
const EnumTable& enumTable(EImportColorsMode);

/// What becomes of parts that the file hides.
enum class EImportHiddenPartsMode {
    import_hide,
    import_show,
    do_not_import
};
const EnumTable& enumTable(EImportHiddenPartsMode);

/// What of the drawing becomes an assembly.
enum class EExportProductStructureMode {
    none,
    as_mechanical_components
};
const EnumTable& enumTable(EExportProductStructureMode);

/// What becomes of parts that the drawing hides.
enum class EExportHiddenPartsMode {
    export_hide,
    do_not_export
};
const EnumTable& enumTable(EExportHiddenPartsMode);

// Versions of export formats are numbers that host and translator agree on; they have no names here.

/// Version of an exported STEP file.
enum class EExportStepFormatVersion : int {
};
void travelsAsNumber(EExportStepFormatVersion); // declared only, as a mark
/// Version of an exported ACIS file.
enum class EExportAcisFormatVersion : int {
};
void travelsAsNumber(EExportAcisFormatVersion); // declared only, as a mark
/// Version of an exported CATIA V4 file.
enum class EExportCatiav4FormatVersion : int {
};
void travelsAsNumber(EExportCatiav4FormatVersion); // declared only, as a mark
/// Version of an exported CATIA V5 file.
enum class EExportCatiav5FormatVersion : int {
};
void travelsAsNumber(EExportCatiav5FormatVersion); // declared only, as a mark
/// Version of an exported Parasolid file.
enum class EExportParasolidFormatVersion : int {
};
void travelsAsNumber(EExportParasolidFormatVersion); // declared only, as a mark
/// Version of an exported XCGM file.
enum class EExportXcgmFormatVersion : int {
};
void travelsAsNumber(EExportXcgmFormatVersion); // declared only, as a mark

} // namespace zeq
