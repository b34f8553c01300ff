// What an import or export command says about its file: as interfaces, and as the implementations that a
// command accepts. Objects are used by one thread at a time.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "zeq_api/format_options/format_options.h"
#include "zeq_api/format_options/format_type.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// The options of a command that translates a file.
class ConvexorOptions : public IJsonObject {
public:
    /// Path of the file to read or to write.
    virtual const std::wstring& file() const = 0;
    virtual void setFile(const std::wstring& file) = 0;
    virtual EOperationType operationType() const = 0;
};

/// The options of an import command.
class ImportOptions : public ConvexorOptions {
public:
    EOperationType operationType() const override { return EOperationType::import; }
    /// Whether the translator is to work in several processes.
    virtual bool forceMultiProcessedMode() const = 0;
    virtual void setForceMultiProcessedMode(bool force) = 0;
    virtual bool translateWorldOrientation() const = 0;
    virtual void setTranslateWorldOrientation(bool translate) = 0;
    /// Whether layers, materials and properties are wanted.
    virtual bool translateMiscData() const = 0;
    virtual void setTranslateMiscData(bool translate) = 0;
    /// The group for that format; null when there is none.
    virtual std::shared_ptr<IFormatOptions> formatOptions(EFormatType type) const = 0;
    /// Adds the group or replaces the one for the same format; null is ignored.
    virtual void setFormatOptions(std::shared_ptr<IFormatOptions> options) = 0;
    /// Major version of the modelling kernel that is to read the geometry.
    virtual int modelerMajorVersion() const = 0;
    virtual void setModelerMajorVersion(int version) = 0;
};

/// The options of an export command.
class ExportOptions : public ConvexorOptions {
public:
    EOperationType operationType() const override { return EOperationType::export_; }
    /// Version of the target format; empty for the translator's choice.
    virtual const std::wstring& formatVersion() const = 0;
    virtual void setFormatVersion(const std::wstring& version) = 0;
    /// Bits whose meaning host and translator agree on.
    virtual int geometryFlags() const = 0;
    virtual void setGeometryFlags(int flags) = 0;
    /// The group for that format; null when there is none.
    virtual std::shared_ptr<IFormatOptions> formatOptions(EFormatType type) const = 0;
    /// Adds the group or replaces the one for the same format; null is ignored.
    virtual void setFormatOptions(std::shared_ptr<IFormatOptions> options) = 0;
};

/// Option groups by format, in the order in which they are written.
using FormatOptionsMap = std::map<EFormatType, std::shared_ptr<IFormatOptions>>;

/// The import options that a command accepts.
class ImportOptionsImpl : public ImportOptions {
public:
    /// @throws std::invalid_argument if `object` is no object or has no file path
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& file() const override { return m_file; }
    void setFile(const std::wstring& file) override { m_file = file; }
    bool forceMultiProcessedMode() const override { return m_forceMultiProcessedMode; }
    void setForceMultiProcessedMode(bool force) override { m_forceMultiProcessedMode = force; }
    bool translateWorldOrientation() const override { return m_translateWorldOrientation; }
    void setTranslateWorldOrientation(bool translate) override { m_translateWorldOrientation = translate; }
    bool translateMiscData() const override { return m_translateMiscData; }
    void setTranslateMiscData(bool translate) override { m_translateMiscData = translate; }
    std::shared_ptr<IFormatOptions> formatOptions(EFormatType type) const override;
    void setFormatOptions(std::shared_ptr<IFormatOptions> options) override;
    int modelerMajorVersion() const override { return m_modelerMajorVersion; }
    void setModelerMajorVersion(int version) override { m_modelerMajorVersion = version; }

private:
    struct JsonForm;

    std::wstring m_file;
    bool m_forceMultiProcessedMode = false;
    bool m_translateWorldOrientation = false;
    bool m_translateMiscData = false;
    FormatOptionsMap m_formatOptions;
    int m_modelerMajorVersion = 31;
};

/// The export options that a command accepts.
class ExportOptionsImpl : public ExportOptions {
public:
    /// @throws std::invalid_argument if `object` is no object or has no file path
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& file() const override { return m_file; }
    void setFile(const std::wstring& file) override { m_file = file; }
    const std::wstring& formatVersion() const override { return m_formatVersion; }
    void setFormatVersion(const std::wstring& version) override { m_formatVersion = version; }
    int geometryFlags() const override { return m_geometryFlags; }
    void setGeometryFlags(int flags) override { m_geometryFlags = flags; }
    std::shared_ptr<IFormatOptions> formatOptions(EFormatType type) const override;
    void setFormatOptions(std::shared_ptr<IFormatOptions> options) override;

private:
    struct JsonForm;

    std::wstring m_file;
    std::wstring m_formatVersion;
    int m_geometryFlags = 0;
    FormatOptionsMap m_formatOptions;
};

} // namespace zeq
