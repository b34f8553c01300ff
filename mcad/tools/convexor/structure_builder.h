// Turns the kernel's document into the product structure that travels to the host.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <TDF_Label.hxx>
#include <TopoDS_Shape.hxx>

#include "convexor/import_settings.h"
#include "convexor/model_reader.h"
#include "step/spared_usages.h"
#include "zeq_api/exchange_structure/product_structure.h"

namespace zeq::convexor {

/// What a model becomes.
struct Structure {
    /// A block that is a part.
    struct Part {
        ExcBlockPtr block;
        TopoDS_Shape shape; ///< in millimetres
        TDF_Label label;    ///< in the document
        Numbering numbering;
    };

    std::shared_ptr<ExcProductStructure> product;
    std::vector<Part> parts; ///< in the order of the blocks
};

/// What is known of a product before its shape is.
struct KnownProduct {
    std::uint64_t blockId;
    bool isAssembly;          ///< whether it uses other products
    bool hasMaterial = false; ///< whether it is made of one, whatever the kernel thinks
};

/// By the numbers of the definitions in the file.
using KnownProducts = std::map<std::uint64_t, KnownProduct>;

/// The kernel has not made of the usages that it read what the text says of them, so nothing can be said of those that
/// it was spared.
class UnlikeUsages : public std::runtime_error {
public:
    UnlikeUsages() : std::runtime_error("the kernel has made something else of the usages of products") {}
};

/// Builds the product structure of a model that was read from the file named `storageName`.
///
/// Each distinct part or assembly is one block, however often it is placed. A block has the id that its product
/// was given, the others have the next ones, level by level from the root. A product that
/// uses no other is a part, in however many pieces the kernel has its shape. A block has no colour of its own, so each reference carries the colour it shows: that of
/// the instance, else that of the part. A placement maps a point p of the child to affine * p + translation
/// in the parent, the rows of `affine` being the rows of that matrix. Persistent ids are made of names, so
/// they stay the same when the file is imported again. Hidden instances that the settings leave out take with
/// them the blocks that are placed nowhere else.
/// @param spared usages that the model lacks
/// @throws UnlikeUsages
Structure buildProductStructure(const Model& model, const std::wstring& storageName,
                                const ImportSettings& settings, const KnownProducts& products,
                                const step::SparedUsages& spared = {});

} // namespace zeq::convexor
