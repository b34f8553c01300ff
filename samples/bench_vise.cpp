// Assembles the bench vise from its parts.
#include "bench_vise.h"

#include <string>

#include "parts.h"

namespace samples {

namespace {

const Material castIron{"EN-GJL-250", "Grey cast iron", 7.2};
const Material steel{"C45E", "Quenched and tempered steel", 7.85};

constexpr Color castGreen{38, 92, 72};
constexpr Color steelGrey{168, 172, 178};
constexpr Color zinc{205, 207, 196};
constexpr Color black{32, 32, 36};
constexpr Color signalRed{200, 30, 36};
constexpr Color brass{214, 172, 70};
constexpr Color glass{90, 150, 220, 0.4};

TDF_Label addPart(Model& model, const std::string& name, const TopoDS_Shape& shape, const Color& color,
                  const Material& material) {
    const TDF_Label part = model.addPart(name, shape);
    model.paint(part, color);
    model.setMaterial(part, material);
    return part;
}

TDF_Label addJawPlate(Model& model) { return addPart(model, "Jaw plate", makeJawPlate(), steelGrey, steel); }

TDF_Label addHandle(Model& model) {
    const TDF_Label bar = addPart(model, "Handle bar", makeHandleBar(), zinc, steel);
    const TDF_Label knob = model.addPart("Knob", makeKnob());
    model.paint(knob, black);

    const TDF_Label handle = model.addAssembly("Handle");
    model.place(handle, bar, "Bar", shifted(0, -handleLength / 2, 0));
    model.place(handle, knob, "Knob right", shifted(0, handleLength / 2, 0));
    const TDF_Label left =
        model.place(handle, knob, "Knob left", turnedAbout(gp::DZ(), 180, gp_Vec(0, -handleLength / 2, 0)));
    model.paint(left, signalRed);
    return handle;
}

TDF_Label addSpindleUnit(Model& model) {
    constexpr double collar = 110;
    const TDF_Label unit = model.addAssembly("Spindle unit");
    model.place(unit, addPart(model, "Spindle", makeSpindle(), steelGrey, steel), "Spindle",
                shifted(collar, 0, 0));
    const TDF_Label ring = addPart(model, "Retaining ring", makeRetainingRing(), brass, steel);
    model.place(unit, ring, "Ring inside", shifted(48, 0, 0));
    model.place(unit, ring, "Ring outside", shifted(collar - 3, 0, 0));
    model.place(unit, addHandle(model), "Handle", turnedAbout(gp::DX(), 30, gp_Vec(collar + 34, 0, 0)));
    return unit;
}

TDF_Label addSlidingJaw(Model& model, const TDF_Label& jawPlate) {
    const TDF_Label jaw = model.addAssembly("Sliding jaw");
    model.place(jaw, addPart(model, "Slide", makeSlide(), castGreen, castIron), "Slide", shifted(0, 0, 18));
    model.place(jaw, jawPlate, "Jaw plate moving", turnedAbout(gp::DZ(), 180, gp_Vec(0, 0, 40)));
    model.place(jaw, addPart(model, "Tr\u00e4ger", makeCarrier(), castGreen, castIron), "Tr\u00e4ger vorn",
                shifted(90, 0, 18));
    model.place(jaw, addSpindleUnit(model), "Spindle unit", shifted(0, 0, 50));
    return jaw;
}

TDF_Label addBolt(Model& model) { return addPart(model, "Hexagon bolt M10", makeBolt(), zinc, steel); }

TDF_Label addWasher(Model& model) { return addPart(model, "Washer 10", makeWasher(), zinc, steel); }

TDF_Label addFastener(Model& model) {
    const TDF_Label bolt = addBolt(model);
    const TDF_Label washer = addWasher(model);
    model.putOnLayer(bolt, "Fasteners");
    model.putOnLayer(washer, "Fasteners");

    const TDF_Label fastener = model.addAssembly("Fastener");
    model.place(fastener, washer, "Washer", shifted(0, 0, washerThickness));
    model.place(fastener, bolt, "Bolt", shifted(0, 0, washerThickness));
    return fastener;
}

} // namespace

Model makeBenchVise() {
    Model model;
    const TDF_Label vise = model.addAssembly("Bench vise");
    const TDF_Label jawPlate = addJawPlate(model);
    model.place(vise, addPart(model, "Base", makeBase(), castGreen, castIron), "Base", shifted(-110, 0, 0));
    model.place(vise, jawPlate, "Jaw plate fixed", shifted(-40, 0, 40));
    model.place(vise, addSlidingJaw(model, jawPlate), "Sliding jaw", shifted(20, 0, 0));

    const TDF_Label fastener = addFastener(model);
    const gp_Vec corners[] = {{95, 40, 18}, {-95, 40, 18}, {-95, -40, 18}, {95, -40, 18}};
    for (int i = 0; i < 4; ++i)
        model.place(vise, fastener, "Fastener " + std::to_string(i + 1),
                    turnedAbout(gp::DZ(), i * 90, corners[i]));

    const TDF_Label block = model.addPart("Block", makeBlock(44, 60, 30));
    model.paint(block, brass);
    model.paint(model.place(vise, block, "Workpiece", shifted(-32, -30, 45)), glass);
    model.hide(model.place(vise, block, "Transport lock", shifted(-32, -30, 90)));
    return model;
}

Model makeJawPlateAlone() {
    Model model;
    addJawPlate(model);
    return model;
}

Model makeGripAlone() {
    Model model;
    model.paint(model.addPart("Grip", makeGrip()), {60, 60, 64});
    return model;
}

Model makeLooseFastener() {
    Model model;
    addBolt(model);
    addWasher(model);
    return model;
}

} // namespace samples
