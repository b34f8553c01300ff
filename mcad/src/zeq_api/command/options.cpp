// The options of import and export commands.
#include "zeq_api/command/options.h"

#include "zeq_api/command/area.h"
#include "zeq_api/command/format_groups.h"
#include "zeq_api/json/document_rows.h"

namespace zeq {

struct ImportOptionsImpl::JsonForm {
    using This = ImportOptionsImpl;
    static constexpr json::Form form{
        json::Head{"ImportOptionsImpl", area::command,
                   json::throwsInvalid("ImportOptionsImpl::readObject: !object.IsObject()")},
        detail::logged(
            "ImportOptions.file = ",
            detail::mandatory(L"file", &This::m_file,
                              "ImportOptionsImpl::readObject: json document has no valid file path.")),
        json::field(L"force_mp_mode", &This::m_forceMultiProcessedMode),
        json::field(L"translate_world_orientation", &This::m_translateWorldOrientation),
        json::field(L"translate_misc_data", &This::m_translateMiscData),
        detail::formatGroups(L"format_options", &This::m_formatOptions),
        json::field(L"modeler_version", &This::m_modelerMajorVersion),
    };
};

ZEQ_JSON_OBJECT(ImportOptionsImpl)

std::shared_ptr<IFormatOptions> ImportOptionsImpl::formatOptions(EFormatType type) const {
    return detail::findGroup(m_formatOptions, type);
}

void ImportOptionsImpl::setFormatOptions(std::shared_ptr<IFormatOptions> options) {
    detail::putGroup(m_formatOptions, std::move(options));
}

struct ExportOptionsImpl::JsonForm {
    using This = ExportOptionsImpl;
    static constexpr json::Form form{
        json::Head{"ExportOptionsImpl", area::command,
                   json::throwsInvalid("ExportOptionsImpl::readObject: !object.IsObject()")},
        detail::logged(
            "ExportOptions.file = ",
            detail::mandatory(L"file", &This::m_file,
                              "ExportOptionsImpl::readObject: json document has no valid file path.")),
        detail::logged("ExportOptions.formatVersion = ",
                       json::field(L"format_version", &This::m_formatVersion, json::unlessEmpty)),
        detail::logged("ExportOptions.geometryFlags = ",
                       json::field(L"geometry_flags", &This::m_geometryFlags, json::unless(0))),
        detail::formatGroups(L"format_options", &This::m_formatOptions),
    };
};

ZEQ_JSON_OBJECT(ExportOptionsImpl)

std::shared_ptr<IFormatOptions> ExportOptionsImpl::formatOptions(EFormatType type) const {
    return detail::findGroup(m_formatOptions, type);
}

void ExportOptionsImpl::setFormatOptions(std::shared_ptr<IFormatOptions> options) {
    detail::putGroup(m_formatOptions, std::move(options));
}

} // namespace zeq
