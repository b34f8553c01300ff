// The factory of option groups. A new group is added to the list of makers() and nowhere else.
#include <map>
#include <utility>

#include "mv_cvx/logger.h"
#include "zeq_api/format_options/common_options.h"
#include "zeq_api/format_options/export_options.h"
#include "zeq_api/format_options/format_options.h"
#include "zeq_api/format_options/import_options.h"

namespace zeq {

namespace {

using Key = std::pair<EOperationType, EFormatType>;
using Makers = std::map<Key, std::shared_ptr<IFormatOptions> (*)()>;

template <class Group>
Makers::value_type maker() {
    const Group group;
    return {{group.operationType(), group.formatType()},
            []() -> std::shared_ptr<IFormatOptions> { return std::make_shared<Group>(); }};
}

const Makers& makers() {
    static const Makers table{
        maker<OptionsGeneral>(),
        maker<OptionsGraphical>(),
        maker<OptionsMechanical>(),
        maker<OptionsModeler>(),
        maker<imp::OptionsParasolid>(),
        maker<imp::OptionsCatiaV5>(),
        maker<imp::OptionsCatiaV5Drawing>(),
        maker<imp::OptionsCatiaV4>(),
        maker<imp::OptionsIGES>(),
        maker<imp::OptionsSTEP>(),
        maker<imp::OptionsCreo>(),
        maker<imp::OptionsNX>(),
        maker<imp::OptionsSolidWorks>(),
        maker<imp::OptionsSolidWorksDrawing>(),
        maker<imp::OptionsSolidEdge>(),
        maker<imp::OptionsJT>(),
        maker<imp::OptionsInventor>(),
        maker<imp::Options3DXML>(),
        maker<imp::OptionsXCGM>(),
        maker<exp::OptionsAcis>(),
        maker<exp::OptionsParasolid>(),
        maker<exp::OptionsCatiaV5>(),
        maker<exp::OptionsCatiaV4>(),
        maker<exp::OptionsIGES>(),
        maker<exp::OptionsSTEP>(),
        maker<exp::OptionsSTL>(),
        maker<exp::OptionsPDF>(),
        maker<exp::Options3DXML>(),
        maker<exp::OptionsXCGM>(),
    };
    return table;
}

const char* unknownFormatMessage(EOperationType operation) {
    switch (operation) {
    case EOperationType::import:
        return "FormatOptions: No options for given import format.";
    case EOperationType::export_:
        return "FormatOptions: No options for given export format.";
    case EOperationType::options:
        break;
    }
    return "FormatOptions: Unknown common options type.";
}

} // namespace

std::shared_ptr<IFormatOptions> IFormatOptions::readOptions(const JsonValue& object) {
    if (!object.IsObject()) {
        ZEQ_LOG(Error) << "FormatOptions object should have a JSON object type.";
        return nullptr;
    }
    Key key;
    if (!readEnum(object, L"operation_type", key.first)) {
        ZEQ_LOG(Error) << "FormatOptions object should contain operation type.";
        return nullptr;
    }
    if (!readEnum(object, L"format_type", key.second)) {
        ZEQ_LOG(Error) << "FormatOptions object should contain format type.";
        return nullptr;
    }
    std::shared_ptr<IFormatOptions> group = make(key.first, key.second);
    if (group)
        group->readObject(object);
    else
        ZEQ_LOG(Info) << unknownFormatMessage(key.first);
    return group;
}

std::shared_ptr<IFormatOptions> IFormatOptions::make(EOperationType operation, EFormatType format) {
    const auto found = makers().find({operation, format});
    return found == makers().end() ? nullptr : found->second();
}

std::vector<std::pair<EOperationType, EFormatType>> IFormatOptions::kinds() {
    std::vector<Key> result;
    for (const auto& entry : makers()) result.push_back(entry.first);
    return result;
}

} // namespace zeq
