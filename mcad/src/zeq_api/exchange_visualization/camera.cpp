// The JSON forms of cameras and clipping planes.
#include "zeq_api/exchange_visualization/camera.h"

#include "zeq_api/exchange_visualization/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

const EnumTable& enumTable(ExcCamera::EType) {
    using enum ExcCamera::EType;
    static constexpr EnumEntry names[] = {
        {undefined, L"undefined"}, {perspective, L"perspective"}, {orthographic, L"orthographic"}};
    static const EnumTable table{"ExcCamera::EType", names};
    return table;
}

struct ExcCamera::JsonForm {
    using This = ExcCamera;
    static constexpr json::Form form{
        json::Head{"ExcCamera", area::exchangeVisualization},
        json::field(L"type", &This::m_type),
        json::field(L"name", &This::m_name),
        json::field(L"perspective_view_angle", &This::m_perspectiveViewAngle,
                    json::when(&This::isPerspective)),
        json::field(L"orthographic_zoom_factor", &This::m_orthographicZoomFactor,
                    json::when(&This::isOrthographic)),
        json::field(L"eye", &This::m_eye),
        json::field(L"target", &This::m_target),
        json::field(L"up", &This::m_up),
    };
};

ZEQ_JSON_OBJECT(ExcCamera)

struct ExcClippingPlane::JsonForm {
    using This = ExcClippingPlane;

    /// A vector; whatever stands there, the plane counts as given.
    struct PlaneVector {
        ExcVector3d This::*member;

        void take(const auto& view, This& plane) const {
            json::readNested(plane.*member, view);
            plane.m_hasPlane = true;
        }
        void give(auto& sink, const This& plane) const { json::writeNested(plane.*member, sink); }
        json::Shape shape() const { return json::Codec<ExcVector3d>::shape(); }
    };

    struct Coefficients {
        static void take(const auto& view, This& plane) {
            if (view.kind() != json::Kind::array) return;
            json::takeEach(view, plane.m_coefficients);
            plane.m_hasCoefficients = true;
        }
        static void give(auto& sink, const This& plane) {
            json::Codec<std::array<double, 4>>::give(sink, plane.m_coefficients);
        }
        static json::Shape shape() { return json::Codec<std::array<double, 4>>::shape(); }
    };

    static constexpr json::Form form{
        json::Head{"ExcClippingPlane", area::exchangeVisualization},
        json::nullUnless(&This::isSet),
        json::custom(L"origin", PlaneVector{&This::m_origin}, json::when(&This::hasPlane)),
        json::custom(L"u", PlaneVector{&This::m_vectorU}, json::when(&This::hasPlane)),
        json::custom(L"v", PlaneVector{&This::m_vectorV}, json::when(&This::hasPlane)),
        json::custom(L"plane_coefficients", Coefficients{}, json::when(&This::hasCoefficients)),
    };
};

ZEQ_JSON_OBJECT(ExcClippingPlane)

} // namespace zeq
