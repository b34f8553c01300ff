// The common value types as documents.
#include <gtest/gtest.h>

#include "support/json_text.h"
#include "zeq_api/exchange_common/color.h"
#include "zeq_api/exchange_common/entity.h"
#include "zeq_api/exchange_common/geometry.h"
#include "zeq_api/exchange_common/misc_data.h"

namespace zeq {
namespace {

using test::writtenBy;

TEST(CommonTypes, AreWrittenAsTheyWereSet) {
    ExcVector3d vector(1, 2, 3);
    vector.y() = -2;
    EXPECT_EQ(writtenBy(vector), L"[1.0,-2.0,3.0]");

    ExcTransformation placement;
    placement.affine()[1].set(4, 5, 6);
    placement.affine().row(2).z() = 9;
    placement.translation() = vector;
    EXPECT_EQ(writtenBy(placement),
              L"{\"affine\":[[1.0,0.0,0.0],[4.0,5.0,6.0],[0.0,0.0,9.0]],\"translation\":[1.0,-2.0,3.0]}");

    ExcColor color(1, 2, 3);
    EXPECT_EQ(writtenBy(color), L"{\"rgb\":[1,2,3]}");
    color[ExcColor::EChannel::alpha] = 4;
    EXPECT_EQ(writtenBy(color), L"{\"rgb\":[1,2,3]}");
    color.setHasAlpha(true);
    EXPECT_EQ(writtenBy(color), writtenBy(ExcColor(1, 2, 3, 4)));
    color.setHasRGB(false);
    EXPECT_EQ(writtenBy(color), L"{\"alpha\":4}");

    ExcMiscProperty property;
    property.name() = L"n";
    property.unit() = L"u";
    property.value() = L"v";
    property.setType(ExcMiscProperty::EType::double_);
    property.setValueType(ExcMiscProperty::EValueType::magneticfluxdensity_2);
    EXPECT_EQ(writtenBy(property), L"{\"name\":\"n\",\"type\":\"double\",\"unit\":\"u\",\"value\":\"v\","
                                   L"\"value_type\":\"magneticfluxdensity\"}");
}

TEST(CommonTypes, APathKeepsAnyTypeOf32Bits) {
    using Type = ExcFullSubentPath::ESubentType;
    for (const std::uint32_t number : {0u, 3u, 0xD800u, 0x110000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        ExcFullSubentPath path(5);
        path.setSubentType(static_cast<Type>(number));
        JsonDocument document;
        path.writeObject(document, document.GetAllocator());
        ASSERT_EQ(document[L"subent_type"].GetStringLength(), 1u);
        EXPECT_EQ(static_cast<std::uint32_t>(document[L"subent_type"].GetString()[0]), number);
        ExcFullSubentPath copy;
        copy.readObject(document);
        EXPECT_EQ(static_cast<std::uint32_t>(copy.subentType()), number);
        EXPECT_EQ(copy.subentId(), 5u);
    }
}

} // namespace
} // namespace zeq
