// The JSON forms of threads and holes.
#include "zeq_api/exchange_mechanical/mfg_hole.h"

#include "zeq_api/exchange_mechanical/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

const EnumTable& enumTable(ExcMfgThreading::EOrientation) {
    using enum ExcMfgThreading::EOrientation;
    static constexpr EnumEntry names[] = {
        {unknown, L"unknown"}, {right_handed, L"right_handed"}, {left_handed, L"left_handed"}};
    static const EnumTable table{"ExcMfgThreading::EOrientation", names};
    return table;
}

const EnumTable& enumTable(ExcMfgThreading::EDesignationSystemType) {
    using enum ExcMfgThreading::EDesignationSystemType;
    static constexpr EnumEntry names[] = {
        {unknown, L"unknown"}, {metric, L"metric"}, {american, L"american"}, {british, L"british"}};
    static const EnumTable table{"ExcMfgThreading::EDesignationSystemType", names};
    return table;
}

struct ExcMfgThreading::JsonForm {
    using This = ExcMfgThreading;
    static constexpr json::Form form{
        json::Head{"ExcMfgThreading", area::exchangeMechanical},
        json::field(L"diameter", &This::m_diameter),
        json::field(L"depth", &This::m_depth),
        json::field(L"pitch", &This::m_pitch),
        json::field(L"orientation", &This::m_orientation),
        json::field(L"designation", &This::m_designation),
        json::field(L"designation_system_type", &This::m_designationSystemType),
    };
};

ZEQ_JSON_OBJECT(ExcMfgThreading)

const EnumTable& enumTable(ExcMfgThread::EBottomType) {
    using enum ExcMfgThread::EBottomType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},
                                          {dimension, L"dimension"},
                                          {support_depth, L"support_depth"},
                                          {support_up_to_plane, L"support_up_to_plane"}};
    static const EnumTable table{"ExcMfgThread::EBottomType", names};
    return table;
}

struct ExcMfgThread::JsonForm {
    using This = ExcMfgThread;
    static constexpr json::Form form{
        json::Head{"ExcMfgThread", area::exchangeMechanical},
        json::base<ExcMfgThreading>,
        json::field(L"support_diameter", &This::m_supportDiameter),
        json::field(L"support_depth", &This::m_supportDepth),
        json::field(L"bottom_type", &This::m_bottomType),
    };
};

ZEQ_JSON_OBJECT(ExcMfgThread)

struct ExcMfgHoleThread::JsonForm {
    using This = ExcMfgHoleThread;
    static constexpr json::Form form{
        json::Head{"ExcMfgHoleThread", area::exchangeMechanical},
        json::base<ExcMfgThreading>,
        json::field(L"standart", &This::m_standart), // sic
        json::field(L"min_tol", &This::m_minimalTolerance),
        json::field(L"max_tol", &This::m_maximalTolerance),
    };
};

ZEQ_JSON_OBJECT(ExcMfgHoleThread)

const EnumTable& enumTable(ExcMfgHole::EBottomLimitExtentType) {
    using enum ExcMfgHole::EBottomLimitExtentType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},
                                          {blind, L"blind"},
                                          {up_to_last, L"up_to_last"},
                                          {up_to_plane, L"up_to_plane"},
                                          {up_to_surface, L"up_to_surface"},
                                          {up_to_next, L"up_to_next"}};
    static const EnumTable table{"ExcMfgHole::EBottomLimitExtentType", names};
    return table;
}

struct ExcMfgHole::JsonForm {
    using This = ExcMfgHole;
    static constexpr json::Form form{
        json::Head{"ExcMfgHole", area::exchangeMechanical},
        json::field(L"name", &This::m_name),
        json::field(L"primary_diameter", &This::m_primaryDiameter),
        json::field(L"primary_diameter_max_tol", &This::m_primaryDiameterMaxTol),
        json::field(L"primary_diameter_min_tol", &This::m_primaryDiameterMinTol),
        json::field(L"primary_depth", &This::m_primaryDepth),
        json::field(L"tip_angle_degrees", &This::m_tipAngleDegrees),
        json::field(L"bottom_limit_extent_type", &This::m_bottomLimitExtentType),
        json::field(L"center", &This::m_center),
        json::field(L"direction", &This::m_direction),
        json::field(L"hole_thread", &This::m_holeThread, json::whenSet),
    };
};

ZEQ_JSON_OBJECT(ExcMfgHole)

struct ExcMfgSimpleHole::JsonForm {
    using This = ExcMfgSimpleHole;
    static constexpr json::Form form{
        json::Head{"ExcMfgSimpleHole", area::exchangeMechanical,
                   json::logsError("ExcMfgHole object should have a JSON object type.")},
        json::base<ExcMfgHole>,
    };
};

ZEQ_JSON_OBJECT(ExcMfgSimpleHole)

struct ExcMfgTaperHole::JsonForm {
    using This = ExcMfgTaperHole;
    static constexpr json::Form form{
        json::Head{"ExcMfgTaperHole", area::exchangeMechanical},
        json::base<ExcMfgHole>,
        json::field(L"angle", &This::m_angle),
    };
};

ZEQ_JSON_OBJECT(ExcMfgTaperHole)

struct ExcMfgCounterBoreHole::JsonForm {
    using This = ExcMfgCounterBoreHole;
    static constexpr json::Form form{
        json::Head{"ExcMfgCounterBoreHole", area::exchangeMechanical},
        json::base<ExcMfgHole>,
        json::field(L"diameter", &This::m_diameter),
        json::field(L"max_tol", &This::m_maximumTolerance),
        json::field(L"min_tol", &This::m_minimumTolerance),
        json::field(L"depth", &This::m_depth),
    };
};

ZEQ_JSON_OBJECT(ExcMfgCounterBoreHole)

struct ExcMfgCounterSinkHole::JsonForm {
    using This = ExcMfgCounterSinkHole;
    static constexpr json::Form form{
        json::Head{"ExcMfgCounterSinkHole", area::exchangeMechanical},
        json::base<ExcMfgHole>,
        json::field(L"diameter", &This::m_diameter),
        json::field(L"max_tol", &This::m_maximumTolerance),
        json::field(L"min_tol", &This::m_minimumTolerance),
        json::field(L"angle", &This::m_taperAngle),
    };
};

ZEQ_JSON_OBJECT(ExcMfgCounterSinkHole)

struct ExcMfgCounterDrillHole::JsonForm {
    using This = ExcMfgCounterDrillHole;
    static constexpr json::Form form{
        json::Head{"ExcMfgCounterDrillHole", area::exchangeMechanical},
        json::base<ExcMfgHole>,
        json::field(L"diameter", &This::m_diameter),
        json::field(L"max_tol", &This::m_maximumTolerance),
        json::field(L"min_tol", &This::m_minimumTolerance),
        json::field(L"depth", &This::m_depth),
        json::field(L"sink_diameter", &This::m_sinkDiameter),
        json::field(L"angle", &This::m_taperAngle),
    };
};

ZEQ_JSON_OBJECT(ExcMfgCounterDrillHole)

} // namespace zeq
