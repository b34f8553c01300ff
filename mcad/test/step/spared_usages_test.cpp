// Which usages of products a kernel can be spared.
#include <gtest/gtest.h>

#include "step/spared_usages.h"

namespace zeq::step {
namespace {

/// The instances of a usage with these numbers from `first` on, of the part #2 with the shape #12 in #1 with #11.
std::string usage(int first, const std::string& from = "#14", const std::string& relation = "#12,#11") {
    const auto ref = [first](int place) { return "#" + std::to_string(first + place); };
    return ref(0) + "=NEXT_ASSEMBLY_USAGE_OCCURRENCE('u','name','',#1,#2,$);" + ref(1) +
           "=PRODUCT_DEFINITION_SHAPE('',''," + ref(0) + ");" + ref(2) +
           "=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + ref(3) + "," + ref(1) + ");" + ref(3) +
           "=(REPRESENTATION_RELATIONSHIP('',''," + relation +
           ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" + ref(4) +
           ")SHAPE_REPRESENTATION_RELATIONSHIP());" + ref(4) + "=ITEM_DEFINED_TRANSFORMATION('',''," + from +
           "," + ref(5) + ");" + ref(5) + "=AXIS2_PLACEMENT_3D(''," + ref(6) + ",#17,$);" + ref(6) +
           "=CARTESIAN_POINT('',(1.,2.,3.));";
}

TEST(SparedUsages, AreThoseThatNothingElseIsSaidOf) {
    const std::string products =
        "#1=PRODUCT_DEFINITION('','',$,$);#2=PRODUCT_DEFINITION('','',$,$);#3=PRODUCT_DEFINITION_SHAPE('','',"
        "#1);"
        "#4=PRODUCT_DEFINITION_SHAPE('','',#2);#5=SHAPE_DEFINITION_REPRESENTATION(#3,#11);"
        "#6=SHAPE_DEFINITION_REPRESENTATION(#4,#12);#11=SHAPE_REPRESENTATION('',(#14,#25,#35,#45),#13);"
        "#12=SHAPE_REPRESENTATION('',(#14),#13);#14=AXIS2_PLACEMENT_3D('',#15,$,$);"
        "#15=CARTESIAN_POINT('',(0.,0.,0.));#17=DIRECTION('',(0.,0.,1.));";
    struct Case {
        const char* description;
        std::string second, third;
        std::size_t spared;
    };
    const std::string second = usage(30), third = usage(40);
    const auto replaced = [&](const std::string& what, const std::string& by) {
        std::string text = third;
        return text.replace(text.find(what), what.size(), by);
    };
    const Case cases[]{
        {"plain", second, third, 2},
        {"a property of the usage", second, third + "#9=PROPERTY_DEFINITION('','',#40);", 1},
        {"a property of its shape", second, third + "#9=PROPERTY_DEFINITION('','',#41);", 1},
        {"a style of its placing", second, third + "#9=STYLED_ITEM('',(),#42);", 1},
        {"a relation that is used twice", second,
         third + "#9=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#43,#41);", 1},
        {"a transformation that is used twice", second, third + "#9=MAPPED('',#44);", 1},
        {"the wrong way round", second, usage(40, "#14", "#11,#12"), 1},
        {"a placement of another shape", second, usage(40, "#15"), 1},
        {"a placement that is not there", second, replaced("#45=AXIS2_PLACEMENT_3D('',#46", "#45=X('',#46"),
         1},
        {"a point in the plane", second, replaced("(1.,2.,3.)", "(1.,2.)"), 1},
        {"an axis that is not there", second, replaced("#17,$", "#99,$"), 1},
        {"a name beyond ASCII", second, replaced("'name'", "'n\xC3\xA4me'"), 1},
        {"damage", second, third + "#20=X();", 0},
        {"products of other files", second, third + "#9=DOCUMENT_FILE('');", 0},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.description);
        const part21::ExchangeStructure structure("ISO-10303-21;\nDATA;\n" + products + usage(20) +
                                                  each.second + each.third +
                                                  "\nENDSEC;\nEND-ISO-10303-21;\n");
        const StepFile file(structure, 1);
        const SparedUsages spared = findSparedUsages(file, readProducts(file), 1);
        EXPECT_EQ(spared.count, each.spared);
        EXPECT_EQ(findSparedUsages(file, readProducts(file), each.spared + 1).count, 0);
        if (each.spared == 0) continue;
        const std::vector<Usage>& usages = spared.byUser.at(1);
        ASSERT_EQ(usages.size(), 3);
        EXPECT_FALSE(usages[0].isSpared); // the first one
        EXPECT_TRUE(usages[1].isSpared);
        EXPECT_EQ(usages[1].name, L"name");
        EXPECT_EQ(usages[1].to.origin.z, 3);
        EXPECT_TRUE(usages[1].to.axis && !usages[1].to.reference);
        EXPECT_EQ(usages[1].from.representation, 12);
        // What others need stays: its own seven instances go, of which the direction is none.
        EXPECT_EQ(spared.leftOut.size(), 7 * each.spared);
    }
}

} // namespace
} // namespace zeq::step
