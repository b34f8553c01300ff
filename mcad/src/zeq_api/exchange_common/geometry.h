// Vectors, points, matrices and placements. Numbers are taken only where the document holds them as floating
// point: 1.0, but not 1. Objects are used by one thread at a time.
#pragma once

#include <array>
#include <cstddef>

#include "zeq_api/json/json_object.h"

namespace zeq {

/// The components of a vector. Its JSON form is an array of them; reading stops at the first element that is
/// no floating-point number.
template <std::size_t N>
class ExcVectorBase : public IJsonObject {
protected:
    ExcVectorBase() = default;
    explicit ExcVectorBase(const std::array<double, N>& components) : m_components(components) {}

    std::array<double, N> m_components{};
};

/// A vector or a point in the plane.
class ExcVector2d : public ExcVectorBase<2> {
public:
    ExcVector2d() = default;
    ExcVector2d(double x, double y) : ExcVectorBase({x, y}) {}

    void readObject(const JsonValue& array) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    void set(double x, double y) { m_components = {x, y}; }

    double x() const { return m_components[0]; }
    double& x() { return m_components[0]; }

    double y() const { return m_components[1]; }
    double& y() { return m_components[1]; }

private:
    struct JsonForm;
};

/// A vector or a point in space.
class ExcVector3d : public ExcVectorBase<3> {
public:
    ExcVector3d() = default;
    ExcVector3d(double x, double y, double z) : ExcVectorBase({x, y, z}) {}

    void readObject(const JsonValue& array) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    void set(double x, double y, double z) { m_components = {x, y, z}; }

    double x() const { return m_components[0]; }
    double& x() { return m_components[0]; }

    double y() const { return m_components[1]; }
    double& y() { return m_components[1]; }

    double z() const { return m_components[2]; }
    double& z() { return m_components[2]; }

private:
    struct JsonForm;
};

/// A matrix of three rows; the identity by default.
class ExcMatrix3d : public IJsonObject {
public:
    void readObject(const JsonValue& array) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const ExcVector3d& row(std::size_t index) const { return m_rows[index]; }
    ExcVector3d& row(std::size_t index) { return m_rows[index]; }
    const ExcVector3d& operator[](std::size_t index) const { return m_rows[index]; }
    ExcVector3d& operator[](std::size_t index) { return m_rows[index]; }

private:
    struct JsonForm;

    std::array<ExcVector3d, 3> m_rows{ExcVector3d(1, 0, 0), ExcVector3d(0, 1, 0), ExcVector3d(0, 0, 1)};
};

/// A placement: a linear map followed by a translation; the identity by default.
class ExcTransformation : public IJsonObject {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const ExcMatrix3d& affine() const { return m_affine; }
    ExcMatrix3d& affine() { return m_affine; }

    const ExcVector3d& translation() const { return m_translation; }
    ExcVector3d& translation() { return m_translation; }

private:
    struct JsonForm;

    ExcMatrix3d m_affine;
    ExcVector3d m_translation;
};

} // namespace zeq
