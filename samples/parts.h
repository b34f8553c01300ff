// The shapes of the machine parts from which the samples are assembled. Lengths are millimetres.
#pragma once

#include <TopoDS_Shape.hxx>

namespace samples {

/// Base plate with guide and fixed jaw, along x from 0, its underside in z = 0; four bolt holes 15 from its
/// edges.
TopoDS_Shape makeBase();
/// Hardened plate of a jaw, 8 thick along x from 0, with two countersunk holes.
TopoDS_Shape makeJawPlate();
/// Moving jaw, which straddles the guide: its underside lies in z = 0.
TopoDS_Shape makeSlide();
/// Carrier with the bore in which the spindle turns.
TopoDS_Shape makeCarrier();
/// Spindle along x with the inner face of its collar in x = 0, and a cross bore in its head at x = 34.
TopoDS_Shape makeSpindle();
TopoDS_Shape makeRetainingRing();
/// Bar along y from 0, `handleLength` long.
TopoDS_Shape makeHandleBar();
/// Ball knob whose seat lies in y = 0, the ball above it.
TopoDS_Shape makeKnob();
/// Hexagon bolt: the head's underside lies in z = 0, the shank points down.
TopoDS_Shape makeBolt();
/// Washer whose upper face lies in z = 0.
TopoDS_Shape makeWasher();
/// Handle with a free-form surface along z from 0, a bore from below, and a dent for the thumb.
TopoDS_Shape makeGrip();
/// Angle bracket: a plate from the origin, 80 by 50 by 10, with two bores along z, and on it a wall along its far side
/// with a bore along y.
TopoDS_Shape makeBracket();
TopoDS_Shape makeBlock(double length, double width, double height);
/// Perforated plates on top of each other, with so many faces together.
TopoDS_Shape makePlates(int faces);

constexpr double handleLength = 110;
constexpr double washerThickness = 2;

} // namespace samples
