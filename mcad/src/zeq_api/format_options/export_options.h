// The option groups for exporting, one for each format. Objects are used by one thread at a time.
#pragma once

#include <string>

#include "zeq_api/exchange_common/color.h"
#include "zeq_api/exchange_common/units.h"
#include "zeq_api/format_options/export_modes.h"
#include "zeq_api/format_options/format_options.h"
#include "zeq_api/format_options/import_modes.h"

namespace zeq::exp {

/// How STEP files are written.
class OptionsSTEP : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::STEP; }

    ELengthUnitType units() const { return m_units; }
    void setUnits(ELengthUnitType value) { m_units = value; }

    EExportVersionStep version() const { return m_version; }
    void setVersion(EExportVersionStep value) { m_version = value; }

    double fileTolerance() const { return m_fileTolerance; }
    void setFileTolerance(double value) { m_fileTolerance = value; }

    ELayerNameProcessingModeType layerNameProcessingMode() const { return m_layerNameProcessingMode; }
    void setLayerNameProcessingMode(ELayerNameProcessingModeType value) { m_layerNameProcessingMode = value; }

private:
    struct JsonForm;

    ELengthUnitType m_units = ELengthUnitType::millimeter;
    EExportVersionStep m_version = EExportVersionStep::AP242;
    double m_fileTolerance = 1e-06;
    ELayerNameProcessingModeType m_layerNameProcessingMode = ELayerNameProcessingModeType::asm_rep;
};

/// How ACIS files are written.
class OptionsAcis : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::ACIS; }

    EExportVersionAcis version() const { return m_version; }
    void setVersion(EExportVersionAcis value) { m_version = value; }

    ELengthUnitType units() const { return m_units; }
    void setUnits(ELengthUnitType value) { m_units = value; }

private:
    struct JsonForm;

    EExportVersionAcis m_version = EExportVersionAcis::current;
    ELengthUnitType m_units = ELengthUnitType::millimeter;
};

/// How Parasolid files are written.
class OptionsParasolid : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::parasolid; }

    EExportVersionParasolid version() const { return m_version; }
    void setVersion(EExportVersionParasolid value) { m_version = value; }

private:
    struct JsonForm;

    EExportVersionParasolid m_version = EExportVersionParasolid::current;
};

/// How CATIA V5 models are written.
class OptionsCatiaV5 : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::CatiaV5; }

    EExportVersionCatiaV5 version() const { return m_version; }
    void setVersion(EExportVersionCatiaV5 value) { m_version = value; }

    EDefaultColorMode graphicalDefaultColorMode() const { return m_graphicalDefaultColorMode; }
    void setGraphicalDefaultColorMode(EDefaultColorMode value) { m_graphicalDefaultColorMode = value; }

    EExportCgrCompatibilityMode cgrCompatibilityMode() const { return m_cgrCompatibilityMode; }
    void setCgrCompatibilityMode(EExportCgrCompatibilityMode value) { m_cgrCompatibilityMode = value; }

private:
    struct JsonForm;

    EExportVersionCatiaV5 m_version = EExportVersionCatiaV5::current;
    EDefaultColorMode m_graphicalDefaultColorMode = EDefaultColorMode::catiav5;
    EExportCgrCompatibilityMode m_cgrCompatibilityMode = EExportCgrCompatibilityMode::unknown;
};

/// How CATIA V4 models are written.
class OptionsCatiaV4 : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::CatiaV4; }

    const std::wstring& authorName() const { return m_authorName; }
    void setAuthorName(const std::wstring& value) { m_authorName = value; }

    const std::wstring& modelName() const { return m_modelName; }
    void setModelName(const std::wstring& value) { m_modelName = value; }

    EExportVersionCatiaV4 version() const { return m_version; }
    void setVersion(EExportVersionCatiaV4 value) { m_version = value; }

    EEdgeCurveMode edgeCurveMode() const { return m_edgeCurveMode; }
    void setEdgeCurveMode(EEdgeCurveMode value) { m_edgeCurveMode = value; }

private:
    struct JsonForm;

    std::wstring m_authorName;
    std::wstring m_modelName;
    EExportVersionCatiaV4 m_version = EExportVersionCatiaV4::unknown;
    EEdgeCurveMode m_edgeCurveMode = EEdgeCurveMode::unknown;
};

/// How IGES files are written.
class OptionsIGES : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::IGES; }

    ELengthUnitType units() const { return m_units; }
    void setUnits(ELengthUnitType value) { m_units = value; }

private:
    struct JsonForm;

    ELengthUnitType m_units = ELengthUnitType::millimeter;
};

/// How STL files are written.
class OptionsSTL : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::STL; }

    EExportSaveMode saveMode() const { return m_saveMode; }
    void setSaveMode(EExportSaveMode value) { m_saveMode = value; }

private:
    struct JsonForm;

    EExportSaveMode m_saveMode = EExportSaveMode::unknown;
};

/// How 3D PDF documents are written.
class OptionsPDF : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::PDF_3D; }

    const ExcColor& backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const ExcColor& value) { m_backgroundColor = value; }

private:
    struct JsonForm;

    ExcColor m_backgroundColor;
};

/// How 3D XML files are written.
class Options3DXML : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::XML_3D; }

    EDefaultColorMode defaultColorMode() const { return m_defaultColorMode; }
    void setDefaultColorMode(EDefaultColorMode value) { m_defaultColorMode = value; }

    EGraphicalPMIContainerMode graphicalPMIContainerMode() const { return m_graphicalPMIContainerMode; }
    void setGraphicalPMIContainerMode(EGraphicalPMIContainerMode value) {
        m_graphicalPMIContainerMode = value;
    }

private:
    struct JsonForm;

    EDefaultColorMode m_defaultColorMode = EDefaultColorMode::unknown;
    EGraphicalPMIContainerMode m_graphicalPMIContainerMode = EGraphicalPMIContainerMode::unknown;
};

/// How XCGM files are written.
class OptionsXCGM : public FormatOptions {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EFormatType formatType() const override { return EFormatType::XCGM; }

    EExportVersionXCGM version() const { return m_version; }
    void setVersion(EExportVersionXCGM value) { m_version = value; }

    EDefaultColorMode graphicalDefaultColorMode() const { return m_graphicalDefaultColorMode; }
    void setGraphicalDefaultColorMode(EDefaultColorMode value) { m_graphicalDefaultColorMode = value; }

    EGraphicalPMIContainerMode graphicalPMIContainerMode() const { return m_graphicalPMIContainerMode; }
    void setGraphicalPMIContainerMode(EGraphicalPMIContainerMode value) {
        m_graphicalPMIContainerMode = value;
    }

private:
    struct JsonForm;

    EExportVersionXCGM m_version = EExportVersionXCGM::current;
    EDefaultColorMode m_graphicalDefaultColorMode = EDefaultColorMode::unknown;
    EGraphicalPMIContainerMode m_graphicalPMIContainerMode = EGraphicalPMIContainerMode::unknown;
};

} // namespace zeq::exp
