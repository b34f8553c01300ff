// The JSON forms of datums and datum targets.
#include "zeq_api/exchange_pmi/datum.h"

#include "zeq_api/exchange_pmi/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

const EnumTable& enumTable(ExcPMIDatumTarget::EType) {
    using enum ExcPMIDatumTarget::EType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},
                                          {point, L"point"},
                                          {line, L"line"},
                                          {area_circular, L"area_circular"},
                                          {area_rectangular, L"area_rectangular"},
                                          {area_face, L"area_face"},
                                          {feature, L"feature"},
                                          {user_defined, L"user_defined"}};
    static const EnumTable table{"ExcPMIDatumTarget::EType", names};
    return table;
}

struct ExcPMIDatumTarget::JsonForm {
    using This = ExcPMIDatumTarget;

    /// Two points. A document may have the first alone; whatever stands there is given to the reader of points.
    struct TargetZone {
        using Points = std::array<ExcVector3d, 2>;

        static void take(const auto& view, This& target) {
            if (view.kind() != json::Kind::array) return;
            std::size_t i = 0;
            view.forEach([&](const auto& element) {
                json::readNested(target.m_targetZone[i], element);
                return ++i < target.m_targetZone.size();
            });
        }
        static void give(auto& sink, const This& target) {
            json::Codec<Points>::give(sink, target.m_targetZone);
        }
        static json::Shape shape() { return json::Codec<Points>::shape(); }
    };

    static constexpr json::Form form{
        json::Head{"ExcPMIDatumTarget", area::exchangePmi},
        json::base<ExcPMIAnnotation>,
        json::field(L"label", &This::m_label),
        json::field(L"target_type", &This::m_targetType),
        json::field(L"has_diameter", &This::m_hasDiameter),
        json::field(L"upper_text", &This::m_upperText),
        json::field(L"lower_text", &This::m_lowerText),
        json::custom(L"target_zone", TargetZone{}),
    };
};

ZEQ_JSON_OBJECT(ExcPMIDatumTarget)

struct ExcPMIDatum::JsonForm {
    using This = ExcPMIDatum;
    static constexpr json::Form form{
        json::Head{"ExcPMIDatum", area::exchangePmi},
        json::base<ExcPMIAnnotation>,
        json::field(L"label", &This::m_label),
        json::field(L"target_ids", &This::m_targetIds),
    };
};

ZEQ_JSON_OBJECT(ExcPMIDatum)

} // namespace zeq
