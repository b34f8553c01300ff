// JSON forms of the option groups for importing.
#include "zeq_api/format_options/import_options.h"

#include "zeq_api/format_options/area.h"
#include "zeq_api/json/form.h"

namespace zeq::imp {

struct OptionsNX::JsonForm {
    using This = OptionsNX;
    static constexpr json::Form form{
        json::Head{"imp::OptionsNX", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"import_geometry", &This::m_importGeometry),
        json::field(L"import_visualization", &This::m_importVisualization),
        json::field(L"import_root_visualization", &This::m_importRootVisualization),
        json::field(L"search_paths", &This::m_assemblySearchPaths),
        json::field(L"assembly_path_pref", &This::m_assemblyPathPreference),
        json::field(L"configuration_name", &This::m_importConfiguration),
        json::field(L"hidden_entities_mode", &This::m_hiddenEntitiesMode),
        json::field(L"suppressed_entities_mode", &This::m_suppressedEntitiesMode),
        json::field(L"translate_free_curves_mode", &This::m_translateFreeCurvesMode),
        json::field(L"translate_free_points_mode", &This::m_translateFreePointsMode),
        json::field(L"visu_pmi_mode", &This::m_visuPMIProcessingMode),
    };
};

ZEQ_JSON_OBJECT(OptionsNX)

struct Options3DXML::JsonForm {
    using This = Options3DXML;
    static constexpr json::Form form{
        json::Head{"imp::Options3DXML", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"visu_pmi_mode", &This::m_visuPMIProcessingMode),
    };
};

ZEQ_JSON_OBJECT(Options3DXML)

struct OptionsCatiaV4::JsonForm {
    using This = OptionsCatiaV4;
    static constexpr json::Form form{
        json::Head{"imp::OptionsCatiaV4", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"import_entities", &This::m_importEntities),
        json::field(L"hidden_entities_mode", &This::m_hiddenEntitiesMode),
        json::field(L"layer_filter", &This::m_layerFilter),
    };
};

ZEQ_JSON_OBJECT(OptionsCatiaV4)

struct OptionsCatiaV5::JsonForm {
    using This = OptionsCatiaV5;
    static constexpr json::Form form{
        json::Head{"imp::OptionsCatiaV5", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"assembly_path_pref", &This::m_assemblyPathPreference),
        json::field(L"import_visualization", &This::m_importVisualization),
        json::field(L"import_root_visualization", &This::m_importRootVisualization),
        json::field(L"import_preview_graphics", &This::m_importPreviewGraphics),
        json::field(L"in_work_object_mode", &This::m_processInWorkObject),
        json::field(L"name_processing_mode", &This::m_nameProcessingMode),
        json::field(L"assembly_unfolded_view_mode", &This::m_assemblyUnfoldedViewMode),
        json::field(L"mfg_processing_mode", &This::m_mfgProcessingMode),
        json::field(L"hidden_entities_mode", &This::m_hiddenEntitiesMode),
        json::field(L"suppressed_entities_mode", &This::m_suppressedEntitiesMode),
        json::field(L"visu_pmi_mode", &This::m_visuPMIProcessingMode),
        json::field(L"mfg_data_mode", &This::m_processMfgDataMode),
        json::field(L"doc_delay_loading_mode", &This::m_documentDelayLoadingMode),
        json::field(L"edge_attribute_mode", &This::m_edgeAttributeMode),
    };
};

ZEQ_JSON_OBJECT(OptionsCatiaV5)

struct OptionsCatiaV5Drawing::JsonForm {
    using This = OptionsCatiaV5Drawing;
    static constexpr json::Form form{
        json::Head{"imp::OptionsCatiaV5Drawing", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"hidden_entities_mode", &This::m_hiddenEntitiesMode),
        json::field(L"visu_pmi_mode", &This::m_visuPMIProcessingMode),
    };
};

ZEQ_JSON_OBJECT(OptionsCatiaV5Drawing)

struct OptionsCreo::JsonForm {
    using This = OptionsCreo;
    static constexpr json::Form form{
        json::Head{"imp::OptionsCreo", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"search_paths", &This::m_alternateSearchPaths),
        json::field(L"import_visualization", &This::m_importVisualization),
        json::field(L"import_root_visualization", &This::m_importRootVisualization),
        json::field(L"import_preview_graphics", &This::m_importPreviewGraphics),
        json::field(L"configuration_name", &This::m_importConfiguration),
        json::field(L"holes_on_sheets_mode", &This::m_mfgHolesOnSheetsMode),
        json::field(L"hidden_entities_mode", &This::m_hiddenEntitiesMode),
        json::field(L"suppressed_entities_mode", &This::m_suppressedEntitiesMode),
        json::field(L"visu_pmi_mode", &This::m_visuPMIProcessingMode),
        json::field(L"driving_dimensions_type", &This::m_translateDrivingDimensionsMode),
        json::field(L"construction_geom_mode", &This::m_translateConstructionGeometriesMode),
        json::field(L"reference_geom_mode", &This::m_translateReferenceGeometryMode),
    };
};

ZEQ_JSON_OBJECT(OptionsCreo)

struct OptionsIGES::JsonForm {
    using This = OptionsIGES;
    static constexpr json::Form form{
        json::Head{"imp::OptionsIGES", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"import_entities", &This::m_importEntities),
        json::field(L"hidden_entities_mode", &This::m_hiddenEntitiesMode),
        json::field(L"copious_data_mode", &This::m_copiousDataMode),
        json::field(L"trim_curve_import_pref_mode", &This::m_trimCurveImportPreferenceMode),
    };
};

ZEQ_JSON_OBJECT(OptionsIGES)

struct OptionsInventor::JsonForm {
    using This = OptionsInventor;
    static constexpr json::Form form{
        json::Head{"imp::OptionsInventor", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"search_paths", &This::m_assemblySearchPaths),
        json::field(L"assembly_path_pref", &This::m_assemblyPathPreference),
        json::field(L"import_visualization", &This::m_importVisualization),
        json::field(L"import_root_visualization", &This::m_importRootVisualization),
        json::field(L"import_preview_graphics", &This::m_importPreviewGraphics),
        json::field(L"hidden_entities_mode", &This::m_hiddenEntitiesMode),
        json::field(L"suppressed_entities_mode", &This::m_suppressedEntitiesMode),
        json::field(L"active_state_mode", &This::m_activeStateProcessingMode),
        json::field(L"visu_pmi_mode", &This::m_visuPMIProcessingMode),
    };
};

ZEQ_JSON_OBJECT(OptionsInventor)

struct OptionsJT::JsonForm {
    using This = OptionsJT;
    static constexpr json::Form form{
        json::Head{"imp::OptionsJT", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"import_geometry", &This::m_importGeometry),
        json::field(L"import_visualization", &This::m_importVisualization),
        json::field(L"import_root_visualization", &This::m_importRootVisualization),
        json::field(L"edges_mode", &This::m_importEdgesMode),
        json::field(L"user_prop_mode", &This::m_userPropertiesMode),
        json::field(L"visu_pmi_mode", &This::m_visuPMIProcessingMode),
        json::field(L"import_visu_lod", &This::m_importVisuLOD),
    };
};

ZEQ_JSON_OBJECT(OptionsJT)

struct OptionsParasolid::JsonForm {
    using This = OptionsParasolid;
    static constexpr json::Form form{
        json::Head{"imp::OptionsParasolid", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"hidden_entities_mode", &This::m_hiddenEntitiesMode),
    };
};

ZEQ_JSON_OBJECT(OptionsParasolid)

struct OptionsSolidEdge::JsonForm {
    using This = OptionsSolidEdge;
    static constexpr json::Form form{
        json::Head{"imp::OptionsSolidEdge", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"search_paths", &This::m_assemblySearchPaths),
        json::field(L"assembly_path_pref", &This::m_assemblyPathPreference),
        json::field(L"import_visualization", &This::m_importVisualization),
        json::field(L"import_root_visualization", &This::m_importRootVisualization),
        json::field(L"import_preview_graphics", &This::m_importPreviewGraphics),
        json::field(L"hidden_entities_mode", &This::m_hiddenEntitiesMode),
        json::field(L"visu_pmi_mode", &This::m_visuPMIProcessingMode),
    };
};

ZEQ_JSON_OBJECT(OptionsSolidEdge)

struct OptionsSolidWorks::JsonForm {
    using This = OptionsSolidWorks;
    static constexpr json::Form form{
        json::Head{"imp::OptionsSolidWorks", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"import_visualization", &This::m_importVisualization),
        json::field(L"import_root_visualization", &This::m_importRootVisualization),
        json::field(L"import_preview_graphics", &This::m_importPreviewGraphics),
        json::field(L"search_paths", &This::m_assemblySearchPaths),
        json::field(L"assembly_path_pref", &This::m_assemblyPathPreference),
        json::field(L"configuration_name", &This::m_importConfiguration),
        json::field(L"hidden_entities_mode", &This::m_hiddenEntitiesMode),
        json::field(L"suppressed_entities_mode", &This::m_suppressedEntitiesMode),
        json::field(L"product_structure_mode", &This::m_productStructureMode),
        json::field(L"visu_pmi_mode", &This::m_visuPMIProcessingMode),
    };
};

ZEQ_JSON_OBJECT(OptionsSolidWorks)

struct OptionsSolidWorksDrawing::JsonForm {
    using This = OptionsSolidWorksDrawing;
    static constexpr json::Form form{
        json::Head{"imp::OptionsSolidWorksDrawing", area::formatOptions},
        json::base<IFormatOptions>,
    };
};

ZEQ_JSON_OBJECT(OptionsSolidWorksDrawing)

struct OptionsSTEP::JsonForm {
    using This = OptionsSTEP;
    static constexpr json::Form form{
        json::Head{"imp::OptionsSTEP", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"import_geometry", &This::m_importGeometry),
        json::field(L"import_visualization", &This::m_importVisualization),
        json::field(L"import_root_visualization", &This::m_importRootVisualization),
        json::field(L"layer_name_mode", &This::m_layerNameProcessingMode),
        json::field(L"visu_pmi_mode", &This::m_visuPMIProcessingMode),
    };
};

ZEQ_JSON_OBJECT(OptionsSTEP)

struct OptionsXCGM::JsonForm {
    using This = OptionsXCGM;
    static constexpr json::Form form{
        json::Head{"imp::OptionsXCGM", area::formatOptions},
        json::base<IFormatOptions>,
        json::field(L"import_geometry", &This::m_importGeometry),
        json::field(L"import_visualization", &This::m_importVisualization),
        json::field(L"import_root_visualization", &This::m_importRootVisualization),
        json::field(L"visu_pmi_mode", &This::m_visuPMIProcessingMode),
    };
};

ZEQ_JSON_OBJECT(OptionsXCGM)

} // namespace zeq::imp
