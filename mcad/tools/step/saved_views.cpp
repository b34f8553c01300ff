// Reads cameras, and from the draughting models around them what they show.
#include "step/saved_views.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <unordered_set>

namespace zeq::step {

namespace {

/// A window on a view volume (ISO 10303-46): the camera stands at the origin of the view reference system and looks
/// along its third axis; the second is upwards.
ExcCamera makeCamera(const StepFile& file, const Instance& camera, const Placement& system, double scale) {
    ExcCamera result;
    const Instance volume = file.at(attribute(camera, "CAMERA_MODEL_D3", 1, 1));
    const part21::List parameters = volume.parameters();
    const bool isPerspective = parameters[0].name() == "CENTRAL";
    const Vec projectionPoint = readVector(file.at(parameters[1])).value_or(Vec());
    const double distance = parameters[2].number().value_or(0);
    const Instance window = file.at(parameters[8]);
    const double height =
        window.is("PLANAR_BOX") ? attribute(window, "PLANAR_EXTENT", 1, 1).number().value_or(0) : 0;

    const Vec eye = isPerspective ? system(projectionPoint) : system.origin;
    const double reach = distance == 0 ? 1 : distance;
    result.setEye((scale * eye).document());
    result.setTarget((scale * (system.origin + reach * system.z)).document());
    result.setUp(system.y.document());
    if (isPerspective) {
        const double depth = std::abs(distance - projectionPoint.z);
        result.setType(ExcCamera::EType::perspective);
        if (depth > 0)
            result.setPerspectiveViewAngle(2 * std::atan2(height / 2, depth) * 180 / std::numbers::pi);
    } else {
        result.setType(ExcCamera::EType::orthographic);
        result.setOrthographicZoomFactor(scale * height);
    }
    return result;
}

ExcClippingPlane makePlane(const Placement& placement, double scale) {
    using enum ExcClippingPlane::ECoefficient;
    ExcClippingPlane plane;
    const Vec origin = scale * placement.origin;
    plane.setHasPlane(true);
    plane.setOrigin(origin.document());
    plane.setVectorU(placement.x.document());
    plane.setVectorV(placement.y.document());
    plane.setHasCoefficients(true);
    plane.setCoefficient(a, placement.z.x);
    plane.setCoefficient(b, placement.z.y);
    plane.setCoefficient(c, placement.z.z);
    plane.setCoefficient(d, -dot(placement.z, origin));
    return plane;
}

void addClipping(StepFile& file, const Instance& camera, double scale, SavedView& view) {
    if (!camera.is("CAMERA_MODEL_D3_MULTI_CLIPPING")) return;
    for (const Value& value : attribute(camera, "CAMERA_MODEL_D3_MULTI_CLIPPING", 3, 0).items()) {
        const auto placement = readPlacement(file, file.at(value));
        if (!placement)
            file.losses().add("views", L"a clipping of it is not a plane", view.number);
        else if (view.clipping)
            file.losses().add("views", L"it has more than one clipping plane, and the first one travels",
                              view.number);
        else
            view.clipping = makePlane(*placement, scale);
    }
}

/// What is an annotation, itself or held by a plane.
void addAnnotations(const StepFile& file, const Instance& model, std::vector<std::uint64_t>& numbers) {
    std::unordered_set<std::uint64_t> known(numbers.begin(), numbers.end());
    const auto add = [&](std::uint64_t number) {
        if (known.insert(number).second) numbers.push_back(number);
    };
    for (const Value& value : attribute(model, "REPRESENTATION", 0, 1).items()) {
        const Instance item = file.at(value);
        if (item.is("ANNOTATION_PLANE")) {
            for (const Value& element : attribute(item, "ANNOTATION_PLANE", 3, 0).items())
                if (const Instance held = file.at(element)) add(held.number());
        } else if (item.is("DRAUGHTING_CALLOUT") || item.is("ANNOTATION_OCCURRENCE") ||
                   item.type().find("ANNOTATION") != std::string_view::npos) {
            add(item.number());
        }
    }
}

} // namespace

std::vector<SavedView> readSavedViews(StepFile& file) {
    std::vector<SavedView> views;
    std::vector<Instance> cameras = file.structure().all("CAMERA_MODEL_D3");
    for (const Instance& camera : file.structure().all("CAMERA_MODEL_D3_MULTI_CLIPPING"))
        if (!camera.is("CAMERA_MODEL_D3")) cameras.push_back(camera);
    std::ranges::sort(cameras, {}, &Instance::number);
    for (const Instance& camera : cameras) {
        SavedView view;
        view.number = camera.number();
        const std::vector<Instance> models = camera.users("DRAUGHTING_MODEL");
        double unit = 0;
        for (const Instance& model : models) {
            addAnnotations(file, model, view.annotations);
            if (view.product == 0) view.product = file.productOfRepresentation(model).number();
            if (unit == 0)
                unit = file.lengthUnit(file.at(attribute(model, "REPRESENTATION", 0, 2))).value_or(0);
            if (view.name.empty()) view.name = attribute(model, "REPRESENTATION", 0, 0).text();
        }
        if (const std::wstring name = nameOf(camera); !name.empty()) view.name = name;
        for (const std::string_view type : {"MODEL_GEOMETRIC_VIEW", "DEFAULT_MODEL_GEOMETRIC_VIEW"})
            for (const Instance& geometric : camera.users(type)) {
                if (view.name.empty()) view.name = nameOf(geometric);
                view.isActive = view.isActive || type == "DEFAULT_MODEL_GEOMETRIC_VIEW";
            }
        const double scale = (unit > 0 ? unit : 1) / file.millimeters();
        const auto system = readPlacement(file, file.at(attribute(camera, "CAMERA_MODEL_D3", 1, 0)));
        if (!system) {
            file.losses().add("views", L"it does not say from where it looks", view.number);
            continue;
        }
        view.camera = makeCamera(file, camera, *system, scale);
        view.camera.setName(view.name);
        addClipping(file, camera, scale, view);
        views.push_back(std::move(view));
    }
    return views;
}

} // namespace zeq::step
