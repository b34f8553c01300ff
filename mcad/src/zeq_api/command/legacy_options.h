// What a command to the legacy interface says about its file: as interfaces, and as the implementations that
// a command accepts. Objects are used by one thread at a time.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/oda/od_db_handle.h"
#include "platform/oda/units_value.h"
#include "zeq_api/command/legacy_modes.h"
#include "zeq_api/command/options.h"
#include "zeq_api/format_options/import_modes.h"

namespace zeq {

/// The options of an import command to the legacy interface.
class LegacyImportOptions : public ConvexorOptions {
public:
    EOperationType operationType() const override { return EOperationType::import; }
    /// Path of the temporary drawing.
    virtual const std::wstring& temporaryDwg() const = 0;
    virtual void setTemporaryDwg(const std::wstring& path) = 0;
    /// The group for that format; null when there is none.
    virtual std::shared_ptr<IFormatOptions> formatOptions(EFormatType type) const = 0;
    /// Adds the group or replaces the one for the same format; null is ignored.
    virtual void setFormatOptions(std::shared_ptr<IFormatOptions> options) = 0;
    virtual bool hasAlternateSearchPathsFor(const std::wstring& key) const = 0;
    /// Where else files are looked for; empty for a key that has no paths.
    virtual const std::wstring& alternateSearchPathsFor(const std::wstring& key) const = 0;
    /// Sets the paths of that key or replaces them.
    virtual void setAlternateSearchPathsFor(const std::wstring& key, const std::wstring& paths) = 0;
    virtual EImportPMIMode pmiMode() const = 0;
    virtual void setPmiMode(EImportPMIMode mode) = 0;
    virtual EImportProductStructureMode productStructureMode() const = 0;
    virtual void setProductStructureMode(EImportProductStructureMode mode) = 0;
    virtual EImportColorsMode colorsMode() const = 0;
    virtual void setColorsMode(EImportColorsMode mode) = 0;
    virtual EImportHiddenPartsMode hiddenPartsMode() const = 0;
    virtual void setHiddenPartsMode(EImportHiddenPartsMode mode) = 0;
    /// Drawing units of the source.
    virtual OdDb::UnitsValue insUnitsDefSource() const = 0;
    virtual void setInsUnitsDefSource(OdDb::UnitsValue units) = 0;
    virtual EEdgeAttributeModeType catiaV5EdgeAttributeMode() const = 0;
    virtual void setCatiaV5EdgeAttributeMode(EEdgeAttributeModeType mode) = 0;
    virtual bool importAcisNatively() const = 0;
    virtual void setImportAcisNatively(bool on) = 0;
    /// Whether Y and Z of a STEP file change places.
    virtual bool stepRotateYZ() const = 0;
    virtual void setStepRotateYZ(bool on) = 0;
    /// The same for a SolidWorks file.
    virtual bool solidWorksRotateYZ() const = 0;
    virtual void setSolidWorksRotateYZ(bool on) = 0;
    /// Whether the model is scaled by the drawing units.
    virtual bool insUnitsScaling() const = 0;
    virtual void setInsUnitsScaling(bool on) = 0;
    /// Whether the translator works in its multi-process mode.
    virtual bool useInterOpMP() const = 0;
    virtual void setUseInterOpMP(bool on) = 0;
    virtual bool printDebugLog() const = 0;
    virtual void setPrintDebugLog(bool on) = 0;
    // As in ImportOptions; documents of the legacy interface do not carry these.
    virtual bool forceMultiProcessedMode() const = 0;
    virtual void setForceMultiProcessedMode(bool on) = 0;
    virtual bool translateWorldOrientation() const = 0;
    virtual void setTranslateWorldOrientation(bool on) = 0;
    virtual bool translateMiscData() const = 0;
    virtual void setTranslateMiscData(bool on) = 0;
    virtual int modelerMajorVersion() const = 0;
    virtual void setModelerMajorVersion(int version) = 0;
};

/// The options of an export command to the legacy interface.
class LegacyExportOptions : public ConvexorOptions {
public:
    using ComponentNames = std::map<OdDbHandle, std::wstring>;

    EOperationType operationType() const override { return EOperationType::export_; }
    /// Always null: the legacy interface exports without option groups.
    virtual std::shared_ptr<IFormatOptions> formatOptions(EFormatType type) const = 0;
    /// Does nothing.
    virtual void setFormatOptions(std::shared_ptr<IFormatOptions> options) = 0;
    /// Version of the target format; empty for the translator's choice.
    virtual const std::wstring& formatVersion() const = 0;
    virtual void setFormatVersion(const std::wstring& version) = 0;
    /// Bits whose meaning host and translator agree on.
    virtual int geometryFlags() const = 0;
    virtual void setGeometryFlags(int flags) = 0;
    /// Path of the temporary drawing.
    virtual const std::wstring& temporaryDwg() const = 0;
    virtual void setTemporaryDwg(const std::wstring& path) = 0;
    /// Whether the model is scaled by the drawing units.
    virtual bool insUnitsScaling() const = 0;
    virtual void setInsUnitsScaling(bool on) = 0;
    virtual EExportProductStructureMode productStructureMode() const = 0;
    virtual void setProductStructureMode(EExportProductStructureMode mode) = 0;
    virtual EExportHiddenPartsMode hiddenPartsMode() const = 0;
    virtual void setHiddenPartsMode(EExportHiddenPartsMode mode) = 0;
    /// Drawing units of the target.
    virtual OdDb::UnitsValue insUnitsDefTarget() const = 0;
    virtual void setInsUnitsDefTarget(OdDb::UnitsValue units) = 0;
    /// The selected entities.
    virtual const std::vector<OdDbHandle>& entities() const = 0;
    virtual void setEntities(const std::vector<OdDbHandle>& entities) = 0;
    virtual const ComponentNames& componentNames() const = 0;
    virtual void setComponentNames(const ComponentNames& names) = 0;
    /// Inserts or replaces the name of a component.
    virtual void addComponentName(OdDbHandle component, const std::wstring& name) = 0;
    virtual const std::vector<OdDbHandle>& hiddenComponents() const = 0;
    virtual void setHiddenComponents(const std::vector<OdDbHandle>& components) = 0;
    virtual void addHiddenComponent(OdDbHandle component) = 0;
    virtual EExportStepFormatVersion stepFormatVersion() const = 0;
    virtual void setStepFormatVersion(EExportStepFormatVersion version) = 0;
    virtual EExportAcisFormatVersion acisFormatVersion() const = 0;
    virtual void setAcisFormatVersion(EExportAcisFormatVersion version) = 0;
    virtual EExportCatiav4FormatVersion catiav4FormatVersion() const = 0;
    virtual void setCatiav4FormatVersion(EExportCatiav4FormatVersion version) = 0;
    virtual EExportCatiav5FormatVersion catiav5FormatVersion() const = 0;
    virtual void setCatiav5FormatVersion(EExportCatiav5FormatVersion version) = 0;
    virtual EExportParasolidFormatVersion parasolidFormatVersion() const = 0;
    virtual void setParasolidFormatVersion(EExportParasolidFormatVersion version) = 0;
    virtual EExportXcgmFormatVersion xcgmFormatVersion() const = 0;
    virtual void setXcgmFormatVersion(EExportXcgmFormatVersion version) = 0;
    virtual bool printDebugLog() const = 0;
    virtual void setPrintDebugLog(bool on) = 0;
};

/// The import options that a command to the legacy interface accepts.
class LegacyImportOptionsImpl : public LegacyImportOptions {
public:
    /// @throws std::invalid_argument if `object` is no object, or has no file or temporary drawing
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& file() const override { return m_file; }
    void setFile(const std::wstring& file) override { m_file = file; }
    const std::wstring& temporaryDwg() const override { return m_temporaryDwg; }
    void setTemporaryDwg(const std::wstring& path) override { m_temporaryDwg = path; }
    std::shared_ptr<IFormatOptions> formatOptions(EFormatType type) const override;
    void setFormatOptions(std::shared_ptr<IFormatOptions> options) override;
    bool hasAlternateSearchPathsFor(const std::wstring& key) const override;
    const std::wstring& alternateSearchPathsFor(const std::wstring& key) const override;
    void setAlternateSearchPathsFor(const std::wstring& key, const std::wstring& paths) override;
    EImportPMIMode pmiMode() const override { return m_pmiMode; }
    void setPmiMode(EImportPMIMode mode) override { m_pmiMode = mode; }
    EImportProductStructureMode productStructureMode() const override { return m_productStructureMode; }
    void setProductStructureMode(EImportProductStructureMode mode) override { m_productStructureMode = mode; }
    EImportColorsMode colorsMode() const override { return m_colorsMode; }
    void setColorsMode(EImportColorsMode mode) override { m_colorsMode = mode; }
    EImportHiddenPartsMode hiddenPartsMode() const override { return m_hiddenPartsMode; }
    void setHiddenPartsMode(EImportHiddenPartsMode mode) override { m_hiddenPartsMode = mode; }
    OdDb::UnitsValue insUnitsDefSource() const override { return m_insUnitsDefSource; }
    void setInsUnitsDefSource(OdDb::UnitsValue units) override { m_insUnitsDefSource = units; }
    EEdgeAttributeModeType catiaV5EdgeAttributeMode() const override { return m_catiaV5EdgeAttributeMode; }
    void setCatiaV5EdgeAttributeMode(EEdgeAttributeModeType mode) override {
        m_catiaV5EdgeAttributeMode = mode;
    }
    bool importAcisNatively() const override { return m_importAcisNatively; }
    void setImportAcisNatively(bool on) override { m_importAcisNatively = on; }
    bool stepRotateYZ() const override { return m_stepRotateYZ; }
    void setStepRotateYZ(bool on) override { m_stepRotateYZ = on; }
    bool solidWorksRotateYZ() const override { return m_solidWorksRotateYZ; }
    void setSolidWorksRotateYZ(bool on) override { m_solidWorksRotateYZ = on; }
    bool insUnitsScaling() const override { return m_insUnitsScaling; }
    void setInsUnitsScaling(bool on) override { m_insUnitsScaling = on; }
    bool useInterOpMP() const override { return m_useInterOpMP; }
    void setUseInterOpMP(bool on) override { m_useInterOpMP = on; }
    bool printDebugLog() const override { return m_printDebugLog; }
    void setPrintDebugLog(bool on) override { m_printDebugLog = on; }
    bool forceMultiProcessedMode() const override { return m_forceMultiProcessedMode; }
    void setForceMultiProcessedMode(bool on) override { m_forceMultiProcessedMode = on; }
    bool translateWorldOrientation() const override { return m_translateWorldOrientation; }
    void setTranslateWorldOrientation(bool on) override { m_translateWorldOrientation = on; }
    bool translateMiscData() const override { return m_translateMiscData; }
    void setTranslateMiscData(bool on) override { m_translateMiscData = on; }
    int modelerMajorVersion() const override { return m_modelerMajorVersion; }
    void setModelerMajorVersion(int version) override { m_modelerMajorVersion = version; }

private:
    struct JsonForm;

    std::wstring m_file;
    std::wstring m_temporaryDwg;
    FormatOptionsMap m_formatOptions;
    std::map<std::wstring, std::wstring> m_alternateSearchPaths;
    EImportPMIMode m_pmiMode = EImportPMIMode::graphical;
    EImportProductStructureMode m_productStructureMode =
        EImportProductStructureMode::as_mechanical_components;
    EImportColorsMode m_colorsMode = EImportColorsMode::matching_index;
    EImportHiddenPartsMode m_hiddenPartsMode = EImportHiddenPartsMode::import_show;
    OdDb::UnitsValue m_insUnitsDefSource = OdDb::UnitsValue::undefined;
    EEdgeAttributeModeType m_catiaV5EdgeAttributeMode = EEdgeAttributeModeType::wire_body_only;
    bool m_importAcisNatively = false;
    bool m_stepRotateYZ = false;
    bool m_solidWorksRotateYZ = false;
    bool m_insUnitsScaling = false;
    bool m_useInterOpMP = false;
    bool m_printDebugLog = false;
    bool m_forceMultiProcessedMode = false;
    bool m_translateWorldOrientation = false;
    bool m_translateMiscData = false;
    int m_modelerMajorVersion = 31;
};

/// The export options that a command to the legacy interface accepts.
class LegacyExportOptionsImpl : public LegacyExportOptions {
public:
    /// @throws std::invalid_argument if `object` is no object, or has no file or temporary drawing
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& file() const override { return m_file; }
    void setFile(const std::wstring& file) override { m_file = file; }
    std::shared_ptr<IFormatOptions> formatOptions(EFormatType /*type*/) const override { return nullptr; }
    void setFormatOptions(std::shared_ptr<IFormatOptions> /*options*/) override {}
    const std::wstring& formatVersion() const override { return m_formatVersion; }
    void setFormatVersion(const std::wstring& version) override { m_formatVersion = version; }
    int geometryFlags() const override { return m_geometryFlags; }
    void setGeometryFlags(int flags) override { m_geometryFlags = flags; }
    const std::wstring& temporaryDwg() const override { return m_temporaryDwg; }
    void setTemporaryDwg(const std::wstring& path) override { m_temporaryDwg = path; }
    bool insUnitsScaling() const override { return m_insUnitsScaling; }
    void setInsUnitsScaling(bool on) override { m_insUnitsScaling = on; }
    EExportProductStructureMode productStructureMode() const override { return m_productStructureMode; }
    void setProductStructureMode(EExportProductStructureMode mode) override { m_productStructureMode = mode; }
    EExportHiddenPartsMode hiddenPartsMode() const override { return m_hiddenPartsMode; }
    void setHiddenPartsMode(EExportHiddenPartsMode mode) override { m_hiddenPartsMode = mode; }
    OdDb::UnitsValue insUnitsDefTarget() const override { return m_insUnitsDefTarget; }
    void setInsUnitsDefTarget(OdDb::UnitsValue units) override { m_insUnitsDefTarget = units; }
    const std::vector<OdDbHandle>& entities() const override { return m_entities; }
    void setEntities(const std::vector<OdDbHandle>& entities) override { m_entities = entities; }
    const ComponentNames& componentNames() const override { return m_componentNames; }
    void setComponentNames(const ComponentNames& names) override { m_componentNames = names; }
    void addComponentName(OdDbHandle component, const std::wstring& name) override {
        m_componentNames.insert_or_assign(component, name);
    }
    const std::vector<OdDbHandle>& hiddenComponents() const override { return m_hiddenComponents; }
    void setHiddenComponents(const std::vector<OdDbHandle>& components) override {
        m_hiddenComponents = components;
    }
    void addHiddenComponent(OdDbHandle component) override { m_hiddenComponents.push_back(component); }
    EExportStepFormatVersion stepFormatVersion() const override { return m_stepFormatVersion; }
    void setStepFormatVersion(EExportStepFormatVersion version) override { m_stepFormatVersion = version; }
    EExportAcisFormatVersion acisFormatVersion() const override { return m_acisFormatVersion; }
    void setAcisFormatVersion(EExportAcisFormatVersion version) override { m_acisFormatVersion = version; }
    EExportCatiav4FormatVersion catiav4FormatVersion() const override { return m_catiav4FormatVersion; }
    void setCatiav4FormatVersion(EExportCatiav4FormatVersion version) override {
        m_catiav4FormatVersion = version;
    }
    EExportCatiav5FormatVersion catiav5FormatVersion() const override { return m_catiav5FormatVersion; }
    void setCatiav5FormatVersion(EExportCatiav5FormatVersion version) override {
        m_catiav5FormatVersion = version;
    }
    EExportParasolidFormatVersion parasolidFormatVersion() const override { return m_parasolidFormatVersion; }
    void setParasolidFormatVersion(EExportParasolidFormatVersion version) override {
        m_parasolidFormatVersion = version;
    }
    EExportXcgmFormatVersion xcgmFormatVersion() const override { return m_xcgmFormatVersion; }
    void setXcgmFormatVersion(EExportXcgmFormatVersion version) override { m_xcgmFormatVersion = version; }
    bool printDebugLog() const override { return m_printDebugLog; }
    void setPrintDebugLog(bool on) override { m_printDebugLog = on; }

private:
    struct JsonForm;

    std::wstring m_file;
    std::wstring m_formatVersion;
    int m_geometryFlags = 0;
    std::wstring m_temporaryDwg;
    bool m_insUnitsScaling = false;
    EExportProductStructureMode m_productStructureMode =
        EExportProductStructureMode::as_mechanical_components;
    EExportHiddenPartsMode m_hiddenPartsMode = EExportHiddenPartsMode::export_hide;
    OdDb::UnitsValue m_insUnitsDefTarget = OdDb::UnitsValue::undefined;
    std::vector<OdDbHandle> m_entities;
    ComponentNames m_componentNames;
    std::vector<OdDbHandle> m_hiddenComponents;
    EExportStepFormatVersion m_stepFormatVersion{2};
    EExportAcisFormatVersion m_acisFormatVersion{};
    EExportCatiav4FormatVersion m_catiav4FormatVersion{};
    EExportCatiav5FormatVersion m_catiav5FormatVersion{};
    EExportParasolidFormatVersion m_parasolidFormatVersion{};
    EExportXcgmFormatVersion m_xcgmFormatVersion{};
    bool m_printDebugLog = false;
};

} // namespace zeq
