// The order of the readers is that of the parts' documents; coordinate systems know the layers read before.
#include "step/part_data.h"

#include <algorithm>
#include <array>
#include <cwctype>

#include "step/part_reading.h"
#include "step/placement.h"
#include "step/styles.h"

namespace zeq::step {

PartReading::PartReading(StepFile& stepFile, std::wstring symbol)
    : file(stepFile), lengthSymbol(std::move(symbol)), owners(stepFile) {}

ExcMechanicalMiscData& PartReading::misc(const Instance& product) {
    auto& misc = contents.parts[product.number()].misc;
    if (!misc) misc = std::make_shared<ExcMechanicalMiscData>();
    return *misc;
}

ExcEntityData& PartReading::entities(const Instance& product) {
    auto& entities = contents.parts[product.number()].entities;
    if (!entities) entities = std::make_shared<ExcEntityData>();
    return *entities;
}

void PartReading::addProperty(const Instance& product, const std::wstring& group, ExcMiscProperty property) {
    auto& groups = misc(product).miscData().groups();
    const auto [at, isNew] = m_groups.try_emplace({product.number(), group}, groups.size());
    if (isNew) groups.emplace_back().name() = group;
    groups[at->second].addProperty(std::move(property));
}

void PartReading::count(const char* kind, const Instance& instance) {
    contents.inFile[kind].push_back(instance.number());
}

void PartReading::lose(const char* kind, std::wstring reason, const Instance& instance) {
    file.losses().add(kind, std::move(reason), instance.number());
}

std::vector<Instance> itemsOf(const StepFile& file, const Instance& representation) {
    constexpr std::size_t most = 100000; // a damaged file may let compounds hold one another
    std::vector<Instance> found, pending;
    const auto reach = [&](const Value& list) {
        for (const Value& value : list.items())
            if (const Instance item = file.at(value)) pending.push_back(item);
    };
    reach(attribute(representation, "REPRESENTATION", 0, 1));
    for (std::size_t i = 0; i < pending.size() && i < most; ++i) {
        const Instance item = pending[i];
        if (!item.is("COMPOUND_REPRESENTATION_ITEM")) {
            found.push_back(item);
            continue;
        }
        const Value elements = attribute(item, "COMPOUND_REPRESENTATION_ITEM", 1, 0);
        // LIST_REPRESENTATION_ITEM((#1,#2)) or the list itself
        for (const Value& value : elements.items())
            if (value.kind() == part21::Kind::list)
                reach(value);
            else if (const Instance element = file.at(value))
                pending.push_back(element);
    }
    return found;
}

Instance styledBy(const StepFile& file, const Instance& item) {
    Instance at = item;
    for (int step = 0; step < 8; ++step) {
        if (isAnnotation(at)) break;
        const bool isStyled = at.is("STYLED_ITEM") || at.is("OVER_RIDING_STYLED_ITEM") ||
                              at.is("CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM");
        if (!isStyled) break;
        at = file.at(attribute(at, "STYLED_ITEM", 1, 1));
    }
    return at;
}

bool isAnnotation(const Instance& item) {
    const auto types = item.types();
    return std::ranges::any_of(types, [](std::string_view type) {
        return type.find("ANNOTATION") != type.npos || type.find("CALLOUT") != type.npos ||
               type.find("TERMINATOR") != type.npos || type.find("LEADER_CURVE") != type.npos;
    });
}

std::wstring trimmed(const std::wstring& text) {
    const auto isSpace = [](wchar_t c) { return std::iswspace(static_cast<wint_t>(c)) != 0; };
    const auto first = std::ranges::find_if_not(text, isSpace);
    auto last = text.end();
    while (last != first && isSpace(last[-1])) --last;
    return {first, last};
}

bool saysSomething(const std::wstring& text) {
    std::wstring lower = trimmed(text);
    for (wchar_t& c : lower) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    static constexpr std::array<std::wstring_view, 8> placeholders{
        L"", L"*", L"$", L"none", L"null", L"void", L"unknown", L"not specified"};
    return std::ranges::find(placeholders, lower) == placeholders.end();
}

void readIdentification(PartReading& reading) {
    const auto add = [&reading](const Instance& product, const wchar_t* name, const Instance& from,
                                std::size_t index) {
        const std::wstring value = trimmed(from.parameters()[index].text());
        if (!saysSomething(value)) return;
        reading.count("properties", from);
        reading.addProperty(product, L"product", textProperty(name, value));
    };
    for (const Instance& definition : reading.owners.products()) {
        const Instance version = reading.file.at(attribute(definition, "PRODUCT_DEFINITION", 0, 2));
        const Instance product = reading.file.at(version.parameters()[2]);
        if (trimmed(product.parameters()[0].text()) != trimmed(product.parameters()[1].text()))
            add(definition, L"id", product, 0); // the name is that of the part
        add(definition, L"description", product, 2);
        add(definition, L"version", version, 0);
        add(definition, L"version description", version, 1);
    }
}

void readCoordinateSystems(PartReading& reading) {
    const auto invisible = readInvisible(reading.file);
    const auto& structure = reading.file.structure();
    for (const Instance& representation : structure.all("CONSTRUCTIVE_GEOMETRY_REPRESENTATION"))
        for (const Instance& item : itemsOf(reading.file, representation)) {
            const std::wstring name = trimmed(nameOf(item));
            if (!item.is("AXIS2_PLACEMENT_3D") || !saysSomething(name)) continue;
            const Owners::Owner owner = reading.owners.ofItem(item);
            const auto placement = readPlacement(reading.file, item);
            if (!owner.product || !placement) continue;
            auto system = std::make_shared<ExcMiscWCS>();
            system->setId(idOf(item));
            system->setName(name);
            const double unit = owner.millimeters > 0 ? owner.millimeters / reading.file.millimeters() : 1;
            system->setOrigin((unit * placement->origin).document());
            system->setX(placement->x.document());
            system->setY(placement->y.document());
            system->setZ(placement->z.document());
            const std::vector<Instance> styled = item.users("STYLED_ITEM");
            system->setShown(!invisible.contains(item.number()) &&
                             std::ranges::none_of(styled, [&invisible](const Instance& each) {
                                 return invisible.contains(each.number());
                             }));
            if (const auto layer = reading.layerIds.find(item.number()); layer != reading.layerIds.end())
                system->setLayerId(layer->second);
            reading.misc(owner.product).addWorldCoordinateSystem(system);
        }
}

PartContents readPartData(StepFile& file, const std::wstring& lengthSymbol) {
    PartReading reading(file, lengthSymbol);
    readIdentification(reading);
    readProperties(reading);
    readLayers(reading);
    readCoordinateSystems(reading);
    readEntityData(reading);
    return std::move(reading.contents);
}

} // namespace zeq::step
