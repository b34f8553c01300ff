// The JSON form of colours: null, or an object with the parts that are set.
#include "zeq_api/exchange_common/color.h"

#include "zeq_api/exchange_common/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

using Channel = ExcColor::EChannel;

json::Shape channelShape() { return {json::IntegerShape{0, 0xFFFF, true}}; }

/// An array of exactly three unsigned integers, of which the low 16 bits count.
struct Rgb {
    static void take(const auto& view, ExcColor& color) {
        if (view.kind() != json::Kind::array || view.size() != 3) return;
        std::array<unsigned, 3> rgb{};
        std::size_t taken = 0;
        view.forEach([&](const auto& element) { return element.take(rgb[taken]) && ++taken < rgb.size(); });
        if (taken != rgb.size()) return;
        color[Channel::red] = static_cast<std::uint16_t>(rgb[0]);
        color[Channel::green] = static_cast<std::uint16_t>(rgb[1]);
        color[Channel::blue] = static_cast<std::uint16_t>(rgb[2]);
        color.setHasRGB(true);
    }
    static json::Shape shape() { return json::arrayShape(channelShape(), 3); }
    static void give(auto& sink, const ExcColor& color) {
        sink.array([&](auto& array) {
            for (const Channel channel : {Channel::red, Channel::green, Channel::blue})
                array.element([&](auto&& to) { to.value(unsigned{color[channel]}); });
        });
    }
};

struct Alpha {
    static void take(const auto& view, ExcColor& color) {
        unsigned alpha = 0;
        if (!view.take(alpha)) return;
        color[Channel::alpha] = static_cast<std::uint16_t>(alpha);
        color.setHasAlpha(true);
    }
    static json::Shape shape() { return channelShape(); }
    static void give(auto& sink, const ExcColor& color) { sink.value(unsigned{color[Channel::alpha]}); }
};

} // namespace

struct ExcColor::JsonForm {
    using This = ExcColor;
    static constexpr json::Form form{
        json::Head{"ExcColor", area::exchangeCommon,
                   json::logsWarning("ExcColor::readObject: input JsonValue is not an object.")},
        json::nullUnless(&This::isSet, &This::clear),
        json::custom(L"rgb", Rgb{}, json::when(&This::hasRGB)),
        json::custom(L"alpha", Alpha{}, json::when(&This::hasAlpha)),
    };
};

void ExcColor::clear() { m_hasRGB = m_hasAlpha = false; }

ZEQ_JSON_OBJECT(ExcColor)

} // namespace zeq
