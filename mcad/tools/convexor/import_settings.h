// What the option groups of an import command come to for this translator.
#pragma once

#include <memory>
#include <string>

#include "convexor/reporter.h"
#include "zeq_api/command/options.h"
#include "zeq_api/exchange_common/units.h"

namespace zeq::convexor {

/// The choices that an import depends on, whatever option they come from.
struct ImportSettings {
    /// Unit of all lengths that travel: `model_unit` for the file's own, `unknown` for millimetres.
    ELengthUnitType lengthUnit = ELengthUnitType::unknown;
    bool miscData = false;      ///< whether layers, materials and properties travel
    bool hiddenEntities = true; ///< whether hidden parts and assemblies travel, marked as such
    bool geometry = true;       ///< whether the shapes of parts travel
    bool display = true;        ///< whether the scenes of parts travel
    bool rootDisplay = true;    ///< whether the scene of the assembly travels
    bool tessellation = true;   ///< whether scenes show the shapes of their parts
    double chord = 0;           ///< of the triangles, in the unit that travels; 0 leaves the choice
    bool semanticPMI = true;    ///< whether dimensions, tolerances and datums travel
    bool graphicalPMI = true;   ///< whether drawn annotations and saved views travel
    bool mapping = true;        ///< whether the numbers of the file travel, of faces and edges
};

/// Takes the settings for a file of that format from a command. For each option group, one log line names the
/// keys that were set and cannot be honoured.
/// @param commandText the command as it arrived: of a flag, its class cannot tell whether anybody said it
ImportSettings importSettings(const ImportOptions& options, const std::wstring& commandText,
                              EFormatType fileFormat, Reporter& reporter);

/// The group of that class; null when there is none.
template <class Group>
std::shared_ptr<const Group> findGroup(const ImportOptions& options) {
    return std::dynamic_pointer_cast<const Group>(options.formatOptions(Group().formatType()));
}

} // namespace zeq::convexor
