// The keys of an option group, written first and checked when it is read.
#include "zeq_api/format_options/format_options.h"

#include "mv_cvx/logger.h"
#include "zeq_api/format_options/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

const EnumTable& enumTable(EOperationType) {
    using E = EOperationType;
    static constexpr EnumEntry names[] = {
        {E::options, L"options"}, {E::import, L"import"}, {E::export_, L"export"}};
    static const EnumTable table{"EOperationType", names};
    return table;
}

const EnumTable& enumTable(EFormatType) {
    using E = EFormatType;
    static constexpr EnumEntry names[] = {{E::unknown, L"unknown"},
                                          {E::general, L"general"},
                                          {E::CGM, L"CGM"},
                                          {E::ACIS, L"ACIS"},
                                          {E::parasolid, L"parasolid"},
                                          {E::CatiaV5, L"CatiaV5"},
                                          {E::CatiaV5Drawing, L"CatiaV5Drawing"},
                                          {E::CatiaV4, L"CatiaV4"},
                                          {E::IGES, L"IGES"},
                                          {E::STEP, L"STEP"},
                                          {E::STL, L"STL"},
                                          {E::Creo, L"Creo"},
                                          {E::NX, L"NX"},
                                          {E::SolidWorks, L"SolidWorks"},
                                          {E::SolidWorksDrawing, L"SolidWorksDrawing"},
                                          {E::SolidEdge, L"SolidEdge"},
                                          {E::JT, L"JT"},
                                          {E::Inventor, L"Inventor"},
                                          {E::PDF_3D, L"3D_PDF"},
                                          {E::XML_3D, L"3D_XML"},
                                          {E::autocad, L"autocad"},
                                          {E::U3D, L"U3D"},
                                          {E::VDA_FS, L"VDA_FS"},
                                          {E::XML_EBOM, L"XML_EBOM"},
                                          {E::XCGM, L"XCGM"},
                                          {E::graphical, L"graphical"},
                                          {E::mechanical, L"mechanical"},
                                          {E::modeler, L"modeler"},
                                          {E::picture, L"picture"},
                                          {E::IFC, L"IFC"},
                                          {E::EDrawings, L"EDrawings"},
                                          {E::UDL, L"UDL"}};
    static const EnumTable table{"EFormatType", names};
    return table;
}

struct IFormatOptions::JsonForm {
    using This = IFormatOptions;

    /// What the factory looks at, and cannot do without.
    template <class E>
    static json::MemberShape purposeShape(std::wstring_view key) {
        return {key, json::Codec<E>::shape(), true, true, true};
    }

    /// The operation type; it is read together with the format type.
    struct OperationType : json::Computed<IFormatOptions, EOperationType> {
        template <class Members>
        void read(const IFormatOptions&, Members&) const {}
        json::MemberShape describe() const { return purposeShape<EOperationType>(key); }
    };

    /// The format type; reading compares both keys with those of this group and logs the first that differs.
    struct Purpose {
        using Owner = IFormatOptions;
        std::wstring_view key;

        template <class Members>
        void read(const IFormatOptions& group, Members& members) const {
            const auto matches = [&members]<class E>(std::wstring_view name, E expected) {
                E found{}; // what a key that is missing stands for: options, unknown
                if (const auto value = members.find(name)) json::Codec<E>::take(*value, found);
                return found == expected;
            };
            if (!matches(L"operation_type", group.operationType())) {
                ZEQ_LOG(Error) << "FormatOptions operation type doesn't match.";
            } else if (!matches(key, group.formatType())) {
                ZEQ_LOG(Error) << "FormatOptions format type doesn't match.";
            }
        }
        template <class Sink>
        void write(const IFormatOptions& group, Sink& sink) const {
            sink.member(key, [&](auto&& to) { json::Codec<EFormatType>::give(to, group.formatType()); });
        }
        json::MemberShape describe() const { return purposeShape<EFormatType>(key); }
    };

    static constexpr json::Form form{
        json::Head{"IFormatOptions", area::formatOptions,
                   json::logsError("FormatOptions object should have a JSON object type.")},
        OperationType{L"operation_type", &This::operationType},
        Purpose{L"format_type"},
    };
};

ZEQ_JSON_OBJECT(IFormatOptions)

} // namespace zeq
