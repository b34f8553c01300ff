// Pairs numbers with origins.
#include "convexor/mapping.h"

#include <cctype>
#include <cstring>

#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>

namespace zeq::convexor {

namespace {

/// "advanced_face" for "StepShape_AdvancedFace".
std::wstring typeText(const char* kernelClass) {
    const char* const separator = std::strchr(kernelClass, '_');
    std::wstring text;
    for (const char* c = separator ? separator + 1 : kernelClass; *c; ++c) {
        const auto letter = static_cast<unsigned char>(*c);
        if (std::isupper(letter) && !text.empty()) text += L'_';
        text += static_cast<wchar_t>(std::tolower(letter));
    }
    return text;
}

ExcEntityPtr importedEntity(ExcFullSubentPath::ESubentType type, int number) {
    auto entity = std::make_shared<ExcEntity>();
    entity->setType(ExcEntity::EType::fsp);
    entity->fsp() = std::make_shared<ExcFullSubentPath>(static_cast<std::uint64_t>(number));
    entity->fsp()->setSubentType(type);
    return entity;
}

ExcEntityPtr originalEntity(const Origin& origin) {
    auto entity = std::make_shared<ExcEntity>();
    entity->setType(ExcEntity::EType::original);
    entity->id() = L'#' + std::to_wstring(origin.number);
    entity->description() = typeText(origin.type);
    return entity;
}

} // namespace

std::shared_ptr<ExcMappingData> buildMapping(const TopoDS_Shape& part, const Numbering& numbering,
                                             const Origins& origins) {
    using Type = ExcFullSubentPath::ESubentType;
    auto mapping = std::make_shared<ExcMappingData>();
    for (const auto& [kind, type] :
         {std::pair(TopAbs_FACE, Type::face), std::pair(TopAbs_EDGE, Type::edge)}) {
        TopTools_IndexedMapOfShape shapes;
        TopExp::MapShapes(part, kind, shapes);
        for (int i = 1; i <= shapes.Extent(); ++i)
            if (const Origin* const origin = origins.find(shapes(i)))
                mapping->add(importedEntity(type, numbering.of(shapes(i))), originalEntity(*origin));
    }
    return mapping->mapping().empty() ? nullptr : mapping;
}

} // namespace zeq::convexor
