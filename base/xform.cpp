// Transforms of the plane.
#include <base/xform.h>

mvXform<2> mvXform<2>::inverse() const {
    const mvMatrix<2> back = matrix_.inverse();
    return {back, back * mvVector<2>(-trans_.x(), -trans_.y())};
}

mvXform<2> mvXform<2>::operator*(const mvXform& right) const noexcept {
    return {matrix_ * right.matrix_, *this * right.trans_};
}

mvVector<2> mvXform<2>::operator*(const mvVector<2>& v) const noexcept {
    const mvVector<2> turned = matrix_ * v;
    return {turned.x() + trans_.x(), turned.y() + trans_.y()};
}

mv2XformLinear mv2XformLinear::operator*(const mv2XformLinear& right) const noexcept {
    return xform_ * right.xform_;
}
