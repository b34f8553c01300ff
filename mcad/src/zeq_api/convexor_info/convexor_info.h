// The translator's description of itself. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "mp/serializable.h"
#include "zeq_api/command/convexor_interface.h"
#include "zeq_api/convexor_info/format.h"
#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// Who reads and writes Parasolid data: the translator itself or a Parasolid kernel.
enum class EParasolidMode {
    direct,
    kernel
};
const EnumTable& enumTable(EParasolidMode);

/// A modelling core of another maker inside the translator.
class ThirdpartyCore : public IJsonObject {
public:
    /// @throws std::invalid_argument if `object` is no object
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& name() const { return m_name; }
    void setName(const std::wstring& name) { m_name = name; }

    const std::wstring& version() const { return m_version; }
    void setVersion(const std::wstring& version) { m_version = version; }

private:
    struct JsonForm;

    std::wstring m_name;
    std::wstring m_version;
};

/// What the translator is and what it can do: the answer to an info command.
///
/// `new...` appends an empty element and returns it, still owned by the list; `add...` ignores null.
class ConvexorInfo : public mp::ISerializable {
public:
    /// @throws std::runtime_error if the document cannot be written; then nothing has been
    void writeObject(mp::OutputStream& stream) const override;
    /// Appends to the lists.
    /// @throws std::invalid_argument if the stream is not one JSON object
    void readObject(mp::InputStream& stream) override;

    const std::wstring& name() const { return m_name; }
    void setName(const std::wstring& name) { m_name = name; }

    const std::wstring& version() const { return m_version; }
    void setVersion(const std::wstring& version) { m_version = version; }

    EConvexorInterface requestedInterface() const { return m_requestedInterface; }
    void setRequestedInterface(EConvexorInterface value) { m_requestedInterface = value; }

    const std::vector<std::shared_ptr<ThirdpartyCore>>& thirdpartyCores() const { return m_thirdpartyCores; }
    ThirdpartyCore* newThirdpartyCore();
    void addThirdpartyCore(const std::shared_ptr<ThirdpartyCore>& core);

    EParasolidMode parasolidMode() const { return m_parasolidMode; }
    void setParasolidMode(EParasolidMode mode) { m_parasolidMode = mode; }

    const std::vector<std::shared_ptr<Format>>& importFormats() const { return m_importFormats; }
    Format* newImportFormat();
    void addImportFormat(const std::shared_ptr<Format>& format);
    void addImportFormats(const std::vector<std::shared_ptr<Format>>& formats);

    const std::vector<std::shared_ptr<Format>>& exportFormats() const { return m_exportFormats; }
    Format* newExportFormat();
    void addExportFormat(const std::shared_ptr<Format>& format);
    void addExportFormats(const std::vector<std::shared_ptr<Format>>& formats);

    /// Major version of the modelling kernel whose geometry the translator writes.
    int modelerMajorVersion() const { return m_modelerMajorVersion; }
    void setModelerMajorVersion(int version) { m_modelerMajorVersion = version; }

private:
    struct JsonForm;

    std::wstring m_name;
    std::wstring m_version;
    EConvexorInterface m_requestedInterface = EConvexorInterface::uconnect;
    std::vector<std::shared_ptr<ThirdpartyCore>> m_thirdpartyCores;
    EParasolidMode m_parasolidMode = EParasolidMode::direct;
    std::vector<std::shared_ptr<Format>> m_importFormats;
    std::vector<std::shared_ptr<Format>> m_exportFormats;
    int m_modelerMajorVersion = 0;
};

} // namespace zeq
