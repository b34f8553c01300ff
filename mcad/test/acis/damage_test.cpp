// An image with everything in it, cut short at any byte or with any byte changed. By default a sample of
// that; all of it with ZEQ_EVERY_BYTE in the environment.
#include <cstdlib>

#include <gtest/gtest.h>

#include "acis/image_text.h"
#include "acis/restore_check.h"

namespace zeq {
namespace {

using test::ImageAssembler;
using test::ImageFrame;

const std::string bsplineSurface = "{ &exactsur %0 &nurbs 1 1 %2 %0 %0 %0 %0 2 2 0.0 1 1.0 1 0.0 1 2.0 1 "
                                   "0.0 0.0 0.0 1.0 1.0 0.0 0.0 0.5 0.0 1.0 0.0 0.5 1.0 1.0 1.0 1.0 0.0 "
                                   "0 0 0 0 0 0 }";
const std::string bsplineCurve = "{ &exactcur %0 &nubs 1 %2 3 0.0 1 0.5 1 1.0 1 0.0 0.0 0.0 1.0 2.0 0.0 "
                                 "3.0 0.0 0.0 0.0 &plane (0,0,0) { &ref 4 } }";
const std::string bsplineInPlane = "{ &exppc %0 &nubs 2 %0 2 0.0 2 1.0 2 0.0 0.0 1.0 1.0 2.0 0.0 0.0 "
                                   "&null_surface }";

/// Two faces along one edge, and one more of each kind of surface; a wire. Tolerant ones of each kind, curves
/// of each kind, in space and in parameter planes; attributes on attributes, and records of unknown classes.
const std::vector<std::string> records{
    "body $1 5 $-1 $5 $33 $6 #",
    "rgb_color-st-attrib $-1 -1 $2 $-1 $0 1.0 0.5 0.25 #",
    "deep-name-attrib $4 12 $3 $1 $0 @text 5 $0 { $1 %3 'a|b } (1,2,3) #",
    "Morvanta_Convexor_ID_Attribute-Morvanta_Convexor_Attribute-attrib $-1 -1 $-1 $2 $0 -7 #",
    "odd-attrib $-1 -1 $-1 $-1 $2 T [1,2] #",
    "lump $-1 -1 $-1 $-1 $7 $0 #",
    "transform $-1 -1 '1|0|0|0|1|0|0|0|1|10|-20.5|30|1|no_rotate|no_reflect|no_shear #",
    "shell $-1 -1 $-1 $-1 $38 $8 $-1 $5 #",
    "face $14 -1 $-1 $9 $15 $7 $-1 $20 F F #",
    "face $-1 -1 $-1 $10 $-1 $7 $-1 $21 T F #",
    "face $-1 -1 $-1 $11 $-1 $7 $-1 $22 F F #",
    "face $-1 -1 $-1 $12 $-1 $7 $-1 $23 F F #",
    "face $-1 -1 $-1 $13 $16 $7 $-1 $24 F T F #",
    "face $-1 -1 $-1 $-1 $-1 $7 $-1 $25 F F #",
    "Morvanta_Convexor_ID_Attribute-Morvanta_Convexor_Attribute-attrib $-1 -1 $-1 $-1 $8 9 #",
    "loop $-1 -1 $-1 $-1 $17 $8 #",
    "loop $-1 -1 $-1 $-1 $18 $12 #",
    "coedge $-1 -1 $-1 $17 $17 $18 $26 F $15 $-1 #",
    "coedge $-1 -1 $-1 $19 $19 $17 $26 T $16 $28 #",
    "tcoedge-coedge $-1 -1 $-1 $18 $18 $-1 $27 F $16 $29 -1.0 1.0 #",
    "plane-surface $-1 -1 $-1 (1,2,3) <0,0,1> <1,0,0> T T -1.5 T 2.5 F F #",
    "cone-surface $-1 -1 $-1 (1,2,3) <0,0,1> <4,0,0> 0.5 F F 0.6 0.8 4.0 F F F T -3.0 T 3.0 #",
    "sphere-surface $-1 -1 $-1 (1,2,3) -2.0 <1,0,0> <0,0,1> T F F F F #",
    "torus-surface $-1 -1 $-1 (1,2,3) <0,0,1> 5.0 -2.0 <1,0,0> F F F F F #",
    "spline-surface $-1 -1 $-1 T " + bsplineSurface + " F F F F #",
    "law-surface $-1 -1 $-1 1.5 $0 #",
    "edge $-1 -1 $-1 $30 0.0 $30 1.0 $17 $31 F @unknown #",
    "tedge-edge $-1 -1 $-1 $30 -1.0 $30 1.0 $19 $32 T @convex 0.01 #",
    "pcurve $-1 -1 $-1 0 F " + bsplineInPlane + " 0.0 6.25 #",
    "pcurve $-1 -1 $-1 -2 $34 [0,0] #",
    "tvertex-vertex $-1 -1 $-1 $26 $35 0.25 #",
    "straight-curve $-1 -1 $-1 (1,2,3) <0,0,2> T 0.0 F #",
    "ellipse-curve $-1 -1 $-1 (1,2,3) <0,0,1> <4,0,0> 0.5 T -1.0 T 1.0 #",
    "wire $36 -1 $-1 $-1 $37 $0 $-1 F #",
    "intcurve-curve $-1 -1 $-1 F " + bsplineCurve + " F F #",
    "point $-1 -1 $-1 (1,2,3) #",
    "x-attrib $-1 -1 $-1 $-1 $33 #",
    "coedge $-1 -1 $-1 $37 $37 $-1 $26 F $33 $-1 #",
    "subshell $-1 -1 $0 3 #",
};

constexpr int changes = 12;

/// With one bit flipped, with all flipped, or replaced.
char changed(char byte, int change) {
    if (change < 8) return char(byte ^ (1 << change));
    const char others[] = {char(~byte), '\0', '\xFF', '\x7F'};
    return others[change - 8];
}

TEST(DamagedImages, AreRefusedOrGiveWhatCanBeUsed) {
    const bool every = std::getenv("ZEQ_EVERY_BYTE") != nullptr;
    for (const bool wide : {false, true}) {
        ImageFrame frame;
        frame.count = long(records.size());
        frame.wide = wide;
        const std::string image = ImageAssembler::assemble(records, frame);
        test::MemoryFile file(image);
        ENTITY_LIST entities;
        ASSERT_EQ(test::message(api_restore_entity_list_file(&file, entities)), "");
        api_del_entity_list(entities);

        int sample = 0;
        for (std::size_t at = 0; at < image.size(); at += every ? 1 : 7) {
            ASSERT_EQ(test::faultOfRestoring(image.substr(0, at)), "") << "cut at byte " << at;
            const int first = every ? 0 : sample++ % changes;
            for (int change = first; change < (every ? changes : first + 1); ++change) {
                std::string damaged = image;
                damaged[at] = changed(damaged[at], change);
                ASSERT_EQ(test::faultOfRestoring(damaged), "") << "byte " << at << ", change " << change;
            }
        }
    }
}

} // namespace
} // namespace zeq
