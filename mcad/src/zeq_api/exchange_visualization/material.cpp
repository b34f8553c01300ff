// The JSON forms of textures and materials.
#include "zeq_api/exchange_visualization/material.h"

#include <stdexcept>

#include "mv_cvx/logger.h"
#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_visualization/area.h"
#include "zeq_api/json/form.h"
#include "zeq_api/json/special_rows.h"

namespace zeq {

namespace {

constexpr const char* nullTexture = "ExcVisuMaterial: attempt to add null Texture object.";

/// The position of a direction; a negative one is beyond all.
template <class Array>
std::size_t at(const Array& values, int direction, const char* refusal) {
    const auto position = static_cast<unsigned>(direction);
    if (position >= values.size()) throw std::invalid_argument(refusal);
    return position;
}

constexpr const char* noWrapMode = "Texture wrap mode has only 0 (U) and 1 (V) directions.";
constexpr const char* noTranslation = "Texture translation has only 0 (U) and 1 (V) directions.";
constexpr const char* noScale = "Texture scale has only 0 (U) and 1 (V) directions.";
constexpr const char* noRotation = "Texture rotation has only 0 (U), 1 (V) and 2 (W) directions.";

} // namespace

const EnumTable& enumTable(ExcVisuTexture::EMethod) {
    using enum ExcVisuTexture::EMethod;
    static constexpr EnumEntry names[] = {{undefined, L"undefined"},
                                          {decal, L"decal"},
                                          {modulate, L"modulate"},
                                          {add, L"add"},
                                          {replace, L"replace"}};
    static const EnumTable table{"ExcVisuTexture::EMethod", names};
    return table;
}

const EnumTable& enumTable(ExcVisuTexture::EWrapMode) {
    using enum ExcVisuTexture::EWrapMode;
    static constexpr EnumEntry names[] = {{undefined, L"undefined"}, {repeat, L"repeat"},
                                          {clamp, L"clamp"},         {border, L"border"},
                                          {edge, L"edge"},           {mirror, L"mirror"}};
    static const EnumTable table{"ExcVisuTexture::EWrapMode", names};
    return table;
}

const EnumTable& enumTable(ExcVisuTexture::EMappingMode) {
    using enum ExcVisuTexture::EMappingMode;
    static constexpr EnumEntry names[] = {{undefined, L"undefined"},
                                          {uv, L"uv"},
                                          {planar, L"planar"},
                                          {spherical, L"spherical"},
                                          {cylindrical, L"cylindrical"},
                                          {environment_spherical, L"environment_spherical"},
                                          {environment_cubic, L"environment_cubic"}};
    static const EnumTable table{"ExcVisuTexture::EMappingMode", names};
    return table;
}

const EnumTable& enumTable(ExcVisuTexture::EFilter) {
    using enum ExcVisuTexture::EFilter;
    static constexpr EnumEntry names[] = {{undefined, L"undefined"},
                                          {nearest, L"nearest"},
                                          {linear, L"linear"},
                                          {nearest_mipmap_nearest, L"nearest_mipmap_nearest"},
                                          {nearest_mipmap_linear, L"nearest_mipmap_linear"},
                                          {linear_mipmap_linear, L"linear_mipmap_linear"},
                                          {linear_mipmap_nearest, L"linear_mipmap_nearest"}};
    static const EnumTable table{"ExcVisuTexture::EFilter", names};
    return table;
}

struct ExcVisuTexture::JsonForm {
    using This = ExcVisuTexture;
    static constexpr json::Form form{
        json::Head{"ExcVisuTexture", area::exchangeVisualization},
        json::field(L"method", &This::m_method),
        json::perKey(L"wrap_mode", &This::m_wrapMode, L"u", L"v"),
        json::field(L"mapping_mode", &This::m_mappingMode),
        json::field(L"texture_magnification_filter", &This::m_textureMagnificationFilter),
        json::field(L"texture_minification_filter", &This::m_textureMinificationFilter),
        json::field(L"alpha", &This::m_alpha),
        json::field(L"file", &This::m_filePath),
        json::field(L"name_uv", &This::m_nameUV),
        json::field(L"name", &This::m_name),
        json::perKey(L"uv_translation", &This::m_uvTranslation, L"u", L"v"),
        json::perKey(L"uv_scale", &This::m_uvScale, L"u", L"v"),
        json::perKey(L"uv_rotation", &This::m_uvRotation, L"u", L"v", L"w"),
        json::field(L"swap_uv", &This::m_swapUV),
        json::field(L"use_material", &This::m_useMaterial),
    };
};

ZEQ_JSON_OBJECT(ExcVisuTexture)

ExcVisuTexture::EWrapMode ExcVisuTexture::wrapMode(int direction) const {
    return m_wrapMode[at(m_wrapMode, direction, noWrapMode)];
}
void ExcVisuTexture::setWrapMode(int direction, EWrapMode mode) {
    m_wrapMode[at(m_wrapMode, direction, noWrapMode)] = mode;
}

double ExcVisuTexture::translation(int direction) const {
    return m_uvTranslation[at(m_uvTranslation, direction, noTranslation)];
}
void ExcVisuTexture::setTranslation(int direction, double translation) {
    m_uvTranslation[at(m_uvTranslation, direction, noTranslation)] = translation;
}

double ExcVisuTexture::scale(int direction) const { return m_uvScale[at(m_uvScale, direction, noScale)]; }
void ExcVisuTexture::setScale(int direction, double scale) {
    m_uvScale[at(m_uvScale, direction, noScale)] = scale;
}

double ExcVisuTexture::rotation(int direction, double /*unused*/) const {
    return m_uvRotation[at(m_uvRotation, direction, noRotation)];
}
void ExcVisuTexture::setRotation(int direction, double rotation) {
    m_uvRotation[at(m_uvRotation, direction, noRotation)] = rotation;
}

const EnumTable& enumTable(ExcVisuMaterial::EColorType) {
    using enum ExcVisuMaterial::EColorType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},      {ambient, L"ambient"},
                                          {diffuse, L"diffuse"},      {specular, L"specular"},
                                          {emissive, L"emissive"},    {transparency, L"transparency"},
                                          {reflection, L"reflection"}};
    static const EnumTable table{"ExcVisuMaterial::EColorType", names};
    return table;
}

const EnumTable& enumTable(ExcVisuMaterial::ETextureType) {
    using enum ExcVisuMaterial::ETextureType;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},
                                          {ambient_color, L"ambient_color"},
                                          {ambient_coefficient, L"ambient_coefficient"},
                                          {diffuse_color, L"diffuse_color"},
                                          {diffuse_coefficient, L"diffuse_coefficient"},
                                          {specular_color, L"specular_color"},
                                          {specular_coefficient, L"specular_coefficient"},
                                          {emissive_color, L"emissive_color"},
                                          {emissive_coefficient, L"emissive_coefficient"},
                                          {normal, L"normal"}};
    static const EnumTable table{"ExcVisuMaterial::ETextureType", names};
    return table;
}

struct ExcVisuMaterial::JsonForm {
    using This = ExcVisuMaterial;

    /// An object with an array of four numbers for each kind of colour.
    struct Colors {
        static void take(const auto& view, This& material) {
            if (view.kind() != json::Kind::object) return;
            view.forEachMember([&material](const std::wstring& type, const auto& value) {
                if (value.kind() != json::Kind::array || value.size() < 4) {
                    ZEQ_LOG(Warning) << "ExcVisuMaterial: !colorType.IsString() || !colorValue.IsArray() || "
                                        "colorValue.GetArray().Size() < 4";
                    return;
                }
                std::array<double, 4> rgba{}; // what is no floating-point number is 0
                json::takeEach(value, rgba);
                material.setColor(enumFromString<EColorType>(type),
                                  {static_cast<float>(rgba[0]), static_cast<float>(rgba[1]),
                                   static_cast<float>(rgba[2]), static_cast<float>(rgba[3])});
            });
        }
        static void give(auto& sink, const This& material) {
            sink.object([&material](auto& colors) {
                for (const auto& [type, color] : material.m_colors)
                    colors.member(enumToString(type), [rgba = color](auto&& to) {
                        json::Codec<std::array<double, 4>>::give(
                            to, {rgba.red, rgba.green, rgba.blue, rgba.alpha});
                    });
            });
        }
        static json::Shape shape() {
            return json::mapShape(json::Codec<std::array<double, 4>>::shape(), &enumTable(EColorType{}));
        }
    };

    /// An object with an array of textures for each slot.
    struct Textures {
        static void take(const auto& view, This& material) {
            if (view.kind() != json::Kind::object) return;
            view.forEachMember([&material](const std::wstring& type, const auto& value) {
                if (value.kind() != json::Kind::array) {
                    ZEQ_LOG(Error) << "ExcVisuMaterial: !textureType.IsString() || !textureArray.IsArray()";
                    return;
                }
                json::detail::readChildren<ExcVisuTexturePtr>(
                    value, json::anyElements, [&](const ExcVisuTexturePtr& texture) {
                        material.addTexture(enumFromString<ETextureType>(type), texture);
                    });
            });
        }
        static void give(auto& sink, const This& material) {
            sink.object([&material](auto& slots) {
                for (const auto& [type, textures] : material.m_textures)
                    slots.member(enumToString(type),
                                 [&list = textures](auto&& to) { json::detail::writeChildren(list, to); });
            });
        }
        static json::Shape shape() {
            return json::mapShape(json::detail::childrenShape<ExcVisuTexturePtr>(),
                                  &enumTable(ETextureType{}));
        }
    };

    /// Exactly three numbers; one that is no floating-point number leaves its component alone.
    struct Bump {
        static void take(const auto& view, This& material) {
            if (view.kind() == json::Kind::array && view.size() == 3) json::takeEach(view, material.m_bump);
        }
        static void give(auto& sink, const This& material) {
            json::Codec<std::array<double, 3>>::give(sink, material.m_bump);
        }
        static json::Shape shape() { return json::Codec<std::array<double, 3>>::shape(); }
    };

    static constexpr json::Form form{
        json::Head{"ExcVisuMaterial", area::exchangeVisualization},
        json::field(L"name", &This::m_name),
        json::custom(L"colors", Colors{}),
        json::field(L"shininess", &This::m_shininess),
        json::custom(L"bump", Bump{}),
        json::field(L"bump_factor", &This::m_bumpFactor),
        json::field(L"normal_map", &This::m_normalMap),
        json::custom(L"textures", Textures{}),
    };
};

ZEQ_JSON_OBJECT(ExcVisuMaterial)

const std::vector<ExcVisuTexturePtr>& ExcVisuMaterial::textures(ETextureType type) const {
    static const std::vector<ExcVisuTexturePtr> none;
    const auto found = m_textures.find(type);
    return found == m_textures.end() ? none : found->second;
}

void ExcVisuMaterial::addTexture(ETextureType type, const ExcVisuTexturePtr& texture) {
    addTextures(type, {texture});
}

void ExcVisuMaterial::addTextures(ETextureType type, const std::vector<ExcVisuTexturePtr>& textures) {
    std::vector<ExcVisuTexturePtr> added; // a slot is made only for textures
    detail::appendEach(added, textures, nullTexture);
    if (!added.empty()) detail::appendEach(m_textures[type], added, nullTexture);
}

void ExcVisuMaterial::setTextures(ETextureType type, const std::vector<ExcVisuTexturePtr>& textures) {
    detail::setChildren(m_textures[type], textures, nullTexture);
}

} // namespace zeq
