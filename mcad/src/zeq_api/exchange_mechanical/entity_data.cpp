// The JSON forms of what is said of single entities.
#include "zeq_api/exchange_mechanical/entity_data.h"

#include "mv_cvx/logger.h"
#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_mechanical/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

struct ExcMappingData::JsonForm {
    using This = ExcMappingData;

    struct Mapping {
        static constexpr auto imported = json::field(L"imported", &EntityPair::first);
        static constexpr auto original = json::field(L"original", &EntityPair::second);

        static void take(const auto& view, This& data) {
            view.forEach([&data](const auto& item) {
                if (item.kind() != json::Kind::object) {
                    ZEQ_LOG(Warning) << "ExcMappingData JSON array should have objects as items.";
                    return true;
                }
                EntityPair pair;
                auto members = item.members();
                imported.read(pair, members);
                original.read(pair, members);
                data.add(std::move(pair.first), std::move(pair.second));
                return true;
            });
        }
        static void give(auto& sink, const This& data) {
            sink.array([&data](auto& array) {
                for (const EntityPair& pair : data.m_mapping)
                    array.element([&pair](auto&& to) {
                        to.object([&pair](auto& item) {
                            imported.write(pair, item);
                            original.write(pair, item);
                        });
                    });
            });
        }
        static json::Shape shape() {
            json::ObjectShape item{{imported.describe(), original.describe()}};
            for (json::MemberShape& member : item.members) {
                member.isRequired = true;
                member.shape.mayBeNull = false;
            }
            return json::arrayShape({std::move(item)});
        }
    };

    static constexpr json::Form form{
        json::Head{"ExcMappingData", area::exchangeMechanical,
                   json::logsError("ExcMappingData object should have a JSON array type.")},
        json::wholeArray(Mapping{}),
    };
};

ZEQ_JSON_OBJECT(ExcMappingData)

void ExcMappingData::add(ExcEntityPtr imported, ExcEntityPtr original) {
    if (imported && original) {
        m_mapping.emplace_back(std::move(imported), std::move(original));
    } else {
        ZEQ_LOG(Warning)
            << "ExcMappingData: attempt to add null Entity object or null Original Entity object.";
    }
}

const EnumTable& enumTable(ExcTopologicalEntityInformation::ELineType) {
    using enum ExcTopologicalEntityInformation::ELineType;
    static constexpr EnumEntry names[] = {
        {unknown, L"unknown"},
        {solid, L"solid"},
        {dash, L"dash"},
        {dot, L"dot"},
        {dash_dot, L"dash_dot"},
        {dash_dot_dot, L"dash_dot_dot"},
        {dash_dot_dot_dot, L"dash_dot_dot_dot"},
        {dash_dash_dot, L"dash_dash_dot"},
        {dash_dash_dot_dot, L"dash_dash_dot_dot"},
        {dash_dash_dot_dot_dot, L"dash_dash_dot_dot_dot"},
        {short_dash, L"short_dash"},
        {long_dash, L"long_dash"},
        {medium_dash_long_dash, L"medium_dash_long_dash"},
        {medium_dash_short_dash_short_dash, L"medium_dash_short_dash_short_dash"},
        {long_dash_short_dash, L"long_dash_short_dash"},
        {long_dash_short_dash_short_dash, L"long_dash_short_dash_short_dash"},
        {long_dash_dot_dot, L"long_dash_dot_dot"},
        {long_dash_dot, L"long_dash_dot"},
        {medium_dash_dot_short_dash_dot, L"medium_dash_dot_short_dash_dot"},
        {sparse_dot, L"sparse_dot"},
        {visible_invisible, L"visible_invisible"},
        {zigzag, L"zigzag"},
        {curve_batting, L"curve_batting"},
        {fence_circle, L"fence_circle"},
        {fence_square, L"fence_square"},
        {supply_line_gas, L"supply_line_gas"},
        {supply_line_hot_water, L"supply_line_hot_water"},
        {tracks, L"tracks"}};
    static const EnumTable table{"ExcTopologicalEntityInformation::ELineType", names};
    return table;
}

struct ExcTopologicalEntityInformation::JsonForm {
    using This = ExcTopologicalEntityInformation;
    static constexpr json::Form form{
        json::Head{"ExcTopologicalEntityInformation", area::exchangeMechanical},
        json::field(L"entity", &This::m_entity, json::whenSet),
        json::field(L"pnames", &This::m_pnames, json::unlessEmpty),
        json::field(L"name", &This::m_name),
        json::field(L"hidden", &This::m_hidden),
        json::field(L"line_type", &This::m_lineType),
        json::field(L"line_thickness", &This::m_lineThickness),
    };
};

ZEQ_JSON_OBJECT(ExcTopologicalEntityInformation)

struct ExcEntityData::JsonForm {
    using This = ExcEntityData;
    static constexpr json::Form form{
        json::Head{"ExcEntityData", area::exchangeMechanical,
                   json::logsError("ExcEntityData object should have a JSON array type.")},
        json::wholeList(&This::m_data),
    };
};

ZEQ_JSON_OBJECT(ExcEntityData)

void ExcEntityData::addData(ExcTopologicalEntityInformationPtr info) {
    detail::appendChild(m_data, std::move(info),
                        "ExcEntityData: attempt to add null Topological Entity Information Data object.");
}

} // namespace zeq
