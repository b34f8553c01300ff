// What an IGES file holds, and what of it is among the shapes that travel.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string_view>
#include <vector>

#include <TopoDS_Shape.hxx>
#include <XSControl_WorkSession.hxx>

#include "convexor/import_settings.h"
#include "convexor/loss_report.h"

namespace zeq::convexor {

/// Things of an IGES file by the kinds that are accounted for.
struct IgesContents {
    /// An entity, by the number of its directory entry.
    struct Item {
        std::uint64_t number;
        TopoDS_Shape shape;      ///< that the kernel made of it
        const wchar_t* obstacle; ///< why it cannot travel; null if it can
    };
    /// Faces wherever they are, other things only as far as no other one is made of them.
    std::map<std::string_view, std::vector<Item>> items;
    std::set<int> levels;   ///< of the shapes
    std::size_t colors = 0; ///< of the shapes, different ones
};

/// Looks at all directory entries, after the kernel has made shapes.
IgesContents readIgesContents(const Handle(XSControl_WorkSession) & session);

/// What has become of a file.
struct IgesOutcome {
    std::vector<TopoDS_Shape> parts;
    std::size_t lostWires = 0; ///< curves that the geometry lacks
    std::set<int> sentLevels;  ///< of any part
};
/// Adds what the file holds, and of all but faces and layers what was sent; says why the rest was not.
void accountForIges(const IgesContents& contents, const IgesOutcome& outcome, const ImportSettings& settings,
                    LossReport& report);

} // namespace zeq::convexor
