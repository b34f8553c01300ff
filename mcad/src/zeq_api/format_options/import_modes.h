// The choices of the import groups; export groups offer some of them too. Unless noted, `unknown` leaves the
// choice to the translator. Any thread may use the names.
#pragma once

#include "zeq_api/json/enum_names.h"

namespace zeq {

/// Which PMI is imported for display.
enum class EVisuPMIProcessingMode {
    unknown,
    all,
    none
};
const EnumTable& enumTable(EVisuPMIProcessingMode);

/// Whether only the root entities of a file are imported, or those below them as well.
enum class EImportEntities {
    unknown,
    root_only,
    root_and_nonroot
};
const EnumTable& enumTable(EImportEntities);

/// Which entities that the source hides are translated.
enum class ETranslateHiddenEntitiesModeType {
    unknown,
    all,
    none,
    only_with_visible_links
};
const EnumTable& enumTable(ETranslateHiddenEntitiesModeType);

/// Which entities that the source suppresses are translated.
enum class ETranslateSuppressedEntitiesModeType {
    unknown,
    all,
    none
};
const EnumTable& enumTable(ETranslateSuppressedEntitiesModeType);

/// Where the files of an assembly's components are looked for, and in which order.
enum class EAssemblyPathPrefType {
    unknown,
    subfolders_first,
    root_folder_only,
    root_folder_first
};
const EnumTable& enumTable(EAssemblyPathPrefType);

/// Whether the object that was in work when the model was saved is processed.
enum class EProcessInWorkObjectModeType {
    unknown,
    true_,
    false_
};
const EnumTable& enumTable(EProcessInWorkObjectModeType);

/// Which form of the names is imported.
enum class ENameProcessingModeType {
    unknown,
    short_names,
    long_names
};
const EnumTable& enumTable(ENameProcessingModeType);

/// Whether the unfolded view of an assembly is imported.
enum class EAssemblyUnfoldedViewMode {
    unknown,
    true_,
    false_
};
const EnumTable& enumTable(EAssemblyUnfoldedViewMode);

/// What is imported of manufacturing: its features or the geometry that results.
enum class EImportMfgProcessingModeType {
    unknown,
    features_only,
    results_only
};
const EnumTable& enumTable(EImportMfgProcessingModeType);

/// Which manufacturing data is processed.
enum class EProcessMfgDataModeType {
    unknown,
    all,
    none
};
const EnumTable& enumTable(EProcessMfgDataModeType);

/// Which documents are loaded only when they are needed. The only one without `unknown`.
enum class EDocumentDelayLoadingMode {
    none,
    part
};
const EnumTable& enumTable(EDocumentDelayLoadingMode);

/// Which edges carry attributes.
enum class EEdgeAttributeModeType {
    unknown,
    none,
    all,
    pmi_owners_only,
    wire_body_only
};
const EnumTable& enumTable(EEdgeAttributeModeType);

/// Whether manufacturing holes on sheets are imported.
enum class EImportMfgHolesOnSheetsMode {
    unknown,
    ignore,
    include
};
const EnumTable& enumTable(EImportMfgHolesOnSheetsMode);

/// Whether driving dimensions are translated.
enum class ETranslateDrivingDimensionsModeType {
    unknown,
    true_,
    false_
};
const EnumTable& enumTable(ETranslateDrivingDimensionsModeType);

/// Whether construction geometry is translated.
enum class ETranslateConstructionGeometriesModeType {
    unknown,
    true_,
    false_
};
const EnumTable& enumTable(ETranslateConstructionGeometriesModeType);

/// What the point lists of IGES (copious data) become.
enum class ECopiousDataModeType {
    unknown,
    single_b_spline,
    multiple_b_splines,
    multiple_lines
};
const EnumTable& enumTable(ECopiousDataModeType);

/// Which curves trim a surface: those in its parameters (2d) or those in space (3d). Both are one value,
/// written as "2d", and the value 2 has no name.
enum class ETrimCurveImportPreferenceModeType {
    unknown,
    curves_2d = 1,
    curves_3d = curves_2d,
    from_source = 3
};
const EnumTable& enumTable(ETrimCurveImportPreferenceModeType);

/// Whether inactive states of a model are processed as well.
enum class EActiveStateProcessingModeType {
    unknown,
    active_only,
    active_and_inactive
};
const EnumTable& enumTable(EActiveStateProcessingModeType);

/// Which edges are imported.
enum class EImportEdgesModeType {
    unknown,
    all,
    none
};
const EnumTable& enumTable(EImportEdgesModeType);

/// Which user-defined properties are translated.
enum class EUserPropertiesModeType {
    unknown,
    translate_all,
    translate_none
};
const EnumTable& enumTable(EUserPropertiesModeType);

/// Which curves that bound no face are translated.
enum class ETranslateFreeCurvesModeType {
    unknown,
    all,
    none
};
const EnumTable& enumTable(ETranslateFreeCurvesModeType);

/// Which points that belong to no body are translated.
enum class ETranslateFreePointsModeType {
    unknown,
    all,
    none
};
const EnumTable& enumTable(ETranslateFreePointsModeType);

/// Where the product structure comes from: the assembly, its saved display data, or both.
enum class EImportProductStructureRepresentationMode {
    unknown,
    asm_rep,
    saved_visu_rep,
    asm_rep_and_saved_visu_rep
};
const EnumTable& enumTable(EImportProductStructureRepresentationMode);

/// Where the names of layers stand: in the assembly or in its saved display data.
enum class ELayerNameProcessingModeType {
    unknown,
    asm_rep,
    saved_visu_rep
};
const EnumTable& enumTable(ELayerNameProcessingModeType);

/// The kinds of entities that get persistent names, as bits.
enum class EPersistentNameProcessingModeType {
    unknown = 255,
    none = 0,
    vertex = 1,
    edge = 2,
    face = 4,
    instance = 16
};
const EnumTable& enumTable(EPersistentNameProcessingModeType);

} // namespace zeq
