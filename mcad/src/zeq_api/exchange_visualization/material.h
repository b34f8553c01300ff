// How a surface looks: textures and materials. Objects are used by one thread at a time.
#pragma once

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "zeq_api/exchange_common/geometry.h"
#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// An image on a surface. Directions: 0 is U, 1 is V and, for the rotation, 2 is W; any other is refused with
/// std::invalid_argument.
class ExcVisuTexture : public IJsonObject {
public:
    /// How the image is mixed with the colour below it.
    enum class EMethod {
        undefined,
        decal,
        modulate,
        add,
        replace
    };
    /// What lies beyond the edge of the image.
    enum class EWrapMode {
        undefined,
        repeat,
        clamp,
        border,
        edge,
        mirror
    };
    /// Where the texture coordinates come from.
    enum class EMappingMode {
        undefined,
        uv,
        planar,
        spherical,
        cylindrical,
        environment_spherical,
        environment_cubic
    };
    enum class EFilter {
        undefined,
        nearest,
        linear,
        nearest_mipmap_nearest,
        nearest_mipmap_linear,
        linear_mipmap_linear,
        linear_mipmap_nearest
    };

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    EMethod method() const { return m_method; }
    void setMethod(EMethod method) { m_method = method; }

    EWrapMode wrapMode(int direction) const;
    void setWrapMode(int direction, EWrapMode mode);

    EMappingMode mappingMode() const { return m_mappingMode; }
    void setMappingMode(EMappingMode mode) { m_mappingMode = mode; }

    EFilter magnificationFilter() const { return m_textureMagnificationFilter; }
    void setMagnificationFilter(EFilter filter) { m_textureMagnificationFilter = filter; }

    EFilter minificationFilter() const { return m_textureMinificationFilter; }
    void setMinificationFilter(EFilter filter) { m_textureMinificationFilter = filter; }

    double alpha() const { return m_alpha; }
    void setAlpha(double alpha) { m_alpha = alpha; }

    /// The image.
    const std::wstring& filePath() const { return m_filePath; }
    void setFilPath(const std::wstring& path) { m_filePath = path; } // sic

    /// The set of texture coordinates.
    const std::wstring& nameUV() const { return m_nameUV; }
    void setNameUV(const std::wstring& name) { m_nameUV = name; }

    const std::wstring& name() const { return m_name; }
    void setName(const std::wstring& name) { m_name = name; }

    double translation(int direction) const;
    void setTranslation(int direction, double translation);

    double scale(int direction) const;
    void setScale(int direction, double scale);

    /// The second argument has no meaning.
    double rotation(int direction, double unused = 0) const; // sic
    void setRotation(int direction, double rotation);

    /// Whether U and V change places.
    bool swapUV() const { return m_swapUV; }
    void setSwapUV(bool swap) { m_swapUV = swap; }

    bool useMaterial() const { return m_useMaterial; }
    void setUseMaterial(bool use) { m_useMaterial = use; }

private:
    struct JsonForm;

    EMethod m_method = EMethod::undefined;
    std::array<EWrapMode, 2> m_wrapMode{};
    EMappingMode m_mappingMode = EMappingMode::undefined;
    EFilter m_textureMagnificationFilter = EFilter::undefined;
    EFilter m_textureMinificationFilter = EFilter::undefined;
    double m_alpha = 0;
    std::wstring m_filePath;
    std::wstring m_nameUV;
    std::wstring m_name;
    std::array<double, 2> m_uvTranslation{};
    std::array<double, 2> m_uvScale{};
    std::array<double, 3> m_uvRotation{};
    bool m_swapUV = false;
    bool m_useMaterial = false;
};
const EnumTable& enumTable(ExcVisuTexture::EMethod);
const EnumTable& enumTable(ExcVisuTexture::EWrapMode);
const EnumTable& enumTable(ExcVisuTexture::EMappingMode);
const EnumTable& enumTable(ExcVisuTexture::EFilter);
using ExcVisuTexturePtr = std::shared_ptr<ExcVisuTexture>;

/// Colours and textures for shading a surface.
class ExcVisuMaterial : public IJsonObject {
public:
    enum class EColorType {
        unknown,
        ambient,
        diffuse,
        specular,
        emissive,
        transparency,
        reflection
    };
    /// What a texture stands for.
    enum class ETextureType {
        unknown,
        ambient_color,
        ambient_coefficient,
        diffuse_color,
        diffuse_coefficient,
        specular_color,
        specular_coefficient,
        emissive_color,
        emissive_coefficient,
        normal
    };
    struct Color {
        float red = 0;
        float green = 0;
        float blue = 0;
        float alpha = 0;
        bool operator==(const Color&) const = default;
    };

    /// Colours replace those of their kind, textures are appended.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& name() const { return m_name; }
    void setName(const std::wstring& name) { m_name = name; }

    /// The colour of that kind. One that is not there yet is added as (0, 0, 0, 0), and will be written. // sic
    const Color& color(EColorType type) const { return m_colors[type]; }
    Color& color(EColorType type) { return m_colors[type]; }
    void setColor(EColorType type, const Color& color) { m_colors[type] = color; }

    double shininess() const { return m_shininess; }
    void setShininess(double shininess) { m_shininess = shininess; }

    const std::array<double, 3>& bump() const { return m_bump; }
    void setBump(const std::array<double, 3>& bump) { m_bump = bump; }

    double bumpFactor() const { return m_bumpFactor; }
    void setBumpFactor(double factor) { m_bumpFactor = factor; }

    const ExcVector3d& normalMap() const { return m_normalMap; }
    void setNormalMap(const ExcVector3d& map) { m_normalMap = map; }

    /// The textures of one slot; none for a slot that is not there.
    const std::vector<ExcVisuTexturePtr>& textures(ETextureType type) const;
    /// Appends a texture; null is refused with a warning.
    void addTexture(ETextureType type, const ExcVisuTexturePtr& texture);
    void addTextures(ETextureType type, const std::vector<ExcVisuTexturePtr>& textures);
    void setTextures(ETextureType type, const std::vector<ExcVisuTexturePtr>& textures);

private:
    struct JsonForm;

    std::wstring m_name;
    mutable std::map<EColorType, Color> m_colors;
    double m_shininess = 0;
    std::array<double, 3> m_bump{};
    double m_bumpFactor = 0;
    ExcVector3d m_normalMap;
    std::map<ETextureType, std::vector<ExcVisuTexturePtr>> m_textures;
};
const EnumTable& enumTable(ExcVisuMaterial::EColorType);
const EnumTable& enumTable(ExcVisuMaterial::ETextureType);
using ExcVisuMaterialPtr = std::shared_ptr<ExcVisuMaterial>;

} // namespace zeq
