// Sorts entities by their types and asks of each shape whether a part has it.
#include "convexor/iges_contents.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <unordered_set>

#include <IGESCAFControl.hxx>
#include <IGESData_IGESEntity.hxx>
#include <IGESData_IGESModel.hxx>
#include <IGESGraph_Color.hxx>
#include <Quantity_Color.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TransferBRep.hxx>
#include <XSControl_TransferReader.hxx>

namespace zeq::convexor {

namespace {

constexpr std::string_view faces = "faces", curves = "curves", points = "points",
                           annotations = "graphical annotations", views = "views", properties = "properties";

/// What entities of a type count as; empty for those that stand for nothing by themselves, and for those that hold
/// faces, which count instead (IGES 5.3, 4).
std::string_view kindOf(const IGESData_IGESEntity& entity) {
    const int form = entity.FormNumber();
    switch (const int type = entity.TypeNumber()) {
    case 100: // circular arc
    case 102: // composite curve
    case 104: // conic arc
    case 110: // line
    case 112: // parametric spline curve
    case 126: // rational B-spline curve
    case 130: // offset curve
        return curves;
    case 106: // copious data: from 20 on centre lines, sections and witness lines, at last closed curves
        return form >= 20 && form <= 40 ? annotations : curves;
    case 108: // plane, which without a form has no bounds
        return form == 0 ? std::string_view() : faces;
    case 114: // surfaces: parametric spline
    case 118: // ruled
    case 120: // of revolution
    case 122: // tabulated cylinder
    case 128: // rational B-spline
    case 140: // offset
    case 143: // bounded
    case 144: // trimmed
    case 190: // plane
    case 192: // right circular cylindrical
    case 194: // right circular conical
    case 196: // spherical
    case 198: // toroidal
    case 510: // face
        return faces;
    case 116:
        return points;
    case 404: // drawing
    case 410:
        return views;
    case 406: // but for names, which travel otherwise
        return form == 15 ? std::string_view() : properties;
    case 422: // attribute table
        return properties;
    default:
        return type >= 202 && type <= 230 ? annotations : std::string_view();
    }
}

bool isShape(std::string_view kind) { return kind == faces || kind == curves || kind == points; }

/// Whether an entity counts by itself.
bool counts(const IGESData_IGESEntity& entity, std::string_view kind) {
    const int type = entity.TypeNumber();
    if (type == 143 || type == 144 || type == 510 || kind == views || kind == properties) return true;
    // Other things are made of the odd ones. Definitions and curves in the parameters of surfaces are no geometry.
    const int use = entity.UseFlag();
    return entity.SubordinateStatus() % 2 == 0 && use != 2 && use != 4 && use != 5;
}

/// In sRGB, so that colours that are the same when they are shown are the same.
using Rgb = std::array<int, 3>;

void addColor(const IGESData_IGESEntity& entity, std::set<Rgb>& colors) {
    std::array<double, 3> rgb{};
    if (const auto own = Handle(IGESGraph_Color)::DownCast(entity.Color()); !own.IsNull()) {
        own->RGBIntensity(rgb[0], rgb[1], rgb[2]);
        for (double& channel : rgb) channel /= 100; // they are percentages
    } else if (entity.RankColor() > 0) {
        IGESCAFControl::DecodeColor(entity.RankColor()).Values(rgb[0], rgb[1], rgb[2], Quantity_TOC_sRGB);
    } else {
        return;
    }
    Rgb shown;
    std::ranges::transform(rgb, shown.begin(),
                           [](double channel) { return static_cast<int>(std::lround(channel * 255)); });
    colors.insert(shown);
}

/// The shapes that parts are made of.
class Travelling {
public:
    explicit Travelling(const std::vector<TopoDS_Shape>& parts) {
        for (const TopoDS_Shape& part : parts) {
            TopTools_IndexedMapOfShape all;
            TopExp::MapShapes(part, all);
            for (int i = 1; i <= all.Extent(); ++i) m_shapes.insert(all(i).TShape().get());
        }
    }

    bool hold(const TopoDS_Shape& shape, std::string_view kind) const {
        TopTools_IndexedMapOfShape pieces;
        TopExp::MapShapes(shape,
                          kind == faces    ? TopAbs_FACE
                          : kind == curves ? TopAbs_EDGE
                                           : TopAbs_VERTEX,
                          pieces);
        int held = 0;
        for (int i = 1; i <= pieces.Extent(); ++i) held += m_shapes.contains(pieces(i).TShape().get());
        return held == pieces.Extent() && held > 0;
    }

private:
    std::unordered_set<const TopoDS_TShape*> m_shapes;
};

bool isWanted(std::string_view kind, const ImportSettings& settings) {
    if (isShape(kind)) return settings.geometry;
    if (kind == properties) return settings.miscData;
    return settings.graphicalPMI && (kind == views || settings.display);
}

/// Why something does not travel whatever the settings are; null if it may.
const wchar_t* obstacle(const IGESData_IGESEntity& entity, std::string_view kind) {
    constexpr int firstPrivateForm = 5001;
    if (kind == annotations) return L"annotations of IGES files do not travel";
    if (kind == views) return L"views and drawings of IGES files do not travel";
    if (kind != properties) return nullptr;
    return entity.FormNumber() >= firstPrivateForm
               ? L"only the program that wrote the file knows what it means"
               : L"properties of IGES files do not travel";
}

} // namespace

IgesContents readIgesContents(const Handle(XSControl_WorkSession) & session) {
    IgesContents contents;
    std::set<Rgb> colors;
    const auto file = Handle(IGESData_IGESModel)::DownCast(session->Model());
    const Handle(Transfer_TransientProcess) process = session->TransferReader()->TransientProcess();
    for (int i = 1; i <= file->NbEntities(); ++i) {
        const Handle(IGESData_IGESEntity) entity = file->Entity(i);
        if (entity.IsNull()) continue;
        const std::string_view kind = kindOf(*entity);
        if (kind.empty() || !counts(*entity, kind)) continue;
        IgesContents::Item item{static_cast<std::uint64_t>(file->DNum(entity)), {}, obstacle(*entity, kind)};
        if (isShape(kind)) {
            item.shape = TransferBRep::ShapeResult(process, entity);
            if (item.shape.IsNull()) item.obstacle = L"the kernel made no shape of it";
            if (entity->Level() > 0) contents.levels.insert(entity->Level());
            addColor(*entity, colors);
        }
        contents.items[kind].push_back(std::move(item));
    }
    contents.colors = colors.size();
    return contents;
}

void accountForIges(const IgesContents& contents, const IgesOutcome& outcome, const ImportSettings& settings,
                    LossReport& report) {
    const Travelling travelling(outcome.parts);
    for (const auto& [kind, items] : contents.items) {
        std::map<std::wstring, std::vector<std::uint64_t>> lost;
        for (const IgesContents::Item& item : items) {
            if (!isWanted(kind, settings))
                lost[LossReport::switchedOff].push_back(item.number);
            else if (item.obstacle)
                lost[item.obstacle].push_back(item.number);
            else if (!travelling.hold(item.shape, kind)) // hidden ones, if they are not wanted
                lost[settings.hiddenEntities ? L"no part has it" : LossReport::switchedOff].push_back(
                    item.number);
        }
        report.addHeld(kind, items.size());
        std::size_t sent = items.size();
        for (const auto& [reason, numbers] : lost) {
            report.addLost(kind, reason, numbers);
            sent -= numbers.size();
        }
        if (kind == faces) continue; // their geometry knows how many were sent
        const std::size_t without = kind == curves ? std::min(outcome.lostWires, sent) : 0;
        report.addLost(kind, L"the geometry lacks it, as the log lines tell", without);
        report.addSent(kind, sent - without);
    }
    const auto isUnused = [&outcome](int level) { return !outcome.sentLevels.contains(level); };
    const auto unused = static_cast<std::size_t>(std::ranges::count_if(contents.levels, isUnused));
    if (unused > 0) report.addHeld("layers", unused);
    report.addLost("layers", settings.miscData ? L"nothing that travels is on it" : LossReport::switchedOff,
                   unused);
    report.addHeld("colours", contents.colors);
}

} // namespace zeq::convexor
