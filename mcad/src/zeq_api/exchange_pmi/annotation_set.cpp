// The JSON forms of annotation sets and of the list of them.
#include "zeq_api/exchange_pmi/annotation_set.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_pmi/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

struct ExcPMIAnnotationSet::JsonForm {
    using This = ExcPMIAnnotationSet;
    static constexpr json::Form form{
        json::Head{"ExcPMIAnnotationSet", area::exchangePmi},
        json::field(L"block_id", &This::m_blockId),
        json::field(L"name", &This::m_name),
        json::field(L"hidden", &This::m_hidden),
        json::field(L"standart", &This::m_standart),
        json::children(L"annotation_views", &This::m_annotationViews),
        json::children(L"captures", &This::m_captures),
        json::children(L"constructed_geometry", &This::m_constructedGeometry),
    };
};

ZEQ_JSON_OBJECT(ExcPMIAnnotationSet)

void ExcPMIAnnotationSet::addView(const ExcPMIAnnotationViewPtr& view) {
    detail::appendChild(m_annotationViews, view, "ExcPMIAnnotationSet: attempt to add null View object.");
}

void ExcPMIAnnotationSet::addCapture(const ExcPMICapturePtr& capture) {
    detail::appendChild(m_captures, capture, "ExcPMIAnnotationSet: attempt to add null Capture object.");
}

void ExcPMIAnnotationSet::addConstructedGeometry(const std::shared_ptr<ExcEntity>& entity) {
    detail::appendChild(m_constructedGeometry, entity,
                        "ExcPMIAnnotationSet: attempt to add null Constructed Geometry Entity object.");
}

struct ExcPMIData::JsonForm {
    using This = ExcPMIData;
    static constexpr json::Form form{
        json::Head{"ExcPMIData", area::exchangePmi,
                   json::logsError("ExcPMIData object should have a JSON array type.")},
        json::wholeList(&This::m_annotationSets),
    };
};

ZEQ_JSON_OBJECT(ExcPMIData)

void ExcPMIData::addAnnotationSet(const ExcPMIAnnotationSetPtr& set) {
    detail::appendChild(m_annotationSets, set, "ExcPMIData: attempt to add null PMI Annotation Set object.");
}

} // namespace zeq
