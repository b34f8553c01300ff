// Finds what each drawing presents, lays annotations out in planes, and lists what each view shows.
#include "convexor/annotations.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <unordered_map>

#include "convexor/annotation_nodes.h"
#include "zeq_api/exchange_pmi/annotation_view.h"
#include "zeq_api/exchange_pmi/capture.h"

namespace zeq::convexor {

namespace {

using step::AnnotationGraphics;
using step::Placement;

/// An annotation and how it is drawn, not at all or more than once.
struct Annotation {
    ExcPMIAnnotationPtr semantic;
    std::uint64_t product;
    std::vector<const AnnotationGraphics*> graphics;
    bool isOnlyDrawn = false;
};

/// Whether two planes coincide, with the same directions in them.
bool isSame(const Placement& a, const Placement& b) {
    constexpr double fit = 1e-6;
    const auto isClose = [](const step::Vec& p, const step::Vec& q) { return length(p - q) < fit; };
    const double offset = std::abs(dot(a.z, b.origin - a.origin));
    return isClose(a.z, b.z) && isClose(a.x, b.x) &&
           offset <= fit * (1 + length(a.origin) + length(b.origin));
}

ExcVector2d flat(const step::Vec& local) { return {local.x, local.y}; }

void addTo(ExcPMIAnnotationView& view, const ExcPMIAnnotationPtr& annotation) {
    if (const auto dimension = std::dynamic_pointer_cast<ExcPMIDimension>(annotation))
        view.addDimension(dimension);
    else if (const auto tolerance = std::dynamic_pointer_cast<ExcPMIGDT>(annotation))
        view.addGdt(tolerance);
    else if (const auto datum = std::dynamic_pointer_cast<ExcPMIDatum>(annotation))
        view.addDatum(datum);
    else if (const auto target = std::dynamic_pointer_cast<ExcPMIDatumTarget>(annotation))
        view.addDatumTarget(target);
    else if (const auto note = std::dynamic_pointer_cast<ExcPMINote>(annotation))
        view.addNote(note);
}

/// A drawing that presents nothing that is known.
ExcPMINotePtr makeNote(const AnnotationGraphics& graphics, const step::StepFile& file) {
    auto note = std::make_shared<ExcPMINote>();
    note->setId(std::to_wstring(graphics.number));
    note->setName(graphics.name);
    if (!graphics.text.empty()) {
        auto text = std::make_shared<ExcPMINote::Text>();
        text->setLabel(graphics.text);
        text->setFontName(graphics.style.font);
        text->setHeight(graphics.height);
        if (const auto& color = graphics.style.color) {
            const auto part = [&color](ExcColor::EChannel channel) {
                return color->channel(channel) / 255.0;
            };
            text->setRGBA(part(ExcColor::EChannel::red), part(ExcColor::EChannel::green),
                          part(ExcColor::EChannel::blue), 1);
        }
        note->addText(text);
    }
    for (const step::Instance& definition : graphics.definitions)
        note->addLinkedElements(file.entities(definition));
    return note;
}

/// The annotations of one product under way.
class Organizer {
public:
    explicit Organizer(std::uint64_t product) : m_product(product) {}

    void add(const Annotation& annotation) {
        ExcPMIAnnotation& semantic = *annotation.semantic;
        const AnnotationGraphics* const first =
            annotation.graphics.empty() ? nullptr : annotation.graphics[0];
        const View& view = viewOf(first ? first->plane : std::nullopt);
        if (first) place(semantic, *first, view.plane);
        if (semantic.name().empty() && first) semantic.setName(first->name);
        addTo(*view.semantic, annotation.semantic);
        m_result.onlyDrawn += annotation.isOnlyDrawn ? 1 : 0;
        view.display->addAnnotationId(semantic.id());
        for (const AnnotationGraphics* const graphics : annotation.graphics) {
            if (graphics->isDrawn())
                group(groupType(semantic)).addChildNode(makeAnnotationNode(semantic, *graphics));
        }
    }

    void add(const step::SavedView& view, const std::vector<std::wstring>& annotationIds,
             const std::set<std::wstring>& filledIds) {
        auto capture = std::make_shared<ExcPMICapture>();
        auto shown = std::make_shared<ExcVisuCapture>();
        const std::wstring id = std::to_wstring(view.number);
        capture->setName(view.name);
        capture->setId(id);
        capture->setCurrent(view.isActive);
        capture->setManageHideShow(true);
        capture->setCamera(std::make_shared<ExcCamera>(view.camera));
        if (view.clipping) capture->setClippingPlane(std::make_shared<ExcClippingPlane>(*view.clipping));
        shown->setDisplayName(view.name);
        shown->setId(id);
        shown->setMechanicalId(id);
        shown->setActive(view.isActive);
        shown->setCamera(view.camera);
        if (view.clipping) shown->setClippingPlane(*view.clipping);
        for (const std::wstring& each : annotationIds) {
            capture->addAnnotationId(each);
            if (filledIds.contains(each)) shown->addFtaConstructedGeometryIds(each);
        }
        shown->setAnnotationIds(annotationIds);
        m_result.set->addCapture(capture);
        m_result.captures.push_back(shown);
    }

    ProductAnnotations take() {
        for (const View& view : m_views) {
            m_result.set->addView(view.semantic);
            m_result.views.push_back(view.display);
        }
        if (m_groups.empty()) return std::move(m_result);
        m_result.node = std::make_shared<ExcVisuNode>();
        m_result.node->setType(ExcVisuNode::EType::PMI);
        for (const auto& [type, node] : m_groups) m_result.node->addChildNode(node);
        return std::move(m_result);
    }

private:
    struct View {
        std::optional<Placement> plane; ///< null for what is laid out nowhere
        ExcPMIAnnotationViewPtr semantic;
        ExcVisuViewPtr display;
    };

    const View& viewOf(const std::optional<Placement>& plane) {
        for (const View& view : m_views)
            if (view.plane.has_value() == plane.has_value() && (!plane || isSame(*view.plane, *plane)))
                return view;
        const Placement placement = plane.value_or(Placement());
        View view{plane, std::make_shared<ExcPMIAnnotationView>(), std::make_shared<ExcVisuView>()};
        const std::wstring id =
            L"view " + std::to_wstring(m_product) + L"." + std::to_wstring(m_views.size() + 1);
        view.semantic->setId(id);
        view.semantic->setName(plane ? id : L"without a plane");
        view.semantic->setOrigin(placement.origin.document());
        view.semantic->setVectorU(placement.x.document());
        view.semantic->setVectorV(placement.y.document());
        view.display->setId(id);
        view.display->setMechanicalId(id);
        view.display->setDisplayName(view.semantic->name());
        view.display->setOrigin(placement.origin.document());
        view.display->setDirectionU(placement.x.document());
        view.display->setDirectionV(placement.y.document());
        m_views.push_back(std::move(view));
        return m_views.back();
    }

    static void place(ExcPMIAnnotation& annotation, const AnnotationGraphics& graphics,
                      const std::optional<Placement>& plane) {
        annotation.setHidden(graphics.isHidden);
        const Placement placement = plane.value_or(Placement());
        if (graphics.anchor) {
            const step::Vec local = placement.into(*graphics.anchor);
            annotation.setPosition(flat(local));
            annotation.setZDepth(local.z);
        }
        for (const std::vector<step::Vec>& points : graphics.leaders) {
            auto leader = std::make_shared<ExcPMILeader>();
            for (const step::Vec& point : points) leader->addPoint(flat(placement.into(point)));
            annotation.addLeader(leader);
        }
    }

    ExcVisuNode& group(ExcVisuNode::EType type) {
        ExcVisuNodePtr& node = m_groups[type];
        if (!node) {
            node = std::make_shared<ExcVisuNode>();
            node->setType(type);
        }
        return *node;
    }

    const std::uint64_t m_product; ///< which makes the ids of views different from those of others
    ProductAnnotations m_result{std::make_shared<ExcPMIAnnotationSet>(), nullptr, {}, {}, 0};
    std::vector<View> m_views;
    std::map<ExcVisuNode::EType, ExcVisuNodePtr> m_groups;
};

} // namespace

std::map<std::uint64_t, ProductAnnotations>
organizeAnnotations(const std::vector<step::SemanticAnnotation>& semantic,
                    const std::vector<AnnotationGraphics>& graphics,
                    const std::vector<step::SavedView>& views, const step::StepFile& file) {
    std::vector<Annotation> annotations;
    // Of what annotations stand for, which may be the same for several.
    std::unordered_map<std::uint64_t, std::vector<std::size_t>> byNumber;
    for (const step::SemanticAnnotation& each : semantic) {
        for (const std::uint64_t number : each.numbers) byNumber[number].push_back(annotations.size());
        annotations.push_back({each.annotation, each.product, {}});
    }
    std::unordered_map<std::uint64_t, std::vector<std::wstring>> idsOf; // of a callout
    std::set<std::wstring> filledIds;
    for (const AnnotationGraphics& each : graphics) {
        std::vector<std::size_t> presented;
        for (const step::Instance& definition : each.definitions)
            if (const auto found = byNumber.find(definition.number()); found != byNumber.end())
                for (const std::size_t index : found->second)
                    if (std::ranges::find(presented, index) == presented.end()) presented.push_back(index);
        if (presented.empty()) {
            presented.push_back(annotations.size());
            annotations.push_back({makeNote(each, file), each.product, {}, true});
        }
        // One drawing of several annotations, such as a frame below a dimension, is that of the first.
        annotations[presented.front()].graphics.push_back(&each);
        if (each.fill) filledIds.insert(annotations[presented.front()].semantic->id());
        for (const std::size_t index : presented)
            idsOf[each.number].push_back(annotations[index].semantic->id());
    }
    std::map<std::uint64_t, Organizer> organizers;
    for (const Annotation& each : annotations)
        organizers.try_emplace(each.product, each.product).first->second.add(each);
    for (const step::SavedView& view : views) {
        std::vector<std::wstring> ids;
        std::set<std::wstring> known;
        for (const std::uint64_t callout : view.annotations)
            for (const std::wstring& id : idsOf[callout])
                if (known.insert(id).second) ids.push_back(id);
        organizers.try_emplace(view.product, view.product).first->second.add(view, ids, filledIds);
    }
    std::map<std::uint64_t, ProductAnnotations> result;
    for (auto& [number, organizer] : organizers) result.emplace(number, organizer.take());
    return result;
}

} // namespace zeq::convexor
