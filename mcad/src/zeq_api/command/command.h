// The one document with which the host asks the translator to do something. Objects are used by one thread at
// a time.
#pragma once

#include <memory>

#include "mp/serializable.h"
#include "zeq_api/command/convexor_interface.h"
#include "zeq_api/command/legacy_options.h"
#include "zeq_api/command/options.h"
#include "zeq_api/json/enum_names.h"

namespace zeq {

/// A request to the translator: what it is, whether it is alive, or to translate a file in or out.
///
/// The options of all operations and interfaces are kept side by side; type and interface say which of them
/// travel.
class Command : public mp::ISerializable {
public:
    enum class EType {
        unknown,
        info,
        import,
        export_,
        ping
    };

    /// @throws std::invalid_argument if the options that type and interface call for are missing
    /// @throws std::runtime_error if the document cannot be written; then nothing has been
    void writeObject(mp::OutputStream& stream) const override;
    /// Replaces the options that the document carries and leaves the others alone.
    /// @throws std::invalid_argument if the stream is not one JSON object with a command and its options;
    /// type
    ///         and interface may have changed by then
    void readObject(mp::InputStream& stream) override;

    EType type() const { return m_type; }
    void setType(EType type) { m_type = type; }

    EConvexorInterface internalInterface() const { return m_internalInterface; }
    void setInternalInterface(EConvexorInterface value) { m_internalInterface = value; }

    /// New options with their defaults, not attached to any command.
    static std::shared_ptr<ImportOptions> newImportOptions();
    static std::shared_ptr<ExportOptions> newExportOptions();
    static std::shared_ptr<LegacyImportOptions> newLegacyImportOptions();
    static std::shared_ptr<LegacyExportOptions> newLegacyExportOptions();

    std::shared_ptr<ImportOptions> importOptions() const { return m_importOptions; }
    /// @throws std::invalid_argument if `options` is null or no ImportOptionsImpl
    void setImportOptions(const std::shared_ptr<ImportOptions>& options);

    std::shared_ptr<ExportOptions> exportOptions() const { return m_exportOptions; }
    /// @throws std::invalid_argument if `options` is null or no ExportOptionsImpl
    void setExportOptions(const std::shared_ptr<ExportOptions>& options);

    std::shared_ptr<LegacyImportOptions> legacyImportOptions() const { return m_legacyImportOptions; }
    void setLegacyImportOptions(const std::shared_ptr<LegacyImportOptions>& options) {
        m_legacyImportOptions = options;
    }

    std::shared_ptr<LegacyExportOptions> legacyExportOptions() const { return m_legacyExportOptions; }
    void setLegacyExportOptions(const std::shared_ptr<LegacyExportOptions>& options) {
        m_legacyExportOptions = options;
    }

    /// Whether the translator may work in several threads.
    bool useMultiThreading() const { return m_useMultiThreading; }
    void setUseMultiThreading(bool use) { m_useMultiThreading = use; }

private:
    struct JsonForm;

    EType m_type = EType::unknown;
    EConvexorInterface m_internalInterface = EConvexorInterface::uconnect;
    std::shared_ptr<ImportOptions> m_importOptions;
    std::shared_ptr<ExportOptions> m_exportOptions;
    std::shared_ptr<LegacyImportOptions> m_legacyImportOptions;
    std::shared_ptr<LegacyExportOptions> m_legacyExportOptions;
    bool m_useMultiThreading = false;
};
const EnumTable& enumTable(Command::EType);

} // namespace zeq
