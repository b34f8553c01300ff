// What a STEP file says of sizes, tolerances, datums and notes by its data (not by what it draws), in the library's
// classes.
#pragma once

#include <cstdint>
#include <vector>

#include "step/step_file.h"
#include "zeq_api/exchange_pmi/annotation_view.h"

namespace zeq::step {

/// An annotation that a file describes, and everything that the file calls by it.
struct SemanticAnnotation {
    std::vector<std::uint64_t> numbers; ///< of the instances that it stands for, the first being its id
    std::uint64_t product = 0;          ///< number of the PRODUCT_DEFINITION; 0 if none
    ExcPMIAnnotationPtr annotation;     ///< name, id, linked elements, values; no place
};

/// All dimensions, geometric tolerances, datums, datum targets and notes, in the order of the file. What cannot be
/// read, or says something that the classes have no member for, is told in the losses as "semantic annotations".
///
/// Dimensions. Lengths are in the unit that travels, angles in degrees; precisions are decimals, and given only where
/// the file's unit is the one that travels, since they say nothing about a converted number.
/// - The numerical tolerance is always how far the value may be from `value()`, signed. Limits are turned into that,
///   and stand, as they are to be shown, in the alphanumerical tolerance too. Where there are limits and no nominal
///   value, the value is the lower limit. A class of fit stands in the upper alphanumerical tolerance alone: "H7".
/// - The main type is `basic` (theoretically exact), `reference` (auxiliary), `tolerance` with tolerances, limits or
///   a fit, else `unknown`.
/// - The note holds what modifies the value. Its prefix stands in place of the symbol of the sub type: "S⌀", "SR",
///   "CR", "□"; its suffix has the rest, separated by blanks: "MAX", "MIN", "AVG", "ST", "CF". The callout text holds
///   what the file says in words that are not known.
/// - The linked elements of a distance are those of its first end, then those of its second; a path that it is
///   measured along follows with the description "path".
/// - A dimension without any value is not sent.
///
/// Geometric tolerances. Each has a row for each segment of a composite frame. Rate units: the length, or the two
/// sides of the area, that the tolerance holds on; a circular area has its diameter and 0, and says so in the note.
/// Modifiers without a member of EToleranceModifier are in the suffix of the note (of the text of a datum reference)
/// as ISO 1101 and ISO 5459 abbreviate them: "SEP REQT", "ACS", "LE". Datum identifiers are the ids of the datums.
///
/// Datum targets. The label and the lower text are the datum's letter and the target's number, "C1"; the upper text
/// holds the sizes: "31.75", "50.8x31.75". The zone of a rectangle is between two opposite corners; that of others is
/// their origin twice.
///
/// Notes are properties named 'semantic text'; those of a whole product are NOA.
std::vector<SemanticAnnotation> readSemanticPMI(StepFile& file);

} // namespace zeq::step
