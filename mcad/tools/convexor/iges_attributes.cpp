// Looks at the directory entry of each entity.
#include "convexor/iges_attributes.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string_view>

#include <IGESData_IGESEntity.hxx>
#include <TCollection_HAsciiString.hxx>

#include "convexor/text.h"

namespace zeq::convexor {

namespace {

/// The line font patterns that the standard numbers (IGES 5.3, 2.2.4.4.4).
IgesAttributes::ELineType lineTypeOf(int font) {
    using enum ExcTopologicalEntityInformation::ELineType;
    constexpr IgesAttributes::ELineType types[]{unknown, solid, dash, dash_dot_dot, dash_dot, dot};
    return font > 0 && font < static_cast<int>(std::size(types)) ? types[font] : unknown;
}

std::wstring nameOf(const IGESData_IGESEntity& entity) {
    if (!entity.HasName()) return {};
    const Handle(TCollection_HAsciiString) name = entity.NameValue();
    std::wstring text = name.IsNull() ? std::wstring() : wideText(name->ToCString());
    text.erase(0, text.find_first_not_of(L' '));
    constexpr std::wstring_view noSubscript = L"(0)"; // which the kernel puts behind a label
    if (text.ends_with(noSubscript)) text.erase(text.size() - noSubscript.size());
    return text.erase(text.find_last_not_of(L' ') + 1);
}

} // namespace

IgesDirectory readIgesDirectory(const Handle(IGESData_IGESModel) & file) {
    IgesDirectory directory;
    for (int i = 1; i <= file->NbEntities(); ++i) {
        const Handle(IGESData_IGESEntity) entity = file->Entity(i);
        if (entity.IsNull()) continue;
        IgesAttributes attributes;
        attributes.level = std::max(entity->Level(), 0); // a list of levels has no number
        attributes.name = nameOf(*entity);
        attributes.isBlanked = entity->BlankStatus() != 0;
        attributes.lineType = lineTypeOf(entity->RankLineFont());
        attributes.lineWeight = entity->LineWeightNumber() > 0 ? entity->LineWeight() : 0;
        const bool saysSomething = attributes.level > 0 || !attributes.name.empty() || attributes.isBlanked ||
                                   attributes.lineType != IgesAttributes::ELineType::unknown;
        if (saysSomething) directory.emplace(file->DNum(entity), std::move(attributes));
    }
    return directory;
}

void addIgesData(const IgesDirectory& directory, const ExcMappingData& mapping,
                 ExcBlockMechanicalData& part) {
    std::map<int, ExcMiscLayerPtr> layers;
    auto entities = std::make_shared<ExcEntityData>();
    for (const auto& [imported, original] : mapping.mapping()) {
        const auto found = directory.find(std::stoi(original->id().substr(1)));
        if (found == directory.end()) continue;
        const IgesAttributes& attributes = found->second;
        if (attributes.level > 0) {
            ExcMiscLayerPtr& layer = layers[attributes.level];
            if (!layer) {
                layer = std::make_shared<ExcMiscLayer>();
                layer->setId(attributes.level);
                layer->setName(std::to_wstring(attributes.level));
            }
            layer->addEntity(imported);
        }
        auto information = std::make_shared<ExcTopologicalEntityInformation>();
        information->setEntity(imported);
        information->setName(attributes.name);
        information->setHidden(attributes.isBlanked);
        information->setLineType(attributes.lineType);
        information->setLineThickness(attributes.lineWeight);
        const bool isOnlyOnLevel = attributes.name.empty() && !attributes.isBlanked &&
                                   attributes.lineType == IgesAttributes::ELineType::unknown;
        if (!isOnlyOnLevel) entities->addData(information);
    }
    if (!entities->data().empty()) part.setEntityData(entities);
    if (layers.empty()) return;
    auto misc = std::make_shared<ExcMechanicalMiscData>();
    for (const auto& [level, layer] : layers) misc->addLayer(layer);
    part.setMiscData(misc);
}

} // namespace zeq::convexor
