// From where a saved view looks at the model, and where it cuts it open. Objects are used by one thread at a
// time.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "zeq_api/exchange_common/geometry.h"
#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// A camera, in the coordinates and the length unit of the model.
class ExcCamera : public IJsonObject {
public:
    enum class EType {
        undefined,
        perspective,
        orthographic
    };

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    EType type() const { return m_type; }
    void setType(EType type) { m_type = type; }

    const std::wstring& name() const { return m_name; }
    void setName(const std::wstring& name) { m_name = name; }

    /// Written only by a perspective camera.
    double perspectiveViewAngle() const { return m_perspectiveViewAngle; }
    void setPerspectiveViewAngle(double angle) { m_perspectiveViewAngle = angle; }

    /// Written only by an orthographic camera.
    double orthographicZoomFactor() const { return m_orthographicZoomFactor; }
    void setOrthographicZoomFactor(double factor) { m_orthographicZoomFactor = factor; }

    /// Where the camera stands.
    const ExcVector3d& eye() const { return m_eye; }
    void setEye(const ExcVector3d& eye) { m_eye = eye; }

    /// What the camera looks at.
    const ExcVector3d& target() const { return m_target; }
    void setTarget(const ExcVector3d& target) { m_target = target; }

    /// The direction that is upwards in the picture.
    const ExcVector3d& up() const { return m_up; }
    void setUp(const ExcVector3d& up) { m_up = up; }

private:
    struct JsonForm;
    bool isPerspective() const { return m_type == EType::perspective; }
    bool isOrthographic() const { return m_type == EType::orthographic; }

    EType m_type = EType::undefined;
    std::wstring m_name;
    double m_perspectiveViewAngle = 0;
    double m_orthographicZoomFactor = 0;
    ExcVector3d m_eye;
    ExcVector3d m_target;
    ExcVector3d m_up;
};
const EnumTable& enumTable(ExcCamera::EType);

/// A plane that cuts the model, as a placement, as the coefficients of its equation, both or neither.
///
/// Setting a vector or a coefficient does not set the flag that lets it travel; reading sets it and never clears
/// it.
class ExcClippingPlane : public IJsonObject {
public:
    /// The coefficients of the equation a x + b y + c z + d = 0.
    enum class ECoefficient {
        a,
        b,
        c,
        d
    };

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// Whether origin and vectors mean anything.
    bool hasPlane() const { return m_hasPlane; }
    void setHasPlane(bool has) { m_hasPlane = has; }

    const ExcVector3d& origin() const { return m_origin; }
    void setOrigin(const ExcVector3d& origin) { m_origin = origin; }

    const ExcVector3d& vectorU() const { return m_vectorU; }
    void setVectorU(const ExcVector3d& vector) { m_vectorU = vector; }

    const ExcVector3d& vectorV() const { return m_vectorV; }
    void setVectorV(const ExcVector3d& vector) { m_vectorV = vector; }

    /// Whether the coefficients mean anything.
    bool hasCoefficients() const { return m_hasCoefficients; }
    void setHasCoefficients(bool has) { m_hasCoefficients = has; }

    const std::array<double, 4>& coefficients() const { return m_coefficients; }
    double coefficient(ECoefficient which) const { return m_coefficients[static_cast<std::size_t>(which)]; }
    void setCoefficient(ECoefficient which, double value) {
        m_coefficients[static_cast<std::size_t>(which)] = value;
    }

private:
    struct JsonForm;
    bool isSet() const { return m_hasPlane || m_hasCoefficients; }

    bool m_hasPlane = false;
    ExcVector3d m_origin;
    ExcVector3d m_vectorU;
    ExcVector3d m_vectorV;
    bool m_hasCoefficients = false;
    std::array<double, 4> m_coefficients{};
};

} // namespace zeq
