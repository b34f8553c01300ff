// Everything that a STEP file says beside its shapes, read from its text before the kernel touches it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

#include "convexor/annotations.h"
#include "convexor/import_settings.h"
#include "convexor/input_file.h"
#include "convexor/length_unit.h"
#include "convexor/loss_report.h"
#include "convexor/reporter.h"
#include "convexor/structure_builder.h"
#include "step/part_data.h"
#include "step/spared_usages.h"

namespace zeq::convexor {

/// What is known of a product that becomes a block.
struct StepProduct {
    bool isRootAssembly = false;
    ProductAnnotations annotations; ///< its set is null when there are none
    step::PartData data;
    ExcVisuMeshPtr mesh; ///< of what is given as triangles alone; null when there is none
};

struct StepContents {
    LengthUnit lengthUnit;                              ///< in which lengths travel
    std::map<std::uint64_t, StepProduct> products;      ///< by the ids of their blocks
    KnownProducts known;                                ///< the same products by their definitions
    std::vector<std::uint64_t> faces;                   ///< the numbers of those of boundary representations
    std::unordered_map<std::uint64_t, ExcColor> colors; ///< of faces and edges, by their numbers
    LossReport report; ///< with what the file holds, and what the text alone decides
    /// What the kernel need not read, and the file without it; nothing where it has to read all.
    step::SparedUsages spared;
    std::optional<InputFile> sparing;
    std::uint64_t largestNumber = 0; ///< of an instance
};

/// Reads the file as the settings want it.
/// @throws part21::ReadError when it is no exchange structure
StepContents readStepContents(const InputFile& input, const ImportSettings& settings, Reporter& reporter);

/// Sends the annotations, properties and entity data of each block, before anything is known of its shape.
void sendMechanicalData(const StepContents& contents, Channel& channel);

} // namespace zeq::convexor
