// Walks the assembly structure, each distinct label once.
#include "convexor/structure_builder.h"

#include <deque>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include <Geom_Axis2Placement.hxx>
#include <Geom_Direction.hxx>
#include <NCollection_DataMap.hxx>
#include <Precision.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <TDF_LabelSequence.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <gp_Ax3.hxx>
#include <gp_Trsf.hxx>

#include "convexor/attributes.h"

namespace zeq::convexor {

namespace {

/// Names by which a host recognises a product that is a single part.
constexpr const wchar_t* loneProductName = L"SPAXIopPSProductDummyReference";
constexpr const wchar_t* loneInstanceName = L"SPAXIopPSProductDummyInstance";

/// Makes texts unique by numbering the repeated ones.
class UniqueTexts {
public:
    std::wstring make(const std::wstring& text) {
        std::wstring result = text;
        while (!m_taken.insert(result).second)
            result = text + L"#" + std::to_wstring(++m_repetitions[text] + 1);
        return result;
    }

private:
    std::unordered_set<std::wstring> m_taken;
    std::unordered_map<std::wstring, int> m_repetitions;
};

ExcTransformation placement(const gp_Trsf& trsf, const LengthUnit& unit) {
    ExcTransformation result;
    for (int row = 0; row < 3; ++row)
        result.affine()[row].set(trsf.Value(row + 1, 1), trsf.Value(row + 1, 2), trsf.Value(row + 1, 3));
    result.translation().set(trsf.Value(1, 4) / unit.millimeters, trsf.Value(2, 4) / unit.millimeters,
                             trsf.Value(3, 4) / unit.millimeters);
    return result;
}

/// Through the same classes as in the kernel's reader, each of which rounds.
gp_Ax3 axes(const step::Axes& axes, double factor) {
    const auto direction = [](const std::optional<step::Vec>& vector) {
        std::optional<gp_Dir> result;
        if (vector && step::length(*vector) > gp::Resolution())
            result = Geom_Direction(vector->x, vector->y, vector->z).Dir();
        return result;
    };
    const gp_Pnt origin(axes.origin.x * factor, axes.origin.y * factor, axes.origin.z * factor);
    const gp_Dir axis = direction(axes.axis).value_or(gp::DZ());
    const std::optional<gp_Dir> reference = direction(axes.reference);
    const bool isWhole = reference && !axis.IsParallel(*reference, Precision::Angular());
    return Geom_Axis2Placement(isWhole ? gp_Ax2(origin, axis, *reference) : gp_Ax2(origin, axis)).Ax2();
}

/// As the kernel computes it, to the last bit.
gp_Trsf placement(const step::Usage& usage, const std::unordered_map<std::uint64_t, double>& lengthFactors) {
    const auto from = lengthFactors.find(usage.from.representation);
    const auto to = lengthFactors.find(usage.to.representation);
    if (from == lengthFactors.end() || to == lengthFactors.end()) throw UnlikeUsages();
    gp_Trsf result;
    result.SetTransformation(axes(usage.to, to->second), axes(usage.from, from->second));
    return result;
}

bool isSame(const gp_Trsf& a, const gp_Trsf& b) {
    for (int row = 1; row <= 3; ++row)
        for (int column = 1; column <= 4; ++column)
            if (a.Value(row, column) != b.Value(row, column)) return false;
    return true;
}

class StructureBuilder {
public:
    StructureBuilder(const Model& model, const std::wstring& storageName, const ImportSettings& settings,
                     const KnownProducts& products, const step::SparedUsages& spared)
        : m_document(model.document), m_origins(model.origins), m_lengthUnit(model.lengthUnit),
          m_attributes(model), m_storageName(storageName), m_settings(settings),
          m_definitions(model.products), m_products(products), m_spared(spared),
          m_lengthFactors(model.lengthFactors), m_lastId(products.size()) {}

    Structure build() {
        if (!m_spared.byUser.empty()) findLabels();
        m_product->setUnits(m_lengthUnit.type);
        TDF_LabelSequence roots;
        XCAFDoc_DocumentTool::ShapeTool(m_document->Main())->GetFreeShapes(roots);
        for (const TDF_Label& root : roots)
            if (const auto reference = makeReference(root, {})) m_product->addRootBlockReference(reference);
        nameProduct();

        // Not recursive: an assembly may be nested as deeply as its file likes.
        for (; !m_pending.empty(); m_pending.pop_front()) fill(m_pending.front());
        return {m_product, std::move(m_parts)};
    }

private:
    struct Pending {
        TDF_Label label;
        ExcBlockPtr block;
        std::wstring key; ///< unique among the assemblies and stable across imports
    };

    /// A block with what its references take over from it.
    struct Known {
        ExcBlockPtr block; ///< null for one that is hidden and left out
        ExcColor color;
        bool hidden;
    };

    void nameProduct() {
        const auto& roots = m_product->rootBlockReferences();
        const bool isOne = roots.size() == 1;
        if (isOne && m_product->getBlockById(roots.front()->blockId())->isPart()) {
            m_product->setProductName(loneProductName);
            roots.front()->setName(loneInstanceName);
        } else {
            m_product->setProductName(isOne && !roots.front()->name().empty() ? roots.front()->name()
                                                                              : m_storageName);
        }
    }

    void fill(const Pending& pending) {
        TDF_LabelSequence components;
        XCAFDoc_ShapeTool::GetComponents(pending.label, components);
        const auto add = [&pending](const ExcBlockReferencePtr& reference) {
            if (reference) pending.block->addBlockReference(reference);
        };
        const int* const definition = m_definitions.Seek(pending.label);
        const auto usages = m_spared.byUser.find(static_cast<std::uint64_t>(definition ? *definition : 0));
        if (usages == m_spared.byUser.end()) {
            for (const TDF_Label& component : components) add(makeReference(component, pending.key));
            return;
        }
        int next = 1;
        for (const step::Usage& usage : usages->second) {
            const auto part = m_labels.find(usage.part);
            if (part == m_labels.end()) continue; // the kernel has made nothing of it
            if (usage.isSpared) {
                const std::wstring name = Attributes::isMadeUp(usage.name) ? std::wstring() : usage.name;
                add(makeReference(part->second, name, placement(usage, m_lengthFactors), false, pending.key));
                continue;
            }
            if (next > components.Length()) throw UnlikeUsages();
            requireAlike(components(next), part->second, usage);
            add(makeReference(components(next++), pending.key));
        }
        if (next <= components.Length()) throw UnlikeUsages();
    }

    /// The labels of products that spared usages may name.
    void findLabels() {
        for (decltype(Model::products)::Iterator each(m_definitions); each.More(); each.Next())
            m_labels.try_emplace(static_cast<std::uint64_t>(each.Value()), each.Key());
        for (const auto& [user, usages] : m_spared.byUser)
            for (const step::Usage& usage : usages)
                if (m_labels.contains(usage.part) && !m_labels.contains(user)) throw UnlikeUsages();
    }

    /// Whether the kernel has made of a usage that it was not spared what would be made of a spared one.
    void requireAlike(const TDF_Label& component, const TDF_Label& part, const step::Usage& usage) const {
        TDF_Label referred;
        if (!XCAFDoc_ShapeTool::GetReferredShape(component, referred) || referred != part)
            throw UnlikeUsages();
        if (!usage.isPlain) return;
        const gp_Trsf place = XCAFDoc_ShapeTool::GetLocation(component).Transformation();
        const std::wstring name = Attributes::isMadeUp(usage.name) ? std::wstring() : usage.name;
        if (m_attributes.name(component) != name || !isSame(place, placement(usage, m_lengthFactors)))
            throw UnlikeUsages();
    }

    /// `label` is an instance of a block, or at the top level a block itself. Null if it is hidden and left
    /// out.
    ExcBlockReferencePtr makeReference(const TDF_Label& label, const std::wstring& parentKey) {
        TDF_Label child = label;
        const bool isInstance = XCAFDoc_ShapeTool::GetReferredShape(label, child);
        const bool isHiddenInstance = isInstance && m_attributes.isHidden(label);
        const auto reference = makeReference(child, isInstance ? m_attributes.name(label) : std::wstring(),
                                             XCAFDoc_ShapeTool::GetLocation(label).Transformation(),
                                             isHiddenInstance, parentKey);
        if (reference && isInstance) {
            if (const ExcColor color = m_attributes.color(label); color.hasRGB()) reference->setColor(color);
            if (m_settings.miscData) m_attributes.addMiscData(label, false, reference->miscData());
        }
        return reference;
    }

    /// @param name of the instance; may be empty
    ExcBlockReferencePtr makeReference(const TDF_Label& child, const std::wstring& name, const gp_Trsf& place,
                                       bool isHidden, const std::wstring& parentKey) {
        if (isHidden && !m_settings.hiddenEntities) return nullptr;
        const Known& known = know(child);
        if (!known.block) return nullptr;

        auto reference = std::make_shared<ExcBlockReference>();
        reference->setGuid(IExchangeObject::generateUUID());
        reference->setBlockId(known.block->id());
        reference->setName(name.empty() ? known.block->name() : name);
        reference->setTransformation(placement(place, m_lengthUnit));
        reference->setColor(known.color);
        reference->setHidden(known.hidden || isHidden);
        reference->setPersistentName(reference->name());
        reference->setPersistentId(m_referenceKeys.make(parentKey + L"/" + reference->name()));
        return reference;
    }

    /// Null for what is no product of the file.
    const KnownProduct* productOf(const TDF_Label& label) const {
        const int* const definition = m_definitions.Seek(label);
        const auto found =
            definition ? m_products.find(static_cast<std::uint64_t>(*definition)) : m_products.end();
        return found == m_products.end() ? nullptr : &found->second;
    }

    /// That of its product, unless another label has it already.
    std::uint64_t idOf(const KnownProduct* product) {
        return product && m_takenIds.insert(product->blockId).second ? product->blockId : ++m_lastId;
    }

    /// The block of a part or an assembly, made at the first call.
    const Known& know(const TDF_Label& label) {
        if (const Known* known = m_known.Seek(label)) return *known;
        const bool isHidden = m_attributes.isHidden(label);
        if (isHidden && !m_settings.hiddenEntities) return *m_known.Bound(label, {});
        const auto block = std::make_shared<ExcBlock>();
        const KnownProduct* const product = productOf(label);
        block->setId(idOf(product));
        block->setName(m_attributes.name(label));
        block->setStorageName(m_storageName);
        block->setPart(!XCAFDoc_ShapeTool::IsAssembly(label) || (product && !product->isAssembly));
        if (m_settings.miscData)
            m_attributes.addMiscData(label, !product || product->hasMaterial, block->miscData());
        m_product->addBlock(block);
        if (block->isPart())
            addPart(block, label);
        else
            m_pending.push_back({label, block, m_assemblyKeys.make(block->name())});
        return *m_known.Bound(label, {block, m_attributes.color(label), isHidden});
    }

    void addPart(const ExcBlockPtr& block, const TDF_Label& label) {
        const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(label);
        m_parts.push_back({block, shape, label, Numbering(shape, m_origins)});
    }

    const Handle(TDocStd_Document) m_document;
    const Origins& m_origins;
    const LengthUnit m_lengthUnit;
    const Attributes m_attributes;
    const std::wstring m_storageName;
    const ImportSettings m_settings;
    const NCollection_DataMap<TDF_Label, int, TDF_LabelMapHasher>& m_definitions;
    const KnownProducts& m_products;
    const step::SparedUsages& m_spared;
    const std::unordered_map<std::uint64_t, double>& m_lengthFactors;
    std::unordered_map<std::uint64_t, TDF_Label> m_labels; ///< by the numbers of product definitions
    std::unordered_set<std::uint64_t> m_takenIds;
    std::uint64_t m_lastId; ///< of those that are not given

    std::shared_ptr<ExcProductStructure> m_product = std::make_shared<ExcProductStructure>();
    NCollection_DataMap<TDF_Label, Known, TDF_LabelMapHasher> m_known;
    std::deque<Pending> m_pending;
    std::vector<Structure::Part> m_parts;
    UniqueTexts m_assemblyKeys;
    UniqueTexts m_referenceKeys;
};

} // namespace

Structure buildProductStructure(const Model& model, const std::wstring& storageName,
                                const ImportSettings& settings, const KnownProducts& products,
                                const step::SparedUsages& spared) {
    return StructureBuilder(model, storageName, settings, products, spared).build();
}

} // namespace zeq::convexor
