// Reads CAD files into the kernel's document model.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include <NCollection_DataMap.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <TDocStd_Document.hxx>

#include "convexor/iges_attributes.h"
#include "convexor/iges_contents.h"
#include "convexor/import_settings.h"
#include "convexor/input_file.h"
#include "convexor/length_unit.h"
#include "convexor/numbering.h"
#include "convexor/reporter.h"
#include "zeq_api/convexor_info/format.h"

namespace zeq::convexor {

/// What a file held: parts and assemblies with their attributes, lengths in millimetres.
struct Model {
    Handle(TDocStd_Document) document;
    /// What the user should know of the file: "holds 4 swept solids, which do not travel yet".
    std::vector<std::wstring> remarks = {};
    int errors = 0;             ///< entities that could not be read; the log lines tell which
    LengthUnit lengthUnit = {}; ///< in which its lengths are to travel
    /// What a density of 1 in the document stands for in g/cm^3; 0 when that cannot be told.
    double densityUnit = 0;
    Origins origins = {};                  ///< of faces and edges
    IgesDirectory directory = {};          ///< of an IGES file
    std::optional<IgesContents> iges = {}; ///< what such a file holds
    /// The numbers of the instances that define the products in a STEP file, by the labels of parts and
    /// assemblies.
    NCollection_DataMap<TDF_Label, int, TDF_LabelMapHasher> products = {};
    /// The millimetres of the units of length of representations in a STEP file, by their numbers.
    std::unordered_map<std::uint64_t, double> lengthFactors = {};
};

/// The formats that readModel() understands.
const std::vector<std::shared_ptr<Format>>& importFormats();

/// The format of a file, as its name tells.
/// @throws ImportError when it is none that can be imported
EFormatType formatOf(const InputFile& input);

/// Reads the file in the format that its name tells.
/// @throws ImportError when the file or its format is at fault
/// @throws Standard_Failure when the kernel gives up
Model readModel(const InputFile& input, const ImportSettings& settings, Reporter& reporter);

} // namespace zeq::convexor
