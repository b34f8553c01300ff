// Commands: which options travel for which operation and generation of the protocol.
#include "zeq_api/command/command.h"

#include "zeq_api/command/area.h"
#include "zeq_api/json/document_rows.h"

namespace zeq {

namespace {

/// The options as the implementation that a command accepts; null for any other.
template <class Implementation, class Options>
const ConvexorOptions* implementation(const std::shared_ptr<Options>& options) {
    return dynamic_cast<const Implementation*>(options.get());
}

const ConvexorOptions* require(const ConvexorOptions* options, const char* refusal) {
    if (!options) throw std::invalid_argument(refusal);
    return options;
}

/// Replaces `options` by `made` as it is in the document.
template <class View, class Options>
void replace(std::shared_ptr<Options>& options, std::shared_ptr<Options> made, const View& document,
             const char* refusal) {
    if (!document || document->kind() != json::Kind::object) throw std::invalid_argument(refusal);
    json::readNested(*made, *document);
    options = std::move(made);
}

} // namespace

const EnumTable& enumTable(Command::EType) {
    using E = Command::EType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::info, L"info"},
                                          {E::import, L"import"},
                                          {E::export_, L"export"},
                                          {E::ping, L"ping"}};
    static const EnumTable table{"Command::EType", names};
    return table;
}

struct Command::JsonForm {
    using This = Command;

    /// The options of an import or export command; other commands have none.
    struct Options {
        using Owner = Command;
        std::wstring_view key;

        template <class Members>
        void read(Command& command, Members& members) const {
            const bool isLegacy = command.m_internalInterface == EConvexorInterface::legacy;
            if (command.m_type == EType::import && isLegacy) {
                replace(command.m_legacyImportOptions, newLegacyImportOptions(), members.find(key),
                        "Legacy Import command should contain options.");
            } else if (command.m_type == EType::import) {
                replace(command.m_importOptions, newImportOptions(), members.find(key),
                        "Import command should contain options.");
            } else if (command.m_type == EType::export_ && isLegacy) {
                replace(command.m_legacyExportOptions, newLegacyExportOptions(), members.find(key),
                        "Legacy Export command should contain options.");
            } else if (command.m_type == EType::export_) {
                replace(command.m_exportOptions, newExportOptions(), members.find(key),
                        "Export command should contain options.");
            }
        }
        template <class Sink>
        void write(const Command& command, Sink& sink) const {
            if (const ConvexorOptions* options = optionsToWrite(command))
                sink.member(key, [&](auto&& to) { json::writeNested(*options, to); });
        }
        json::MemberShape describe() const {
            json::ChoiceShape choice{json::ChoiceShape::Asked::siblings, {}};
            const auto add = [&choice](std::vector<json::Condition> conditions,
                                       const std::type_info& options) {
                choice.alternatives.push_back({std::move(conditions), {json::ClassShape{&options}}});
            };
            const json::Condition imports = json::isName(L"command", EType::import, true);
            const json::Condition exports = json::isName(L"command", EType::export_, true);
            const json::Condition isLegacy =
                json::isName(L"convexor_interface", EConvexorInterface::legacy, true);
            add({imports, isLegacy}, typeid(LegacyImportOptionsImpl));
            add({imports}, typeid(ImportOptionsImpl));
            add({exports, isLegacy}, typeid(LegacyExportOptionsImpl));
            add({exports}, typeid(ExportOptionsImpl));
            return {key, {std::move(choice)}, false, true, true};
        }
    };

    static const ConvexorOptions* optionsToWrite(const Command& command) {
        const bool isLegacy = command.m_internalInterface == EConvexorInterface::legacy;
        if (command.m_type == EType::import && isLegacy) {
            return require(implementation<LegacyImportOptionsImpl>(command.m_legacyImportOptions),
                           "Import(LEGACY) command should contain import options(LEGACY)");
        } else if (command.m_type == EType::import) {
            return require(implementation<ImportOptionsImpl>(command.m_importOptions),
                           "Import command should contain import options");
        } else if (command.m_type == EType::export_ && isLegacy) {
            return require(implementation<LegacyExportOptionsImpl>(command.m_legacyExportOptions),
                           "Export(LEGACY) command should contain export options(LEGACY)");
        } else if (command.m_type == EType::export_) {
            return require(implementation<ExportOptionsImpl>(command.m_exportOptions),
                           "Export command should contain export options");
        }
        return nullptr;
    }

    static constexpr json::Form form{
        json::Head{"Command", area::untraced, // the stream's functions have their own trace lines
                   json::throwsInvalid("Command::readObject: invalid json document")},
        detail::exactName(L"convexor_interface", &This::m_internalInterface, detail::becomesDefault),
        detail::exactName(L"command", &This::m_type,
                          detail::refused("Command::readObject: json document has no command type.")),
        Options{L"options"},
        json::field(L"mt_mode", &This::m_useMultiThreading),
    };
};

void Command::writeObject(mp::OutputStream& stream) const {
    json::trace(area::command, "virtual void zeq::Command::writeObject(mp::OutputStream &) const");
    detail::writeStream<JsonForm>(*this, stream);
}

void Command::readObject(mp::InputStream& stream) {
    json::trace(area::command, "virtual void zeq::Command::readObject(mp::InputStream &)");
    detail::readStream<JsonForm>(*this, stream);
}

std::shared_ptr<ImportOptions> Command::newImportOptions() { return std::make_shared<ImportOptionsImpl>(); }

std::shared_ptr<ExportOptions> Command::newExportOptions() { return std::make_shared<ExportOptionsImpl>(); }

std::shared_ptr<LegacyImportOptions> Command::newLegacyImportOptions() {
    return std::make_shared<LegacyImportOptionsImpl>();
}

std::shared_ptr<LegacyExportOptions> Command::newLegacyExportOptions() {
    return std::make_shared<LegacyExportOptionsImpl>();
}

void Command::setImportOptions(const std::shared_ptr<ImportOptions>& options) {
    require(implementation<ImportOptionsImpl>(options),
            "Command::setImportOptions: wrong implementation of ImportOptions interface.");
    m_importOptions = options;
}

void Command::setExportOptions(const std::shared_ptr<ExportOptions>& options) {
    require(implementation<ExportOptionsImpl>(options),
            "Command::setExportOptions: wrong implementation of ExportOptions interface"); // sic
    m_exportOptions = options;
}

} // namespace zeq
