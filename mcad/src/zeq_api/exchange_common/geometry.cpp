// The JSON forms of vectors, matrices and placements.
#include "zeq_api/exchange_common/geometry.h"

#include "zeq_api/exchange_common/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

constexpr json::Mismatch noVector =
    json::logsError("Exchange vector/point (2D/3D) object should have a JSON array type.");

} // namespace

struct ExcVector2d::JsonForm {
    using This = ExcVector2d;
    static constexpr json::Form form{
        json::Head{"ExcVectorBase<2>", area::exchangeCommon, noVector},
        json::whole<This, std::array<double, 2>>(&This::m_components),
    };
};

ZEQ_JSON_OBJECT(ExcVector2d)

struct ExcVector3d::JsonForm {
    using This = ExcVector3d;
    static constexpr json::Form form{
        json::Head{"ExcVectorBase<3>", area::exchangeCommon, noVector},
        json::whole<This, std::array<double, 3>>(&This::m_components),
    };
};

ZEQ_JSON_OBJECT(ExcVector3d)

struct ExcMatrix3d::JsonForm {
    using This = ExcMatrix3d;
    static constexpr json::Form form{
        json::Head{"ExcMatrix3d", area::exchangeCommon,
                   json::logsWarning("ExcMatrix3d::readObject: input JsonValue is not an array.")},
        json::whole(&This::m_rows),
    };
};

ZEQ_JSON_OBJECT(ExcMatrix3d)

struct ExcTransformation::JsonForm {
    using This = ExcTransformation;
    static constexpr json::Form form{
        json::Head{"ExcTransformation", area::exchangeCommon,
                   json::logsWarning("ExcTransformation::readObject: input JsonValue is not an object.")},
        json::nested(L"affine", &This::m_affine),
        json::nested(L"translation", &This::m_translation),
    };
};

ZEQ_JSON_OBJECT(ExcTransformation)

} // namespace zeq
