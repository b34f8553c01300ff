// Pictures of known solids, told by their properties.
#include "picture/picture.h"

#include <png.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <numbers>
#include <stdexcept>

#include <gtest/gtest.h>

namespace zeq::picture {
namespace {

constexpr Color gray{0.6F, 0.6F, 0.6F, 1};

struct Mesh {
    std::vector<float> positions;
    std::vector<float> normals;
    std::vector<std::uint32_t> indices;

    Triangles batch(Color color, Vector at = {}, std::uint64_t part = 0) const {
        Triangles result;
        result.transform.columns = {1, 0, 0, 0, 1, 0, 0, 0, 1, at.x, at.y, at.z};
        result.color = color;
        result.positions = positions;
        result.normals = normals;
        result.indices = indices;
        result.part = part;
        return result;
    }
};

/// Of radius 1 around the origin, closed.
Mesh sphere() {
    constexpr std::uint32_t rings = 32, around = 64;
    Mesh mesh;
    for (std::uint32_t ring = 0; ring <= rings; ++ring)
        for (std::uint32_t i = 0; i < around; ++i) {
            const float polar = std::numbers::pi_v<float> * static_cast<float>(ring) / rings;
            const float angle = 2 * std::numbers::pi_v<float> * static_cast<float>(i) / around;
            const float radius = ring % rings == 0 ? 0 : std::sin(polar);
            mesh.positions.insert(mesh.positions.end(),
                                  {radius * std::cos(angle), radius * std::sin(angle), std::cos(polar)});
        }
    for (std::uint32_t ring = 0; ring < rings; ++ring)
        for (std::uint32_t i = 0; i < around; ++i) {
            const std::uint32_t a = ring * around + i, b = ring * around + (i + 1) % around;
            mesh.indices.insert(mesh.indices.end(), {a, a + around, b, b, a + around, b + around});
        }
    mesh.normals = mesh.positions;
    return mesh;
}

/// Two units wide, in a plane of equal z, without normals.
Mesh square() { return {{-1, -1, 0, 1, -1, 0, 1, 1, 0, -1, 1, 0}, {}, {0, 1, 2, 0, 2, 3}}; }

/// Four units high, seen from above, 100 pixels a side.
Drawing drawing(std::vector<Triangles> triangles) {
    Drawing result;
    result.triangles = std::move(triangles);
    result.camera = {false, {0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 4};
    result.width = result.height = 100;
    result.hasSilhouettes = false;
    return result;
}

struct Pixel {
    int red, green, blue, alpha;
    bool operator==(const Pixel&) const = default;
};

Pixel pixel(const Image& image, int x, int y) {
    const std::uint8_t* const p = &image.pixels[4 * static_cast<std::size_t>(y * image.width + x)];
    return {p[0], p[1], p[2], p[3]};
}

/// What is not background, in pixels.
double area(Drawing of) {
    of.background = {0, 0, 0, 0};
    const Image image = render(of);
    double sum = 0;
    for (std::size_t i = 3; i < image.pixels.size(); i += 4) sum += image.pixels[i] / 255.0;
    return sum;
}

TEST(Picture, ASolidCoversWhatItDoes) {
    const Mesh ball = sphere(), sheet = square();
    const double disc = std::numbers::pi * 25 * 25;
    for (const int samples : {1, 4, 9}) {
        Drawing round = drawing({ball.batch(gray)}), flat = drawing({sheet.batch(gray)});
        round.samples = flat.samples = samples;
        EXPECT_NEAR(area(round), disc, disc * 0.01) << samples;
        EXPECT_EQ(area(flat), 50 * 50) << samples;
        // A perspective shows more of what is nearer: the limb is seen at asin(1 / 10).
        round.camera.isPerspective = true;
        EXPECT_NEAR(area(round), disc * 100 / 99, disc * 0.01) << samples;
    }
}

TEST(Picture, LightComesFromTheUpperLeftOfTheCamera) {
    const Mesh ball = sphere(), sheet = square();
    const Image image = render(drawing({ball.batch(gray)}));
    EXPECT_GT(pixel(image, 40, 38).red, pixel(image, 50, 50).red);
    EXPECT_GT(pixel(image, 50, 50).red, pixel(image, 60, 65).red);
    EXPECT_EQ(pixel(image, 50, 50).red, pixel(image, 50, 50).blue);
    EXPECT_EQ(pixel(image, 2, 2), (Pixel{255, 255, 255, 255}));

    // Sides and missing normals make no difference to a surface that stays where it is.
    const Pixel plain = pixel(render(drawing({sheet.batch(gray)})), 50, 50);
    Mesh turned = sheet;
    turned.indices = {0, 2, 1, 0, 3, 2};
    turned.normals = {0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1};
    EXPECT_EQ(pixel(render(drawing({turned.batch(gray)})), 50, 50), plain);
    Drawing below = drawing({sheet.batch(gray)});
    below.camera.eye.z = -10;
    EXPECT_EQ(pixel(render(below), 50, 50), plain);
}

TEST(Picture, TilesAndThreadsMakeNoDifference) {
    const Mesh ball = sphere();
    Drawing once = drawing({ball.batch({0.9F, 0.4F, 0.2F, 0.5F}), ball.batch(gray, {0.5F, 0.3F, -1})});
    once.width = once.height = 301;
    once.hasSilhouettes = true;
    Drawing again = once;
    once.threads = 1;
    again.threads = 4;
    EXPECT_EQ(render(once).pixels, render(again).pixels);
}

TEST(Picture, TheNearestIsSeenAndTranslucentThingsInTheirOrder) {
    const Mesh sheet = square();
    const auto unlit = [&](Color color, float z, std::uint64_t part) {
        Triangles batch = sheet.batch(color, {0, 0, z}, part);
        batch.isLit = false;
        return batch;
    };
    const Triangles red = unlit({1, 0, 0, 1}, 0, 0), green = unlit({0, 1, 0, 0.5F}, 1, 1),
                    blue = unlit({0, 0, 1, 0.5F}, 2, 2), hidden = unlit({1, 1, 1, 0.5F}, -1, 3);
    const Pixel expected{64, 64, 128, 255};
    for (const auto& order : {std::vector{red, green, blue, hidden}, {hidden, blue, green, red}})
        EXPECT_EQ(pixel(render(drawing(order)), 50, 50), expected);
    Triangles onTop = unlit({1, 1, 0, 1}, -5, 4);
    onTop.isOnTop = true;
    EXPECT_EQ(pixel(render(drawing({red, blue, onTop})), 50, 50), (Pixel{255, 255, 0, 255}));

    Drawing glass = drawing({unlit({0, 1, 0, 0.5F}, 0, 0)});
    glass.background = {0, 0, 0, 0};
    EXPECT_EQ(pixel(render(glass), 50, 50), (Pixel{0, 255, 0, 128}));
    // More layers than are kept, and more fragments than a tile holds at once.
    Drawing deep = drawing(std::vector(1200, unlit({0, 0, 1, 0.5F}, 0, 0)));
    deep.width = deep.height = 48;
    EXPECT_EQ(pixel(render(deep), 24, 24), (Pixel{0, 0, 255, 255}));
}

TEST(Picture, LinesOnASurfaceAreWholeAndThoseBehindAreHidden) {
    const Mesh sheet = square();
    const std::vector<float> points{-0.8F, 0, 0, 0.8F, 0, 0};
    const std::uint32_t lengths[] = {2};
    for (const bool isPerspective : {false, true})
        for (const float tilt : {0.0F, 0.7F, 1.4F}) // steep to the line of sight
            for (const float behind : {0.0F, 0.5F}) {
                Triangles surface = sheet.batch({1, 1, 1, 1});
                Lines lines;
                lines.points = points;
                lines.lengths = lengths;
                lines.width = 2;
                const float c = std::cos(tilt), s = std::sin(tilt);
                surface.transform.columns = lines.transform.columns = {c, 0, s, 0, 1, 0, -s, 0, c, 0, 0, 0};
                lines.transform.columns[11] = -behind / c;
                Drawing seen = drawing({surface});
                seen.lines = {lines};
                seen.camera.isPerspective = isPerspective;
                const Image image = render(seen);
                const int reach = static_cast<int>(0.7F * c * 25);
                int dark = 0;
                for (int x = 50 - reach; x <= 50 + reach; ++x) dark += pixel(image, x, 50).red < 60;
                EXPECT_EQ(dark, behind > 0 ? 0 : 2 * reach + 1) << isPerspective << ' ' << tilt;
            }
}

TEST(Picture, SilhouettesStandWhereASurfaceEndsBeforeAnother) {
    const Mesh ball = sphere(), sheet = square();
    const Color white{1, 1, 1, 1};
    Drawing both = drawing({sheet.batch(white, {0, 0, -3}), ball.batch(white)});
    const Image without = render(both);
    both.hasSilhouettes = true;
    const Image with = render(both);
    std::vector<std::pair<int, int>> changed;
    for (int x = 0; x < 100; ++x)
        if (pixel(with, x, 70) != pixel(without, x, 70)) changed.emplace_back(x, pixel(with, x, 70).red);
    // The square from 25 to 75; the ball's limb at 50 - 14.6 and 50 + 14.6 in this row, and nothing between.
    ASSERT_FALSE(changed.empty());
    for (const auto& [x, red] : changed) {
        const double toLimb = std::abs(std::abs(x + 0.5 - 50) - std::sqrt(25.0 * 25 - 20.5 * 20.5));
        const double toBorder = std::abs(std::abs(x + 0.5 - 50) - 25);
        EXPECT_LT(std::min(toLimb, toBorder), 2) << x;
        EXPECT_LT(red, pixel(without, x, 70).red);
    }
    EXPECT_GE(changed.size(), 4U);
}

TEST(Picture, TheSectionPlaneShowsCapsOfClosedParts) {
    const Mesh ball = sphere();
    const auto isCap = [](const Pixel& p) { return p.red > 0 && p.green == 0 && p.blue == 0; };
    Triangles inner = ball.batch({0, 1, 0, 1}, {}, 7); // a hollow in the ball, of the same part
    inner.transform.columns = {0.5F, 0, 0, 0, 0.5F, 0, 0, 0, 0.5F, 0, 0, 0};
    Drawing cut = drawing({ball.batch({1, 0, 0, 1}, {}, 7), inner});
    cut.section = Section{{0, 0, 0}, {0, 0, 1}, false};
    for (const bool isPerspective : {false, true}) {
        cut.camera.isPerspective = isPerspective;
        const Image image = render(cut);
        EXPECT_TRUE(isCap(pixel(image, 30, 50)));
        EXPECT_GT(pixel(image, 50, 50).green, 0); // into the hollow
        int cap = 0;
        for (int x = 0; x < 100; ++x) cap += isCap(pixel(image, x, 50));
        EXPECT_NEAR(cap, 25, 2);
    }
    // Cut away from behind, the ball's front stays; with all cut away nothing does.
    cut.section = Section{{0, 0, 0}, {0, 0, -1}, false};
    EXPECT_NEAR(area(cut), std::numbers::pi * 25 * 25, 20);
    cut.section = Section{{0, 0, -2}, {0, 0, 1}, false};
    EXPECT_EQ(area(cut), 0);
    cut.triangles[0].isCut = false;
    EXPECT_NEAR(area(cut), std::numbers::pi * 25 * 25, 20);
}

TEST(Picture, DamageIsCountedAndTheRestIsDrawn) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN(),
                    infinite = std::numeric_limits<float>::infinity();
    Mesh mesh = square();
    mesh.positions.insert(mesh.positions.end(), {nan, 0, 0, infinite, 0, 0, 1e30F, 0, 0, 0, 0, 0});
    mesh.indices.insert(mesh.indices.end(), {0, 1, 4, 0, 1, 5, 0, 1, 6, 0, 1, 99, 7, 7, 7, 0, 2, 7, 3});
    const std::vector<float> points{0, 0, 0, nan, 0, 0, 1, 1, 1};
    const std::uint32_t lengths[] = {3, 0, 5};
    Drawing damaged = drawing({mesh.batch(gray), Triangles{}});
    Lines lines;
    lines.points = points;
    lines.lengths = lengths;
    lines.width = nan;
    damaged.lines = {lines, Lines{}};
    damaged.points = {Points{{}, points, 2}};
    const Image image = render(damaged);
    // Four triangles and a piece of one; two segments; five missing points; a point.
    EXPECT_EQ(image.dropped, 5U + 2 + 5 + 1);
    EXPECT_LT(pixel(image, 40, 70).red, 255);
    EXPECT_EQ(pixel(image, 5, 5).red, 255);
    damaged.triangles[0].firstIndex = 1; // the positions of somebody else
    EXPECT_GT(render(damaged).dropped, 5U);

    // Inside of things, with triangles and lines through the eye.
    const Mesh ball = sphere();
    Drawing inside = drawing({ball.batch(gray)});
    inside.camera = {true, {0, 0, 0.2F}, {0, 0, -0.1F}, {0, 0, 1}, 1};
    const std::vector<float> through{0, 0, 5, 0, 0.01F, -5};
    const std::uint32_t two[] = {2};
    lines.points = through;
    lines.lengths = two;
    inside.lines = {lines};
    EXPECT_EQ(area(inside), 100 * 100);
}

TEST(Picture, WhatIsNoDrawingIsRefused) {
    const std::pair<const char*, std::function<void(Drawing&)>> cases[] = {
        {"a picture is from 1 to 16384 pixels", [](Drawing& d) { d.width = 0; }},
        {"a picture is from 1 to 16384 pixels", [](Drawing& d) { d.height = 20000; }},
        {"a pixel has 1, 4 or 9 samples", [](Drawing& d) { d.samples = 5; }},
        {"the camera's eye and target", [](Drawing& d) { d.camera.eye = d.camera.target; }},
        {"the camera's eye and target", [](Drawing& d) { d.camera.eye.x = std::nanf(""); }},
        {"the height of the camera's window", [](Drawing& d) { d.camera.height = 0; }},
        {"the section plane", [](Drawing& d) { d.section = Section{}; }},
    };
    for (const auto& [message, change] : cases) {
        Drawing wrong = drawing({});
        change(wrong);
        try {
            render(wrong);
            ADD_FAILURE() << message;
        } catch (const std::invalid_argument& error) {
            EXPECT_TRUE(std::string(error.what()).starts_with(message)) << error.what();
        }
    }
    Drawing lookingUp = drawing({});
    lookingUp.camera.up = {0, 0, 1};
    EXPECT_EQ(pixel(render(lookingUp), 0, 0).red, 255);
}

TEST(Picture, AFittedCameraHasAllInSight) {
    const Mesh ball = sphere();
    for (const bool isPerspective : {false, true})
        for (const Vector direction : {Vector{0, 0, -1}, Vector{-1, 1, -1}, Vector{0, 1, 0}}) {
            Drawing fitted = drawing({ball.batch(gray, {1000, 0, 0}), ball.batch(gray, {1003, 2, 1})});
            fitted.camera = fittedCamera(fitted, direction, {0, 0, 1}, isPerspective);
            fitted.background = {0, 0, 0, 0};
            const Image image = render(fitted);
            int rim = 0;
            for (int i = 0; i < 100; ++i)
                rim += pixel(image, i, 0).alpha + pixel(image, i, 99).alpha + pixel(image, 0, i).alpha +
                       pixel(image, 99, i).alpha;
            EXPECT_EQ(rim, 0) << isPerspective << ' ' << direction.x;
            EXPECT_GT(area(fitted), 1000);
        }
    EXPECT_GT(fittedCamera(drawing({}), {0, 0, -1}, {0, 1, 0}).height, 0);
}

TEST(Picture, PngHoldsThePixels) {
    const Mesh ball = sphere();
    for (const float alpha : {0.0F, 1.0F}) {
        Drawing shown = drawing({ball.batch({0.9F, 0.4F, 0.2F, 1})});
        shown.background.alpha = alpha;
        const Image image = render(shown);
        const std::string bytes = encodePng(image);
        png_image read{};
        read.version = PNG_IMAGE_VERSION;
        ASSERT_TRUE(png_image_begin_read_from_memory(&read, bytes.data(), bytes.size()));
        EXPECT_EQ(read.format & PNG_FORMAT_FLAG_ALPHA, alpha == 1 ? 0U : PNG_FORMAT_FLAG_ALPHA);
        read.format = PNG_FORMAT_RGBA;
        std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(read));
        ASSERT_TRUE(png_image_finish_read(&read, nullptr, pixels.data(), 0, nullptr));
        EXPECT_EQ(pixels, image.pixels);
    }
}

} // namespace
} // namespace zeq::picture
