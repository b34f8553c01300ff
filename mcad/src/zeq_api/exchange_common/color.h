// Colours as documents carry them: 16 bits a channel, and any part may be missing. Objects are used by one
// thread at a time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "zeq_api/json/json_object.h"

namespace zeq {

/// A colour, an opacity, both or neither.
class ExcColor : public IJsonObject {
public:
    enum class EChannel {
        red,
        green,
        blue,
        alpha
    };

    ExcColor() = default;
    ExcColor(std::uint16_t red, std::uint16_t green, std::uint16_t blue)
        : m_channels{red, green, blue, 0}, m_hasRGB(true) {}
    ExcColor(std::uint16_t red, std::uint16_t green, std::uint16_t blue, std::uint16_t alpha)
        : m_channels{red, green, blue, alpha}, m_hasRGB(true), m_hasAlpha(true) {}

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    std::uint16_t channel(EChannel channel) const { return m_channels[static_cast<std::size_t>(channel)]; }
    std::uint16_t& channel(EChannel channel) { return m_channels[static_cast<std::size_t>(channel)]; }
    std::uint16_t operator[](EChannel selected) const { return channel(selected); }
    std::uint16_t& operator[](EChannel selected) { return channel(selected); }

    /// Whether the channels red, green and blue mean anything.
    bool hasRGB() const { return m_hasRGB; }
    void setHasRGB(bool has) { m_hasRGB = has; }

    /// Whether the channel alpha means anything.
    bool hasAlpha() const { return m_hasAlpha; }
    void setHasAlpha(bool has) { m_hasAlpha = has; }

private:
    struct JsonForm;
    bool isSet() const { return m_hasRGB || m_hasAlpha; }
    void clear();

    std::array<std::uint16_t, 4> m_channels{};
    bool m_hasRGB = false;
    bool m_hasAlpha = false;
};

} // namespace zeq
