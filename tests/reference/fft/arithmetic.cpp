// Element-wise arithmetic of planes of one size.
#include "reference/fft/arithmetic.h"

namespace reference {
namespace {

template <class Operation>
Plane combine(const Plane& a, const Plane& b, Operation operation) {
    Plane result(a.width, a.height);
    for (std::size_t i = 0; i < a.elements.size(); ++i) {
        result.elements[i] = operation(a.elements[i], b.elements[i]);
    }
    return result;
}

}  // namespace

Plane sum(const Plane& a, const Plane& b) {
    return combine(a, b, [](Complex p, Complex q) { return Complex{p.re + q.re, p.im + q.im}; });
}

Plane difference(const Plane& a, const Plane& b) {
    return combine(a, b, [](Complex p, Complex q) { return Complex{p.re - q.re, p.im - q.im}; });
}

Plane product(const Plane& src, const Plane& dst) {
    return combine(src, dst, [](Complex s, Complex d) {
        return Complex{s.re * d.re - s.im * d.im, s.re * d.im + s.im * d.re};
    });
}

Plane conjugate(const Plane& a) {
    return combine(a, a, [](Complex p, Complex) { return Complex{p.re, -p.im}; });
}

}  // namespace reference
