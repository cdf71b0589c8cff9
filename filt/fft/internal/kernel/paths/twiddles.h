// Twiddle factors: literal seeds and the tables that the rotation recurrences grow from them.
#pragma once

namespace mvi {

/// cos and sin of e and of 3 e, e = 2 pi / S, rounded from double: what one step of a stage of
/// span S turns its factors by.
struct StageSeed {
    float c1, s1, c3, s3;
};

/// The seeds of S = 1, 2, 4 ... 2048, by log2 S. Literals, so that no runtime library can change
/// a result.
inline constexpr StageSeed kStageSeeds[] = {
    {0x1p+0f, -0x1.1a6264p-52f, 0x1p+0f, -0x1.a79394p-51f},
    {-0x1p+0f, 0x1.1a6264p-53f, -0x1p+0f, 0x1.a79394p-52f},
    {0x1.1a6264p-54f, 0x1p+0f, -0x1.a79394p-53f, -0x1p+0f},
    {0x1.6a09e6p-1f, 0x1.6a09e6p-1f, -0x1.6a09e6p-1f, 0x1.6a09e6p-1f},
    {0x1.d906bcp-1f, 0x1.87de2ap-2f, 0x1.87de2ap-2f, 0x1.d906bcp-1f},
    {0x1.f6297cp-1f, 0x1.8f8b84p-3f, 0x1.a9b662p-1f, 0x1.1c73b4p-1f},
    {0x1.fd88dap-1f, 0x1.917a6cp-4f, 0x1.e9f416p-1f, 0x1.294062p-2f},
    {0x1.ff621ep-1f, 0x1.91f66p-5f, 0x1.fa7558p-1f, 0x1.2c8106p-3f},
    {0x1.ffd886p-1f, 0x1.92156p-6f, 0x1.fe9cdap-1f, 0x1.2d520ap-4f},
    {0x1.fff622p-1f, 0x1.921d2p-7f, 0x1.ffa72ep-1f, 0x1.2d8658p-5f},
    {0x1.fffd88p-1f, 0x1.921f1p-8f, 0x1.ffe9ccp-1f, 0x1.2d936cp-6f},
    {0x1.ffff62p-1f, 0x1.921f8cp-9f, 0x1.fffa72p-1f, 0x1.2d96bp-7f},
};

/// sin(theta / 2) and sin(theta), theta = pi / N, in single precision: the seeds of the real-data
/// separation of N complex points.
struct SeparationSeed {
    float halfSine, sine;
};

/// The seeds of N = 1, 2, 4 ... 1024, by log2 N.
inline constexpr SeparationSeed kSeparationSeeds[] = {
    {0x1p+0f, -0x1.777a5cp-24f},       {0x1.6a09e6p-1f, 0x1p+0f},
    {0x1.87de2cp-2f, 0x1.6a09e6p-1f},  {0x1.8f8b84p-3f, 0x1.87de2cp-2f},
    {0x1.917a6cp-4f, 0x1.8f8b84p-3f},  {0x1.91f66p-5f, 0x1.917a6cp-4f},
    {0x1.92156p-6f, 0x1.91f66p-5f},    {0x1.921d2p-7f, 0x1.92156p-6f},
    {0x1.921f1p-8f, 0x1.921d2p-7f},    {0x1.921f8cp-9f, 0x1.921f1p-8f},
    {0x1.921facp-10f, 0x1.921f8cp-9f},
};

/// The factors of all stages and separations, as the recurrences give them in single precision.
struct TwiddleTables {
    /// What a butterfly multiplies its third and fourth output by.
    struct Butterfly {
        float re1, im1, re3, im3;
    };
    struct Factor {
        float re, im;
    };

    Butterfly stage[1024]{};
    Factor separation[1024]{};

    constexpr TwiddleTables() {
        for (int k = 2; k <= 11; ++k) growStage(stage + ((1 << k) / 4 - 1), 1 << k, kStageSeeds[k]);
        for (int k = 1; k <= 10; ++k) {
            growSeparation(separation + ((1 << k) / 2 - 1), 1 << k, kSeparationSeeds[k]);
        }
    }

  private:
    static constexpr Factor turned(Factor w, float c, float s) {
        return {c * w.re - s * w.im, s * w.re + c * w.im};
    }

    static constexpr void growStage(Butterfly* factors, int span, StageSeed seed) {
        Factor w1{1.0f, 0.0f}, w3{1.0f, 0.0f};
        for (int j = 0; j < span / 4; ++j) {
            factors[j] = {w1.re, w1.im, w3.re, w3.im};
            w1 = turned(w1, seed.c1, seed.s1);
            w3 = turned(w3, seed.c3, seed.s3);
        }
    }

    static constexpr void growSeparation(Factor* factors, int n, SeparationSeed seed) {
        const float re = -2.0f * seed.halfSine * seed.halfSine, im = -seed.sine;
        Factor w{1.0f + re, im};
        for (int i = 1; i < n / 2; ++i) {
            factors[i] = w;
            w = {w.re + (w.re * re - w.im * im), w.im + (w.im * re + w.re * im)};
        }
    }
};

inline constexpr TwiddleTables kTwiddles;

}  // namespace mvi
