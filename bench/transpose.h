// Blocks of complex elements, turned: for peers whose plans take lines only.
#pragma once

namespace bench {

/// Lays row r of a block of `rows` x `columns` complex elements at column r of `to`. Pitches are
/// in elements.
inline void transpose(const float* from, long fromPitch, float* to, long toPitch, long rows,
                      long columns) {
    using Element = double;  // eight bytes that move together, never computed with
    using Four [[gnu::vector_size(32), gnu::aligned(8), gnu::may_alias]] = Element;
    using One [[gnu::may_alias]] = Element;
    const auto* const in = reinterpret_cast<const One*>(from);
    auto* const out = reinterpret_cast<One*>(to);
    const long blockRows = rows / 4 * 4, blockColumns = columns / 4 * 4;
    for (long r = 0; r < blockRows; r += 4) {
        for (long c = 0; c < blockColumns; c += 4) {
            const auto row = [&](long i) {
                return *reinterpret_cast<const Four*>(in + (r + i) * fromPitch + c);
            };
            const auto store = [&](long i, Four value) {
                *reinterpret_cast<Four*>(out + (c + i) * toPitch + r) = value;
            };
            const Four a = row(0), b = row(1), d = row(2), e = row(3);
            const Four lowAb = __builtin_shufflevector(a, b, 0, 4, 2, 6);
            const Four highAb = __builtin_shufflevector(a, b, 1, 5, 3, 7);
            const Four lowDe = __builtin_shufflevector(d, e, 0, 4, 2, 6);
            const Four highDe = __builtin_shufflevector(d, e, 1, 5, 3, 7);
            store(0, __builtin_shufflevector(lowAb, lowDe, 0, 1, 4, 5));
            store(1, __builtin_shufflevector(highAb, highDe, 0, 1, 4, 5));
            store(2, __builtin_shufflevector(lowAb, lowDe, 2, 3, 6, 7));
            store(3, __builtin_shufflevector(highAb, highDe, 2, 3, 6, 7));
        }
    }
    for (long r = 0; r < rows; ++r) {
        for (long c = r < blockRows ? blockColumns : 0; c < columns; ++c) {
            out[c * toPitch + r] = in[r * fromPitch + c];
        }
    }
}

}  // namespace bench
