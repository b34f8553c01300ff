// Writes a model as a STEP AP242 or an IGES file.
#pragma once

#include <filesystem>
#include <vector>

#include "model.h"

namespace samples {

/// The numbers of instances in a written STEP file of one part, to which more can be appended.
struct StepNumbers {
    int shape = 0;          ///< the PRODUCT_DEFINITION_SHAPE
    int representation = 0; ///< the shape representation of the body
    int context = 0;        ///< of that representation
    int lengthUnit = 0;     ///< millimetre
    int last = 0;           ///< the largest number of the file
    std::vector<int> faces; ///< of the faces that were asked for; 0 for one that is not there
};

/// Both write the same bytes for the same model whenever they run.
/// @throws std::runtime_error when the file cannot be written
void writeStep(Model& model, const std::filesystem::path& path);
StepNumbers writeStep(Model& model, const std::filesystem::path& path,
                      const std::vector<TopoDS_Shape>& faces);
void writeIges(Model& model, const std::filesystem::path& path);

} // namespace samples
