// The translator's description of itself.
#include "zeq_api/convexor_info/convexor_info.h"

#include "zeq_api/convexor_info/area.h"
#include "zeq_api/json/document_rows.h"

namespace zeq {

namespace {

template <class Element>
Element* appendNew(std::vector<std::shared_ptr<Element>>& list) {
    return list.emplace_back(std::make_shared<Element>()).get();
}

template <class Element>
void appendUnlessNull(std::vector<std::shared_ptr<Element>>& list, const std::shared_ptr<Element>& element) {
    if (element) list.push_back(element);
}

} // namespace

const EnumTable& enumTable(EParasolidMode) {
    using E = EParasolidMode;
    static constexpr EnumEntry names[] = {{E::direct, L"direct"}, {E::kernel, L"kernel"}};
    static const EnumTable table{"EParasolidMode", names};
    return table;
}

struct ThirdpartyCore::JsonForm {
    using This = ThirdpartyCore;
    static constexpr json::Form form{
        json::Head{"ThirdpartyCore", area::convexorInfo,
                   json::throwsInvalid("ThirdpartyCore::readFrom > !jsonObject.IsObject()")},
        json::field(L"name", &This::m_name),
        json::field(L"version", &This::m_version),
    };
};

ZEQ_JSON_OBJECT(ThirdpartyCore)

struct ConvexorInfo::JsonForm {
    using This = ConvexorInfo;
    static constexpr json::Form form{
        json::Head{"ConvexorInfo", area::untraced, // the stream's functions have their own trace lines
                   json::throwsInvalid("ConvexorInfo::readObject: invalid json document")},
        json::field(L"name", &This::m_name),
        json::field(L"version", &This::m_version),
        detail::exactName(L"convexor_interface", &This::m_requestedInterface),
        json::children(L"thirdparty_cores", &This::m_thirdpartyCores, &This::addThirdpartyCore),
        detail::exactName(L"parasolid_mode", &This::m_parasolidMode),
        json::children(L"import_formats", &This::m_importFormats, &This::addImportFormat),
        json::children(L"export_formats", &This::m_exportFormats, &This::addExportFormat),
        json::field(L"modeler_version", &This::m_modelerMajorVersion),
    };
};

void ConvexorInfo::writeObject(mp::OutputStream& stream) const {
    json::trace(area::convexorInfo, "virtual void zeq::ConvexorInfo::writeObject(mp::OutputStream &) const");
    detail::writeStream<JsonForm>(*this, stream);
}

void ConvexorInfo::readObject(mp::InputStream& stream) {
    json::trace(area::convexorInfo, "virtual void zeq::ConvexorInfo::readObject(mp::InputStream &)");
    detail::readStream<JsonForm>(*this, stream);
}

ThirdpartyCore* ConvexorInfo::newThirdpartyCore() { return appendNew(m_thirdpartyCores); }

void ConvexorInfo::addThirdpartyCore(const std::shared_ptr<ThirdpartyCore>& core) {
    appendUnlessNull(m_thirdpartyCores, core);
}

Format* ConvexorInfo::newImportFormat() { return appendNew(m_importFormats); }

void ConvexorInfo::addImportFormat(const std::shared_ptr<Format>& format) {
    appendUnlessNull(m_importFormats, format);
}

void ConvexorInfo::addImportFormats(const std::vector<std::shared_ptr<Format>>& formats) {
    for (const std::shared_ptr<Format>& format : formats) addImportFormat(format);
}

Format* ConvexorInfo::newExportFormat() { return appendNew(m_exportFormats); }

void ConvexorInfo::addExportFormat(const std::shared_ptr<Format>& format) {
    appendUnlessNull(m_exportFormats, format);
}

void ConvexorInfo::addExportFormats(const std::vector<std::shared_ptr<Format>>& formats) {
    for (const std::shared_ptr<Format>& format : formats) addExportFormat(format);
}

} // namespace zeq
