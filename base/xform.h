// Transforms of the plane: a matrix and a translation; the same under its name in a cache; a cache
// of one or none.
#pragma once

#include <base/export.h>
#include <base/matrix.h>

template <int N>
class mvXform;

/// An affine transform: v goes to matrix * v + translation. The identity by default.
template <>
class MVBASE_API mvXform<2> {
  public:
    constexpr mvXform() noexcept = default;
    /// From its two parts.
    constexpr mvXform(const mvMatrix<2>& matrix, const mvVector<2>& trans) noexcept
        : matrix_(matrix), trans_(trans) {}

    /// The two parts.
    constexpr const mvMatrix<2>& matrix() const noexcept { return matrix_; }
    constexpr const mvVector<2>& trans() const noexcept { return trans_; }

    /// The transform that undoes this one. A matrix that cannot be undone in finite doubles throws
    /// an mvExceptionWithString.
    mvXform inverse() const;

    /// The product of transforms goes through `right` first: (a * b) * v is a * (b * v) up to
    /// rounding. That of a transform and a vector is the vector transformed.
    mvXform operator*(const mvXform& right) const noexcept;
    mvVector<2> operator*(const mvVector<2>& v) const noexcept;

    /// Equal when both parts are.
    friend constexpr bool operator==(const mvXform&, const mvXform&) = default;

  private:
    mvMatrix<2> matrix_;
    mvVector<2> trans_;
};

/// The linear member of the family of client transforms: an mvXform<2> under the name under which
/// it is put into a cache. The identity by default.
class MVBASE_API mv2XformLinear {
  public:
    constexpr mv2XformLinear() noexcept = default;
    /// From a transform, or from its two parts.
    constexpr mv2XformLinear(const mvXform<2>& xform) noexcept : xform_(xform) {}
    constexpr mv2XformLinear(const mvMatrix<2>& matrix, const mvVector<2>& trans) noexcept
        : xform_(matrix, trans) {}

    /// The transform.
    constexpr mvXform<2> xform() const noexcept { return xform_; }

    /// The product goes through `right` first.
    mv2XformLinear operator*(const mv2XformLinear& right) const noexcept;

    /// Equal when the transforms are.
    friend constexpr bool operator==(const mv2XformLinear&, const mv2XformLinear&) = default;

  private:
    mvXform<2> xform_;
};

/// The client transform of an image, if it has one. None by default.
class MVBASE_API mv2XformCache {
  public:
    constexpr mv2XformCache() noexcept = default;

    /// True when there is a transform, the identity included.
    [[nodiscard]] constexpr bool isSet() const noexcept { return set_; }

    /// Sets the identity.
    constexpr void setIdentity() noexcept { xform(mv2XformLinear()); }

    /// Sets `linear`.
    constexpr void xform(const mv2XformLinear& linear) noexcept {
        linear_ = linear;
        set_ = true;
    }

    /// The transform; the identity when there is none.
    constexpr mv2XformLinear linearXform() const noexcept { return linear_; }

    /// Equal when neither has a transform, or both have the same: none is not the identity.
    friend constexpr bool operator==(const mv2XformCache&, const mv2XformCache&) = default;

  private:
    bool set_ = false;
    mv2XformLinear linear_;
};
