// The JSON form of captures.
#include "zeq_api/exchange_pmi/capture.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_pmi/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

struct ExcPMICapture::JsonForm {
    using This = ExcPMICapture;
    static constexpr json::Form form{
        json::Head{"ExcPMICapture", area::exchangePmi},
        json::base<ExcPMIObject>,
        json::field(L"capture_hidden", &This::m_captureHidden),
        json::field(L"current", &This::m_current),
        json::field(L"hidden_text", &This::m_hiddenText),
        json::field(L"manage_hide_show", &This::m_manageHideShow),
        json::field(L"camera", &This::m_camera, json::whenSet),
        json::field(L"clipping_plane", &This::m_clippingPlane, json::whenSet),
        json::field(L"annotation_ids", &This::m_annotationIds, json::unlessEmpty),
        json::children(L"constructed_geometry", &This::m_constructedGeometry),
        json::children(L"bodies", &This::m_bodies),
    };
};

ZEQ_JSON_OBJECT(ExcPMICapture)

void ExcPMICapture::addConstructedGeometry(const std::shared_ptr<ExcEntity>& entity) {
    detail::appendChild(m_constructedGeometry, entity,
                        "ExcPMICapture: attempt to add null Constructed Geometry Entity object.");
}

void ExcPMICapture::addBody(const std::shared_ptr<ExcEntity>& body) {
    detail::appendChild(m_bodies, body, "ExcPMICapture: attempt to add null Body object.");
}

} // namespace zeq
