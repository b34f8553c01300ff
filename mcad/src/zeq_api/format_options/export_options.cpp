// JSON forms of the option groups for exporting.
#include "zeq_api/format_options/export_options.h"

#include "zeq_api/format_options/area.h"
#include "zeq_api/json/form.h"

namespace zeq::exp {

struct OptionsSTEP::JsonForm {
    using This = OptionsSTEP;
    static constexpr json::Form form{
        json::Head{"exp::OptionsSTEP", area::formatOptions,
                   json::logsError("OptionsStep object should have a JSON object type.")},
        json::base<IFormatOptions>,
        json::field(L"units", &This::m_units),
        json::field(L"version", &This::m_version),
        json::field(L"tolerance", &This::m_fileTolerance),
        json::field(L"layer_name_mode", &This::m_layerNameProcessingMode),
    };
};

ZEQ_JSON_OBJECT(OptionsSTEP)

struct OptionsAcis::JsonForm {
    using This = OptionsAcis;
    static constexpr json::Form form{
        json::Head{"exp::OptionsAcis", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"version", &This::m_version),
        json::field(L"units", &This::m_units),
    };
};

ZEQ_JSON_OBJECT(OptionsAcis)

struct OptionsParasolid::JsonForm {
    using This = OptionsParasolid;
    static constexpr json::Form form{
        json::Head{"exp::OptionsParasolid", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"version", &This::m_version),
    };
};

ZEQ_JSON_OBJECT(OptionsParasolid)

struct OptionsCatiaV5::JsonForm {
    using This = OptionsCatiaV5;
    static constexpr json::Form form{
        json::Head{"exp::OptionsCatiaV5", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"version", &This::m_version),
        json::field(L"default_color_mode", &This::m_graphicalDefaultColorMode),
        json::field(L"cgr_compatibility_mode", &This::m_cgrCompatibilityMode),
    };
};

ZEQ_JSON_OBJECT(OptionsCatiaV5)

struct OptionsCatiaV4::JsonForm {
    using This = OptionsCatiaV4;
    static constexpr json::Form form{
        json::Head{"exp::OptionsCatiaV4", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"author_name", &This::m_authorName),
        json::field(L"model_name", &This::m_modelName),
        json::field(L"version", &This::m_version),
        json::field(L"edge_curve_mode", &This::m_edgeCurveMode),
    };
};

ZEQ_JSON_OBJECT(OptionsCatiaV4)

struct OptionsIGES::JsonForm {
    using This = OptionsIGES;
    static constexpr json::Form form{
        json::Head{"exp::OptionsIGES", area::formatOptions,
                   json::logsError("OptionsIges object should have a JSON object type.")},
        json::base<IFormatOptions>,
        json::field(L"units", &This::m_units),
    };
};

ZEQ_JSON_OBJECT(OptionsIGES)

struct OptionsSTL::JsonForm {
    using This = OptionsSTL;
    static constexpr json::Form form{
        json::Head{"exp::OptionsSTL", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"save_mode", &This::m_saveMode),
    };
};

ZEQ_JSON_OBJECT(OptionsSTL)

struct OptionsPDF::JsonForm {
    using This = OptionsPDF;
    static constexpr json::Form form{
        json::Head{"exp::OptionsPDF", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"color", &This::m_backgroundColor),
    };
};

ZEQ_JSON_OBJECT(OptionsPDF)

struct Options3DXML::JsonForm {
    using This = Options3DXML;
    static constexpr json::Form form{
        json::Head{"exp::Options3DXML", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"default_color_mode", &This::m_defaultColorMode),
        json::field(L"graphical_pmi_container_mode", &This::m_graphicalPMIContainerMode),
    };
};

ZEQ_JSON_OBJECT(Options3DXML)

struct OptionsXCGM::JsonForm {
    using This = OptionsXCGM;
    static constexpr json::Form form{
        json::Head{"exp::OptionsXCGM", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"version", &This::m_version),
        json::field(L"default_color_mode", &This::m_graphicalDefaultColorMode),
        json::field(L"graphical_pmi_container_mode", &This::m_graphicalPMIContainerMode),
    };
};

ZEQ_JSON_OBJECT(OptionsXCGM)

} // namespace zeq::exp
