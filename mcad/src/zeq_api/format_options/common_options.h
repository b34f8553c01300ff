// The four option groups that are not tied to a file format. In all enumerations `unknown` leaves the choice
// to the translator. Objects are used by one thread at a time.
#pragma once

#include <string>

#include "zeq_api/exchange_common/units.h"
#include "zeq_api/format_options/format_options.h"

namespace zeq {

/// How much the translator logs.
enum class ELogEventLevelType {
    unknown,
    none,
    abort,
    error,
    warning,
    information,
    verbose
};
const EnumTable& enumTable(ELogEventLevelType);

/// Text encoding of the translator's log file.
enum class ELogFileEncodingType {
    unknown,
    us_ascii,
    mbcs,
    utf8,
    utf16
};
const EnumTable& enumTable(ELogFileEncodingType);

/// Whether a log file is begun anew or continued.
enum class ELoggingModeType {
    unknown,
    atomic,
    append
};
const EnumTable& enumTable(ELoggingModeType);

/// What the translator keeps in memory, as bits. Combined bits have no name: they travel as `keep_none`.
enum class EMemoryManagementModeFlags {
    unknown = 255,
    keep_none = 0,
    keep_part_visu = 1,
    keep_part_mech = 2,
    keep_asm_visu = 4,
    keep_asm_mech = 8
};
const EnumTable& enumTable(EMemoryManagementModeFlags);

/// Whether reference geometry is translated.
enum class ETranslateReferenceGeometryMode {
    unknown,
    true_,
    false_
};
const EnumTable& enumTable(ETranslateReferenceGeometryMode);

/// When exact geometry is tessellated for display.
enum class EVisuBRepTessellationModeType {
    unknown,
    auto_,
    never,
    never_at_least_native_pmi
};
const EnumTable& enumTable(EVisuBRepTessellationModeType);

/// How display texts are given.
enum class EVisuTextDataMode {
    unknown,
    as_string,
    as_stroked
};
const EnumTable& enumTable(EVisuTextDataMode);

/// Where the strokes of display texts come from.
enum class EVisuTextStrokingMode {
    unknown,
    from_source_native,
    from_source_generated,
    from_source_generated_without_inner_loops,
    from_source_generated_with_inner_loops,
    from_iop
};
const EnumTable& enumTable(EVisuTextStrokingMode);

/// Which feature tolerances are processed.
enum class EFeatureToleranceProcessingModeType {
    unknown,
    all,
    none
};
const EnumTable& enumTable(EFeatureToleranceProcessingModeType);

/// Which miscellaneous data is processed.
enum class EMiscDataProcessingModeType {
    unknown,
    all,
    none
};
const EnumTable& enumTable(EMiscDataProcessingModeType);

/// Which spline surfaces are approximated anew.
enum class EAcisSplineResurfacingModeType {
    unknown,
    none,
    erroneous_surfaces_only,
    erroneous_and_short_surfaces
};
const EnumTable& enumTable(EAcisSplineResurfacingModeType);

/// Which attributes are processed.
enum class EAttributeProcessingModeType {
    unknown,
    all,
    none
};
const EnumTable& enumTable(EAttributeProcessingModeType);

/// How thoroughly imported geometry is healed.
enum class EAcisHealType {
    unknown,
    none,
    minimal,
    standard
};
const EnumTable& enumTable(EAcisHealType);

/// Which manufacturing data stays attached to the geometry.
enum class EPreserveMfgModeType {
    unknown,
    disabled,
    decorate_all_mfg
};
const EnumTable& enumTable(EPreserveMfgModeType);

/// Whether geometry stays associated with its source.
enum class EPreserveModelAssociativityModeType {
    unknown,
    disabled,
    decorate_all
};
const EnumTable& enumTable(EPreserveModelAssociativityModeType);

/// Which PMI stays attached to the geometry.
enum class EPreservePMIModeType {
    unknown,
    disabled,
    decorate_all_pmi
};
const EnumTable& enumTable(EPreservePMIModeType);

/// Whether topological entities are inspected.
enum class ETopologicalEntityInspectorModeType {
    unknown,
    process,
    disabled
};
const EnumTable& enumTable(ETopologicalEntityInspectorModeType);

/// Where and how the translator logs, and what it keeps in memory.
class OptionsGeneral : public IFormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::general; }

    ELogEventLevelType logEventLevel() const { return m_logEventLevel; }
    void setLogEventLevel(ELogEventLevelType value) { m_logEventLevel = value; }

    ELogFileEncodingType logFileEncoding() const { return m_logFileEncoding; }
    void setLogFileEncoding(ELogFileEncodingType value) { m_logFileEncoding = value; }

    const std::wstring& logFileName() const { return m_logFileName; }
    void setLogFileName(const std::wstring& value) { m_logFileName = value; }

    ELoggingModeType loggingMode() const { return m_loggingMode; }
    void setLoggingMode(ELoggingModeType value) { m_loggingMode = value; }

    const std::wstring& loggingOutputDirectory() const { return m_loggingOutputDirectory; }
    void setLoggingOutputDirectory(const std::wstring& value) { m_loggingOutputDirectory = value; }

    EMemoryManagementModeFlags memoryManagementMode() const { return m_memoryManagementMode; }
    void setMemoryManagementMode(EMemoryManagementModeFlags value) { m_memoryManagementMode = value; }

private:
    struct JsonForm;

    ELogEventLevelType m_logEventLevel = ELogEventLevelType::unknown;
    ELogFileEncodingType m_logFileEncoding = ELogFileEncodingType::unknown;
    std::wstring m_logFileName;
    ELoggingModeType m_loggingMode = ELoggingModeType::unknown;
    std::wstring m_loggingOutputDirectory;
    EMemoryManagementModeFlags m_memoryManagementMode = EMemoryManagementModeFlags::unknown;
};

/// How display data is made: tessellation and texts.
class OptionsGraphical : public IFormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::graphical; }

    double tesselationMaxChordalDeviation() const { return m_tesselationMaxChordalDeviation; }
    void setTesselationMaxChordalDeviation(double value) { m_tesselationMaxChordalDeviation = value; }

    ETranslateReferenceGeometryMode translateReferenceGeometryMode() const {
        return m_translateReferenceGeometryMode;
    }
    void setTranslateReferenceGeometryMode(ETranslateReferenceGeometryMode value) {
        m_translateReferenceGeometryMode = value;
    }

    EVisuBRepTessellationModeType visuBRepTessellationMode() const { return m_visuBRepTessellationMode; }
    void setVisuBRepTessellationMode(EVisuBRepTessellationModeType value) {
        m_visuBRepTessellationMode = value;
    }

    EVisuTextDataMode visuTextDataMode() const { return m_visuTextDataMode; }
    void setVisuTextDataMode(EVisuTextDataMode value) { m_visuTextDataMode = value; }

    EVisuTextStrokingMode visuTextStrokingMode() const { return m_visuTextStrokingMode; }
    void setVisuTextStrokingMode(EVisuTextStrokingMode value) { m_visuTextStrokingMode = value; }

private:
    struct JsonForm;

    double m_tesselationMaxChordalDeviation = 0.0;
    ETranslateReferenceGeometryMode m_translateReferenceGeometryMode =
        ETranslateReferenceGeometryMode::unknown;
    EVisuBRepTessellationModeType m_visuBRepTessellationMode = EVisuBRepTessellationModeType::unknown;
    EVisuTextDataMode m_visuTextDataMode = EVisuTextDataMode::as_string;
    EVisuTextStrokingMode m_visuTextStrokingMode = EVisuTextStrokingMode::unknown;
};

/// Which non-geometric model data is processed.
class OptionsMechanical : public IFormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::mechanical; }

    EFeatureToleranceProcessingModeType featureToleranceProcessingMode() const {
        return m_featureToleranceProcessingMode;
    }
    void setFeatureToleranceProcessingMode(EFeatureToleranceProcessingModeType value) {
        m_featureToleranceProcessingMode = value;
    }

    EMiscDataProcessingModeType miscDataProcessingMode() const { return m_miscDataProcessingMode; }
    void setMiscDataProcessingMode(EMiscDataProcessingModeType value) { m_miscDataProcessingMode = value; }

private:
    struct JsonForm;

    EFeatureToleranceProcessingModeType m_featureToleranceProcessingMode =
        EFeatureToleranceProcessingModeType::unknown;
    EMiscDataProcessingModeType m_miscDataProcessingMode = EMiscDataProcessingModeType::unknown;
};

/// How the translator's modelling kernel treats the geometry.
class OptionsModeler : public IFormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::modeler; }

    EAcisSplineResurfacingModeType acisSplineResurfacingMode() const { return m_acisSplineResurfacingMode; }
    void setAcisSplineResurfacingMode(EAcisSplineResurfacingModeType value) {
        m_acisSplineResurfacingMode = value;
    }

    double splineResurfacingTolerance() const { return m_splineResurfacingTolerance; }
    void setSplineResurfacingTolerance(double value) { m_splineResurfacingTolerance = value; }

    EAttributeProcessingModeType attributeProcessingMode() const { return m_attributeProcessingMode; }
    void setAttributeProcessingMode(EAttributeProcessingModeType value) { m_attributeProcessingMode = value; }

    EAcisHealType acisHealType() const { return m_acisHealType; }
    void setAcisHealType(EAcisHealType value) { m_acisHealType = value; }

    ELengthUnitType modelerUnits() const { return m_modelerUnits; }
    void setModelerUnits(ELengthUnitType value) { m_modelerUnits = value; }

    EPreserveMfgModeType preserveMfgMode() const { return m_preserveMfgMode; }
    void setPreserveMfgMode(EPreserveMfgModeType value) { m_preserveMfgMode = value; }

    EPreserveModelAssociativityModeType preserveModelAssociativityMode() const {
        return m_preserveModelAssociativityMode;
    }
    void setPreserveModelAssociativityMode(EPreserveModelAssociativityModeType value) {
        m_preserveModelAssociativityMode = value;
    }

    EPreservePMIModeType preservePMIMode() const { return m_preservePMIMode; }
    void setPreservePMIMode(EPreservePMIModeType value) { m_preservePMIMode = value; }

    ETopologicalEntityInspectorModeType topologicalEntityInspectorMode() const {
        return m_topologicalEntityInspectorMode;
    }
    void setTopologicalEntityInspectorMode(ETopologicalEntityInspectorModeType value) {
        m_topologicalEntityInspectorMode = value;
    }

private:
    struct JsonForm;

    EAcisSplineResurfacingModeType m_acisSplineResurfacingMode = EAcisSplineResurfacingModeType::unknown;
    double m_splineResurfacingTolerance = 0.0;
    EAttributeProcessingModeType m_attributeProcessingMode = EAttributeProcessingModeType::unknown;
    EAcisHealType m_acisHealType = EAcisHealType::unknown;
    ELengthUnitType m_modelerUnits = ELengthUnitType::unknown;
    EPreserveMfgModeType m_preserveMfgMode = EPreserveMfgModeType::unknown;
    EPreserveModelAssociativityModeType m_preserveModelAssociativityMode =
        EPreserveModelAssociativityModeType::unknown;
    EPreservePMIModeType m_preservePMIMode = EPreservePMIModeType::unknown;
    ETopologicalEntityInspectorModeType m_topologicalEntityInspectorMode =
        ETopologicalEntityInspectorModeType::unknown;
};

} // namespace zeq
