// Transforms of real lines, made of complex ones of half the length.
#pragma once

#include <filt/fft/internal/kernel/paths/line_transform.h>

namespace mvi {

/// Real transforms with the lanes of the vector type V. A line of 2 n reals is taken as n complex
/// elements, the even samples being their real parts.
template <class V>
class RealLines {
  public:
    using Z = Elements<V>;

    /// The n + 1 lowest frequencies of n packed pairs of reals. `lines` holds n elements and is
    /// overwritten.
    static void transform(Z* lines, Z* result, long n) {
        LineTransform<V>::between(lines, result, n);
        separate(result, n);
    }

  private:
    // Splits the spectrum Z of n packed pairs z(j) = x(2j) + i x(2j + 1) into the n + 1 lowest
    // frequencies X of the 2 n reals x. The even and the odd samples have the spectra
    //
    //     E(k) = (Z(k) + conj Z(n - k)) / 2,   O(k) = -i (Z(k) - conj Z(n - k)) / 2,
    //
    // and X(k) = E(k) + w^k O(k), X(n - k) = conj (E(k) - w^k O(k)) with w = e^(-pi i / n): the
    // elements k and n - k need only each other. Below, h1 is E and h2 is O; a pair takes 4
    // halvings, 4 products and 12 additions. X(0) and X(n) are the sum and the difference of the
    // parts of Z(0), and X(n / 2) is conj Z(n / 2). The factors grow by rotation in single
    // precision, w^(k+1) = w^k + w^k (w - 1), which is part of the bits.
    static void separate(Z* z, long n) {
        const TwiddleTables::Factor* const factors =
            LineTransform<V>::separationFactors(n < 2 ? 2 : n);
        for (long i = 1; i < n / 2; ++i) {
            Z &a = z[i], &b = z[n - i];
            const float re = factors[i].re, im = factors[i].im;
            const V h1r = (a.re + b.re) * 0.5f, h1i = (a.im - b.im) * 0.5f;
            const V h2r = (a.im + b.im) * 0.5f, h2i = (a.re - b.re) * -0.5f;
            a = {h1r + h2r * re - h2i * im, h1i + h2i * re + h2r * im};
            b = {h1r - h2r * re + h2i * im, -h1i + h2i * re + h2r * im};
        }
        if (n >= 2) z[n / 2].im = -z[n / 2].im;
        const Z dc = z[0];
        const V zero = V::filled(0.0f);
        z[0] = {dc.re + dc.im, zero};
        z[n] = {dc.re - dc.im, zero};
    }
};

}  // namespace mvi
