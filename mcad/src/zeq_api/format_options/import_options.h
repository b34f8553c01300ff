// The option groups for importing, one for each format. Objects are used by one thread at a time.
#pragma once

#include <set>
#include <string>

#include "zeq_api/format_options/common_options.h"
#include "zeq_api/format_options/format_options.h"
#include "zeq_api/format_options/import_modes.h"

namespace zeq::imp {

/// The entities that get persistent names. In a group they stay in memory: they are neither written nor read.
using PersistentNameModes = std::set<EPersistentNameProcessingModeType>;

/// How NX models are imported.
class OptionsNX : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::NX; }

    bool importGeometry() const { return m_importGeometry; }
    void setImportGeometry(bool value) { m_importGeometry = value; }

    bool importVisualization() const { return m_importVisualization; }
    void setImportVisualization(bool value) { m_importVisualization = value; }

    bool importRootVisualization() const { return m_importRootVisualization; }
    void setImportRootVisualization(bool value) { m_importRootVisualization = value; }

    const std::wstring& assemblySearchPaths() const { return m_assemblySearchPaths; }
    void setAssemblySearchPaths(const std::wstring& value) { m_assemblySearchPaths = value; }

    EAssemblyPathPrefType assemblyPathPreference() const { return m_assemblyPathPreference; }
    void setAssemblyPathPreference(EAssemblyPathPrefType value) { m_assemblyPathPreference = value; }

    const std::wstring& importConfiguration() const { return m_importConfiguration; }
    void setImportConfiguration(const std::wstring& value) { m_importConfiguration = value; }

    ETranslateHiddenEntitiesModeType hiddenEntitiesMode() const { return m_hiddenEntitiesMode; }
    void setHiddenEntitiesMode(ETranslateHiddenEntitiesModeType value) { m_hiddenEntitiesMode = value; }

    ETranslateSuppressedEntitiesModeType suppressedEntitiesMode() const { return m_suppressedEntitiesMode; }
    void setSuppressedEntitiesMode(ETranslateSuppressedEntitiesModeType value) {
        m_suppressedEntitiesMode = value;
    }

    const PersistentNameModes& persistentNameModes() const { return m_persistentNameModes; }
    void addPersistentNameMode(EPersistentNameProcessingModeType value) {
        m_persistentNameModes.insert(value);
    }

    ETranslateFreeCurvesModeType translateFreeCurvesMode() const { return m_translateFreeCurvesMode; }
    void setTranslateFreeCurvesMode(ETranslateFreeCurvesModeType value) { m_translateFreeCurvesMode = value; }

    ETranslateFreePointsModeType translateFreePointsMode() const { return m_translateFreePointsMode; }
    void setTranslateFreePointsMode(ETranslateFreePointsModeType value) { m_translateFreePointsMode = value; }

    EVisuPMIProcessingMode visuPMIProcessingMode() const { return m_visuPMIProcessingMode; }
    void setVisuPMIProcessingMode(EVisuPMIProcessingMode value) { m_visuPMIProcessingMode = value; }

private:
    struct JsonForm;

    bool m_importGeometry = false;
    bool m_importVisualization = false;
    bool m_importRootVisualization = false;
    std::wstring m_assemblySearchPaths;
    EAssemblyPathPrefType m_assemblyPathPreference = EAssemblyPathPrefType::unknown;
    std::wstring m_importConfiguration;
    ETranslateHiddenEntitiesModeType m_hiddenEntitiesMode = ETranslateHiddenEntitiesModeType::unknown;
    ETranslateSuppressedEntitiesModeType m_suppressedEntitiesMode =
        ETranslateSuppressedEntitiesModeType::unknown;
    PersistentNameModes m_persistentNameModes;
    ETranslateFreeCurvesModeType m_translateFreeCurvesMode = ETranslateFreeCurvesModeType::unknown;
    ETranslateFreePointsModeType m_translateFreePointsMode = ETranslateFreePointsModeType::unknown;
    EVisuPMIProcessingMode m_visuPMIProcessingMode = EVisuPMIProcessingMode::unknown;
};

/// How 3D XML files are imported.
class Options3DXML : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::XML_3D; }

    EVisuPMIProcessingMode visuPMIProcessingMode() const { return m_visuPMIProcessingMode; }
    void setVisuPMIProcessingMode(EVisuPMIProcessingMode value) { m_visuPMIProcessingMode = value; }

private:
    struct JsonForm;

    EVisuPMIProcessingMode m_visuPMIProcessingMode = EVisuPMIProcessingMode::unknown;
};

/// How CATIA V4 models are imported.
class OptionsCatiaV4 : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::CatiaV4; }

    EImportEntities importEntities() const { return m_importEntities; }
    void setImportEntities(EImportEntities value) { m_importEntities = value; }

    ETranslateHiddenEntitiesModeType hiddenEntitiesMode() const { return m_hiddenEntitiesMode; }
    void setHiddenEntitiesMode(ETranslateHiddenEntitiesModeType value) { m_hiddenEntitiesMode = value; }

    const std::wstring& layerFilter() const { return m_layerFilter; }
    void setLayerFilter(const std::wstring& value) { m_layerFilter = value; }

private:
    struct JsonForm;

    EImportEntities m_importEntities = EImportEntities::unknown;
    ETranslateHiddenEntitiesModeType m_hiddenEntitiesMode = ETranslateHiddenEntitiesModeType::unknown;
    std::wstring m_layerFilter;
};

/// How CATIA V5 models are imported.
class OptionsCatiaV5 : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::CatiaV5; }

    EAssemblyPathPrefType assemblyPathPreference() const { return m_assemblyPathPreference; }
    void setAssemblyPathPreference(EAssemblyPathPrefType value) { m_assemblyPathPreference = value; }

    bool importVisualization() const { return m_importVisualization; }
    void setImportVisualization(bool value) { m_importVisualization = value; }

    bool importRootVisualization() const { return m_importRootVisualization; }
    void setImportRootVisualization(bool value) { m_importRootVisualization = value; }

    bool importPreviewGraphics() const { return m_importPreviewGraphics; }
    void setImportPreviewGraphics(bool value) { m_importPreviewGraphics = value; }

    EProcessInWorkObjectModeType processInWorkObject() const { return m_processInWorkObject; }
    void setProcessInWorkObject(EProcessInWorkObjectModeType value) { m_processInWorkObject = value; }

    ENameProcessingModeType nameProcessingMode() const { return m_nameProcessingMode; }
    void setNameProcessingMode(ENameProcessingModeType value) { m_nameProcessingMode = value; }

    EAssemblyUnfoldedViewMode assemblyUnfoldedViewMode() const { return m_assemblyUnfoldedViewMode; }
    void setAssemblyUnfoldedViewMode(EAssemblyUnfoldedViewMode value) { m_assemblyUnfoldedViewMode = value; }

    EImportMfgProcessingModeType mfgProcessingMode() const { return m_mfgProcessingMode; }
    void setMfgProcessingMode(EImportMfgProcessingModeType value) { m_mfgProcessingMode = value; }

    ETranslateHiddenEntitiesModeType hiddenEntitiesMode() const { return m_hiddenEntitiesMode; }
    void setHiddenEntitiesMode(ETranslateHiddenEntitiesModeType value) { m_hiddenEntitiesMode = value; }

    ETranslateSuppressedEntitiesModeType suppressedEntitiesMode() const { return m_suppressedEntitiesMode; }
    void setSuppressedEntitiesMode(ETranslateSuppressedEntitiesModeType value) {
        m_suppressedEntitiesMode = value;
    }

    EVisuPMIProcessingMode visuPMIProcessingMode() const { return m_visuPMIProcessingMode; }
    void setVisuPMIProcessingMode(EVisuPMIProcessingMode value) { m_visuPMIProcessingMode = value; }

    EProcessMfgDataModeType processMfgDataMode() const { return m_processMfgDataMode; }
    void setProcessMfgDataMode(EProcessMfgDataModeType value) { m_processMfgDataMode = value; }

    EDocumentDelayLoadingMode documentDelayLoadingMode() const { return m_documentDelayLoadingMode; }
    void setDocumentDelayLoadingMode(EDocumentDelayLoadingMode value) { m_documentDelayLoadingMode = value; }

    EEdgeAttributeModeType edgeAttributeMode() const { return m_edgeAttributeMode; }
    void setEdgeAttributeMode(EEdgeAttributeModeType value) { m_edgeAttributeMode = value; }

    const PersistentNameModes& persistentNameModes() const { return m_persistentNameModes; }
    void addPersistentNameMode(EPersistentNameProcessingModeType value) {
        m_persistentNameModes.insert(value);
    }

private:
    struct JsonForm;

    EAssemblyPathPrefType m_assemblyPathPreference = EAssemblyPathPrefType::unknown;
    bool m_importVisualization = false;
    bool m_importRootVisualization = false;
    bool m_importPreviewGraphics = false;
    EProcessInWorkObjectModeType m_processInWorkObject = EProcessInWorkObjectModeType::unknown;
    ENameProcessingModeType m_nameProcessingMode = ENameProcessingModeType::unknown;
    EAssemblyUnfoldedViewMode m_assemblyUnfoldedViewMode = EAssemblyUnfoldedViewMode::unknown;
    EImportMfgProcessingModeType m_mfgProcessingMode = EImportMfgProcessingModeType::unknown;
    ETranslateHiddenEntitiesModeType m_hiddenEntitiesMode = ETranslateHiddenEntitiesModeType::unknown;
    ETranslateSuppressedEntitiesModeType m_suppressedEntitiesMode =
        ETranslateSuppressedEntitiesModeType::unknown;
    EVisuPMIProcessingMode m_visuPMIProcessingMode = EVisuPMIProcessingMode::unknown;
    EProcessMfgDataModeType m_processMfgDataMode = EProcessMfgDataModeType::unknown;
    EDocumentDelayLoadingMode m_documentDelayLoadingMode = EDocumentDelayLoadingMode::none;
    EEdgeAttributeModeType m_edgeAttributeMode = EEdgeAttributeModeType::none;
    PersistentNameModes m_persistentNameModes;
};

/// How CATIA V5 drawings are imported.
class OptionsCatiaV5Drawing : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::CatiaV5Drawing; }

    ETranslateHiddenEntitiesModeType hiddenEntitiesMode() const { return m_hiddenEntitiesMode; }
    void setHiddenEntitiesMode(ETranslateHiddenEntitiesModeType value) { m_hiddenEntitiesMode = value; }

    EVisuPMIProcessingMode visuPMIProcessingMode() const { return m_visuPMIProcessingMode; }
    void setVisuPMIProcessingMode(EVisuPMIProcessingMode value) { m_visuPMIProcessingMode = value; }

private:
    struct JsonForm;

    ETranslateHiddenEntitiesModeType m_hiddenEntitiesMode = ETranslateHiddenEntitiesModeType::unknown;
    EVisuPMIProcessingMode m_visuPMIProcessingMode = EVisuPMIProcessingMode::unknown;
};

/// How Creo models are imported.
class OptionsCreo : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::Creo; }

    const std::wstring& alternateSearchPaths() const { return m_alternateSearchPaths; }
    void setAlternateSearchPaths(const std::wstring& value) { m_alternateSearchPaths = value; }

    bool importVisualization() const { return m_importVisualization; }
    void setImportVisualization(bool value) { m_importVisualization = value; }

    bool importRootVisualization() const { return m_importRootVisualization; }
    void setImportRootVisualization(bool value) { m_importRootVisualization = value; }

    bool importPreviewGraphics() const { return m_importPreviewGraphics; }
    void setImportPreviewGraphics(bool value) { m_importPreviewGraphics = value; }

    const std::wstring& importConfiguration() const { return m_importConfiguration; }
    void setImportConfiguration(const std::wstring& value) { m_importConfiguration = value; }

    EImportMfgHolesOnSheetsMode mfgHolesOnSheetsMode() const { return m_mfgHolesOnSheetsMode; }
    void setMfgHolesOnSheetsMode(EImportMfgHolesOnSheetsMode value) { m_mfgHolesOnSheetsMode = value; }

    ETranslateHiddenEntitiesModeType hiddenEntitiesMode() const { return m_hiddenEntitiesMode; }
    void setHiddenEntitiesMode(ETranslateHiddenEntitiesModeType value) { m_hiddenEntitiesMode = value; }

    ETranslateSuppressedEntitiesModeType suppressedEntitiesMode() const { return m_suppressedEntitiesMode; }
    void setSuppressedEntitiesMode(ETranslateSuppressedEntitiesModeType value) {
        m_suppressedEntitiesMode = value;
    }

    EVisuPMIProcessingMode visuPMIProcessingMode() const { return m_visuPMIProcessingMode; }
    void setVisuPMIProcessingMode(EVisuPMIProcessingMode value) { m_visuPMIProcessingMode = value; }

    ETranslateDrivingDimensionsModeType translateDrivingDimensionsMode() const {
        return m_translateDrivingDimensionsMode;
    }
    void setTranslateDrivingDimensionsMode(ETranslateDrivingDimensionsModeType value) {
        m_translateDrivingDimensionsMode = value;
    }

    ETranslateConstructionGeometriesModeType translateConstructionGeometriesMode() const {
        return m_translateConstructionGeometriesMode;
    }
    void setTranslateConstructionGeometriesMode(ETranslateConstructionGeometriesModeType value) {
        m_translateConstructionGeometriesMode = value;
    }

    ETranslateReferenceGeometryMode translateReferenceGeometryMode() const {
        return m_translateReferenceGeometryMode;
    }
    void setTranslateReferenceGeometryMode(ETranslateReferenceGeometryMode value) {
        m_translateReferenceGeometryMode = value;
    }

    const PersistentNameModes& persistentNameModes() const { return m_persistentNameModes; }
    void addPersistentNameMode(EPersistentNameProcessingModeType value) {
        m_persistentNameModes.insert(value);
    }

private:
    struct JsonForm;

    std::wstring m_alternateSearchPaths;
    bool m_importVisualization = false;
    bool m_importRootVisualization = false;
    bool m_importPreviewGraphics = false;
    std::wstring m_importConfiguration;
    EImportMfgHolesOnSheetsMode m_mfgHolesOnSheetsMode = EImportMfgHolesOnSheetsMode::unknown;
    ETranslateHiddenEntitiesModeType m_hiddenEntitiesMode = ETranslateHiddenEntitiesModeType::unknown;
    ETranslateSuppressedEntitiesModeType m_suppressedEntitiesMode =
        ETranslateSuppressedEntitiesModeType::unknown;
    EVisuPMIProcessingMode m_visuPMIProcessingMode = EVisuPMIProcessingMode::unknown;
    ETranslateDrivingDimensionsModeType m_translateDrivingDimensionsMode =
        ETranslateDrivingDimensionsModeType::unknown;
    ETranslateConstructionGeometriesModeType m_translateConstructionGeometriesMode =
        ETranslateConstructionGeometriesModeType::unknown;
    ETranslateReferenceGeometryMode m_translateReferenceGeometryMode =
        ETranslateReferenceGeometryMode::unknown;
    PersistentNameModes m_persistentNameModes;
};

/// How IGES files are imported.
class OptionsIGES : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::IGES; }

    EImportEntities importEntities() const { return m_importEntities; }
    void setImportEntities(EImportEntities value) { m_importEntities = value; }

    ETranslateHiddenEntitiesModeType hiddenEntitiesMode() const { return m_hiddenEntitiesMode; }
    void setHiddenEntitiesMode(ETranslateHiddenEntitiesModeType value) { m_hiddenEntitiesMode = value; }

    ECopiousDataModeType copiousDataMode() const { return m_copiousDataMode; }
    void setCopiousDataMode(ECopiousDataModeType value) { m_copiousDataMode = value; }

    ETrimCurveImportPreferenceModeType trimCurveImportPreferenceMode() const {
        return m_trimCurveImportPreferenceMode;
    }
    void setTrimCurveImportPreferenceMode(ETrimCurveImportPreferenceModeType value) {
        m_trimCurveImportPreferenceMode = value;
    }

private:
    struct JsonForm;

    EImportEntities m_importEntities = EImportEntities::unknown;
    ETranslateHiddenEntitiesModeType m_hiddenEntitiesMode = ETranslateHiddenEntitiesModeType::unknown;
    ECopiousDataModeType m_copiousDataMode = ECopiousDataModeType::single_b_spline;
    ETrimCurveImportPreferenceModeType m_trimCurveImportPreferenceMode =
        ETrimCurveImportPreferenceModeType::from_source;
};

/// How Inventor models are imported.
class OptionsInventor : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::Inventor; }

    const std::wstring& assemblySearchPaths() const { return m_assemblySearchPaths; }
    void setAssemblySearchPaths(const std::wstring& value) { m_assemblySearchPaths = value; }

    EAssemblyPathPrefType assemblyPathPreference() const { return m_assemblyPathPreference; }
    void setAssemblyPathPreference(EAssemblyPathPrefType value) { m_assemblyPathPreference = value; }

    bool importVisualization() const { return m_importVisualization; }
    void setImportVisualization(bool value) { m_importVisualization = value; }

    bool importRootVisualization() const { return m_importRootVisualization; }
    void setImportRootVisualization(bool value) { m_importRootVisualization = value; }

    bool importPreviewGraphics() const { return m_importPreviewGraphics; }
    void setImportPreviewGraphics(bool value) { m_importPreviewGraphics = value; }

    ETranslateHiddenEntitiesModeType hiddenEntitiesMode() const { return m_hiddenEntitiesMode; }
    void setHiddenEntitiesMode(ETranslateHiddenEntitiesModeType value) { m_hiddenEntitiesMode = value; }

    ETranslateSuppressedEntitiesModeType suppressedEntitiesMode() const { return m_suppressedEntitiesMode; }
    void setSuppressedEntitiesMode(ETranslateSuppressedEntitiesModeType value) {
        m_suppressedEntitiesMode = value;
    }

    EActiveStateProcessingModeType activeStateProcessingMode() const { return m_activeStateProcessingMode; }
    void setActiveStateProcessingMode(EActiveStateProcessingModeType value) {
        m_activeStateProcessingMode = value;
    }

    EVisuPMIProcessingMode visuPMIProcessingMode() const { return m_visuPMIProcessingMode; }
    void setVisuPMIProcessingMode(EVisuPMIProcessingMode value) { m_visuPMIProcessingMode = value; }

    const PersistentNameModes& persistentNameModes() const { return m_persistentNameModes; }
    void addPersistentNameMode(EPersistentNameProcessingModeType value) {
        m_persistentNameModes.insert(value);
    }

private:
    struct JsonForm;

    std::wstring m_assemblySearchPaths;
    EAssemblyPathPrefType m_assemblyPathPreference = EAssemblyPathPrefType::unknown;
    bool m_importVisualization = false;
    bool m_importRootVisualization = false;
    bool m_importPreviewGraphics = false;
    ETranslateHiddenEntitiesModeType m_hiddenEntitiesMode = ETranslateHiddenEntitiesModeType::unknown;
    ETranslateSuppressedEntitiesModeType m_suppressedEntitiesMode =
        ETranslateSuppressedEntitiesModeType::unknown;
    EActiveStateProcessingModeType m_activeStateProcessingMode = EActiveStateProcessingModeType::unknown;
    EVisuPMIProcessingMode m_visuPMIProcessingMode = EVisuPMIProcessingMode::unknown;
    PersistentNameModes m_persistentNameModes;
};

/// How JT files are imported.
class OptionsJT : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::JT; }

    bool importGeometry() const { return m_importGeometry; }
    void setImportGeometry(bool value) { m_importGeometry = value; }

    bool importVisualization() const { return m_importVisualization; }
    void setImportVisualization(bool value) { m_importVisualization = value; }

    bool importRootVisualization() const { return m_importRootVisualization; }
    void setImportRootVisualization(bool value) { m_importRootVisualization = value; }

    EImportEdgesModeType importEdgesMode() const { return m_importEdgesMode; }
    void setImportEdgesMode(EImportEdgesModeType value) { m_importEdgesMode = value; }

    EUserPropertiesModeType userPropertiesMode() const { return m_userPropertiesMode; }
    void setUserPropertiesMode(EUserPropertiesModeType value) { m_userPropertiesMode = value; }

    EVisuPMIProcessingMode visuPMIProcessingMode() const { return m_visuPMIProcessingMode; }
    void setVisuPMIProcessingMode(EVisuPMIProcessingMode value) { m_visuPMIProcessingMode = value; }

    const std::wstring& importVisuLOD() const { return m_importVisuLOD; }
    void setImportVisuLOD(const std::wstring& value) { m_importVisuLOD = value; }

private:
    struct JsonForm;

    bool m_importGeometry = false;
    bool m_importVisualization = false;
    bool m_importRootVisualization = false;
    EImportEdgesModeType m_importEdgesMode = EImportEdgesModeType::unknown;
    EUserPropertiesModeType m_userPropertiesMode = EUserPropertiesModeType::unknown;
    EVisuPMIProcessingMode m_visuPMIProcessingMode = EVisuPMIProcessingMode::unknown;
    std::wstring m_importVisuLOD;
};

/// How Parasolid files are imported.
class OptionsParasolid : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::parasolid; }

    ETranslateHiddenEntitiesModeType hiddenEntitiesMode() const { return m_hiddenEntitiesMode; }
    void setHiddenEntitiesMode(ETranslateHiddenEntitiesModeType value) { m_hiddenEntitiesMode = value; }

private:
    struct JsonForm;

    ETranslateHiddenEntitiesModeType m_hiddenEntitiesMode = ETranslateHiddenEntitiesModeType::unknown;
};

/// How Solid Edge models are imported.
class OptionsSolidEdge : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::SolidEdge; }

    const std::wstring& assemblySearchPaths() const { return m_assemblySearchPaths; }
    void setAssemblySearchPaths(const std::wstring& value) { m_assemblySearchPaths = value; }

    EAssemblyPathPrefType assemblyPathPreference() const { return m_assemblyPathPreference; }
    void setAssemblyPathPreference(EAssemblyPathPrefType value) { m_assemblyPathPreference = value; }

    bool importVisualization() const { return m_importVisualization; }
    void setImportVisualization(bool value) { m_importVisualization = value; }

    bool importRootVisualization() const { return m_importRootVisualization; }
    void setImportRootVisualization(bool value) { m_importRootVisualization = value; }

    bool importPreviewGraphics() const { return m_importPreviewGraphics; }
    void setImportPreviewGraphics(bool value) { m_importPreviewGraphics = value; }

    ETranslateHiddenEntitiesModeType hiddenEntitiesMode() const { return m_hiddenEntitiesMode; }
    void setHiddenEntitiesMode(ETranslateHiddenEntitiesModeType value) { m_hiddenEntitiesMode = value; }

    EVisuPMIProcessingMode visuPMIProcessingMode() const { return m_visuPMIProcessingMode; }
    void setVisuPMIProcessingMode(EVisuPMIProcessingMode value) { m_visuPMIProcessingMode = value; }

    const PersistentNameModes& persistentNameModes() const { return m_persistentNameModes; }
    void addPersistentNameMode(EPersistentNameProcessingModeType value) {
        m_persistentNameModes.insert(value);
    }

private:
    struct JsonForm;

    std::wstring m_assemblySearchPaths;
    EAssemblyPathPrefType m_assemblyPathPreference = EAssemblyPathPrefType::unknown;
    bool m_importVisualization = false;
    bool m_importRootVisualization = false;
    bool m_importPreviewGraphics = false;
    ETranslateHiddenEntitiesModeType m_hiddenEntitiesMode = ETranslateHiddenEntitiesModeType::unknown;
    EVisuPMIProcessingMode m_visuPMIProcessingMode = EVisuPMIProcessingMode::unknown;
    PersistentNameModes m_persistentNameModes;
};

/// How SolidWorks models are imported.
class OptionsSolidWorks : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::SolidWorks; }

    bool importVisualization() const { return m_importVisualization; }
    void setImportVisualization(bool value) { m_importVisualization = value; }

    bool importRootVisualization() const { return m_importRootVisualization; }
    void setImportRootVisualization(bool value) { m_importRootVisualization = value; }

    bool importPreviewGraphics() const { return m_importPreviewGraphics; }
    void setImportPreviewGraphics(bool value) { m_importPreviewGraphics = value; }

    const std::wstring& assemblySearchPaths() const { return m_assemblySearchPaths; }
    void setAssemblySearchPaths(const std::wstring& value) { m_assemblySearchPaths = value; }

    EAssemblyPathPrefType assemblyPathPreference() const { return m_assemblyPathPreference; }
    void setAssemblyPathPreference(EAssemblyPathPrefType value) { m_assemblyPathPreference = value; }

    const std::wstring& importConfiguration() const { return m_importConfiguration; }
    void setImportConfiguration(const std::wstring& value) { m_importConfiguration = value; }

    ETranslateHiddenEntitiesModeType hiddenEntitiesMode() const { return m_hiddenEntitiesMode; }
    void setHiddenEntitiesMode(ETranslateHiddenEntitiesModeType value) { m_hiddenEntitiesMode = value; }

    ETranslateSuppressedEntitiesModeType suppressedEntitiesMode() const { return m_suppressedEntitiesMode; }
    void setSuppressedEntitiesMode(ETranslateSuppressedEntitiesModeType value) {
        m_suppressedEntitiesMode = value;
    }

    EImportProductStructureRepresentationMode productStructureMode() const { return m_productStructureMode; }
    void setProductStructureMode(EImportProductStructureRepresentationMode value) {
        m_productStructureMode = value;
    }

    EVisuPMIProcessingMode visuPMIProcessingMode() const { return m_visuPMIProcessingMode; }
    void setVisuPMIProcessingMode(EVisuPMIProcessingMode value) { m_visuPMIProcessingMode = value; }

    const PersistentNameModes& persistentNameModes() const { return m_persistentNameModes; }
    void addPersistentNameMode(EPersistentNameProcessingModeType value) {
        m_persistentNameModes.insert(value);
    }

private:
    struct JsonForm;

    bool m_importVisualization = false;
    bool m_importRootVisualization = false;
    bool m_importPreviewGraphics = false;
    std::wstring m_assemblySearchPaths;
    EAssemblyPathPrefType m_assemblyPathPreference = EAssemblyPathPrefType::unknown;
    std::wstring m_importConfiguration;
    ETranslateHiddenEntitiesModeType m_hiddenEntitiesMode = ETranslateHiddenEntitiesModeType::unknown;
    ETranslateSuppressedEntitiesModeType m_suppressedEntitiesMode =
        ETranslateSuppressedEntitiesModeType::unknown;
    EImportProductStructureRepresentationMode m_productStructureMode =
        EImportProductStructureRepresentationMode::unknown;
    EVisuPMIProcessingMode m_visuPMIProcessingMode = EVisuPMIProcessingMode::unknown;
    PersistentNameModes m_persistentNameModes;
};

/// How SolidWorks drawings are imported; the group has no settings.
class OptionsSolidWorksDrawing : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::SolidWorksDrawing; }

private:
    struct JsonForm;
};

/// How STEP files are imported.
class OptionsSTEP : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::STEP; }

    bool importGeometry() const { return m_importGeometry; }
    void setImportGeometry(bool value) { m_importGeometry = value; }

    bool importVisualization() const { return m_importVisualization; }
    void setImportVisualization(bool value) { m_importVisualization = value; }

    bool importRootVisualization() const { return m_importRootVisualization; }
    void setImportRootVisualization(bool value) { m_importRootVisualization = value; }

    ELayerNameProcessingModeType layerNameProcessingMode() const { return m_layerNameProcessingMode; }
    void setLayerNameProcessingMode(ELayerNameProcessingModeType value) { m_layerNameProcessingMode = value; }

    EVisuPMIProcessingMode visuPMIProcessingMode() const { return m_visuPMIProcessingMode; }
    void setVisuPMIProcessingMode(EVisuPMIProcessingMode value) { m_visuPMIProcessingMode = value; }

private:
    struct JsonForm;

    bool m_importGeometry = false;
    bool m_importVisualization = false;
    bool m_importRootVisualization = false;
    ELayerNameProcessingModeType m_layerNameProcessingMode = ELayerNameProcessingModeType::unknown;
    EVisuPMIProcessingMode m_visuPMIProcessingMode = EVisuPMIProcessingMode::unknown;
};

/// How XCGM files are imported.
class OptionsXCGM : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::XCGM; }

    bool importGeometry() const { return m_importGeometry; }
    void setImportGeometry(bool value) { m_importGeometry = value; }

    bool importVisualization() const { return m_importVisualization; }
    void setImportVisualization(bool value) { m_importVisualization = value; }

    bool importRootVisualization() const { return m_importRootVisualization; }
    void setImportRootVisualization(bool value) { m_importRootVisualization = value; }

    EVisuPMIProcessingMode visuPMIProcessingMode() const { return m_visuPMIProcessingMode; }
    void setVisuPMIProcessingMode(EVisuPMIProcessingMode value) { m_visuPMIProcessingMode = value; }

private:
    struct JsonForm;

    bool m_importGeometry = false;
    bool m_importVisualization = false;
    bool m_importRootVisualization = false;
    EVisuPMIProcessingMode m_visuPMIProcessingMode = EVisuPMIProcessingMode::unknown;
};

} // namespace zeq::imp
