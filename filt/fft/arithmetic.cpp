// Element-wise arithmetic of frequency buffers.
#include <filt/fft/arithmetic.h>
#include <filt/fft/internal/buffer_access.h>
#include <internal/product.h>

#include <cstddef>

namespace {

using Access = mvi::BufferAccess;

struct Complex {
    float re, im;
};

struct Sum {
    static constexpr const char* kSizeMessage = "Can only add equal-sized frequency buffers.";
    Complex operator()(Complex s, Complex d) const { return {d.re + s.re, d.im + s.im}; }
};

struct Difference {
    static constexpr const char* kSizeMessage = "Can only subtract equal-sized frequency buffers.";
    Complex operator()(Complex s, Complex d) const { return {d.re - s.re, d.im - s.im}; }
};

// The four real products as they stand: nothing repairs infinities or NaNs.
struct Product {
    static constexpr const char* kSizeMessage = "Can only multiply equal-sized frequency buffers.";
    Complex operator()(Complex s, Complex d) const {
        return {mvi::product(s.re, d.re) - mvi::product(s.im, d.im),
                mvi::product(s.re, d.im) + mvi::product(s.im, d.re)};
    }
};

void requireData(const mvFrequencyBuffer& a, const mvFrequencyBuffer& b) {
    Access::requireData(a);
    Access::requireData(b);
}

void requireFrequencies(const mvFrequencyBuffer& a, const mvFrequencyBuffer& b) {
    requireData(a, b);
    Access::requireFrequencies(a);
    Access::requireFrequencies(b);
}

void requireSameSize(const mvFrequencyBuffer& a, const mvFrequencyBuffer& b, const char* message) {
    if (a.width() != b.width() || a.height() != b.height()) {
        throw mvFrequencyDefs::InvalidSize(message);
    }
}

// A run of elements as the compiler sees it best; `dst` may be `d`, or lie apart from both.
template <class Operation>
void applyTo(const float* s, const float* d, float* dst, std::size_t floats, Operation op) {
    for (std::size_t i = 0; i < floats; i += 2) {
        const Complex value = op(Complex{s[i], s[i + 1]}, Complex{d[i], d[i + 1]});
        dst[i] = value.re;
        dst[i + 1] = value.im;
    }
}

// dst = op(src, dst), element by element.
template <class Operation>
void accumulate(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst, Operation op) {
    float* const d = Access::data(dst);
    applyTo(Access::data(src), d, d, Access::floats(dst), op);
}

// result = op(src, first), with all that is not data from `first`. The result is not `src`.
template <class Operation>
void assign(const mvFrequencyBuffer& src, const mvFrequencyBuffer& first, mvFrequencyBuffer& result,
            Operation op) {
    if (&result == &first) return accumulate(src, result, op);
    Access::takeShape(result, first);
    applyTo(Access::data(src), Access::data(first), Access::data(result), Access::floats(result),
            op);
}

// For operations in which the operands may change places.
template <class Operation>
void combine(const mvFrequencyBuffer& a, const mvFrequencyBuffer& b, mvFrequencyBuffer& result,
             Operation op) {
    requireFrequencies(a, b);
    requireSameSize(a, b, Operation::kSizeMessage);
    if (&result == &b) return accumulate(a, result, op);
    assign(b, a, result, op);
}

}  // namespace

void mfFrequencyAdd(const mvFrequencyBuffer& a, const mvFrequencyBuffer& b,
                    mvFrequencyBuffer& result) {
    combine(a, b, result, Sum());
}

void mfFrequencyAdd(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) {
    requireFrequencies(src, dst);
    requireSameSize(src, dst, Sum::kSizeMessage);
    accumulate(src, dst, Sum());
}

void mfFrequencySubtract(const mvFrequencyBuffer& a, const mvFrequencyBuffer& b,
                         mvFrequencyBuffer& result) {
    requireData(a, b);
    requireSameSize(a, b, Difference::kSizeMessage);
    requireFrequencies(a, b);
    if (&result != &b) return assign(b, a, result, Difference());
    Access::takeShape(result, a);
    accumulate(a, result, [](Complex s, Complex d) { return Difference()(d, s); });
}

void mfFrequencySubtract(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) {
    requireFrequencies(src, dst);
    requireSameSize(src, dst, Difference::kSizeMessage);
    accumulate(src, dst, Difference());
}

void mfFrequencyMultiply(const mvFrequencyBuffer& a, const mvFrequencyBuffer& b,
                         mvFrequencyBuffer& result) {
    combine(a, b, result, Product());
}

void mfFrequencyMultiply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) {
    requireData(src, dst);
    requireSameSize(src, dst, Product::kSizeMessage);
    requireFrequencies(src, dst);
    accumulate(src, dst, Product());
}

void mfFrequencyConjugate(mvFrequencyBuffer& buf) {
    Access::requireFrequencies(buf);
    float* const data = Access::data(buf);
    for (std::size_t i = 1; i < Access::floats(buf); i += 2) data[i] = -data[i];
}

void mfFrequencyConjugate(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) {
    if (&src == &dst) return mfFrequencyConjugate(dst);
    Access::requireFrequencies(src);
    Access::takeShape(dst, src);
    const float* const s = Access::data(src);
    float* const d = Access::data(dst);
    for (std::size_t i = 0; i < Access::floats(dst); i += 2) {
        d[i] = s[i];
        d[i + 1] = -s[i + 1];
    }
}
