// Every public operation upon a frequency buffer.
#include <utility>

#include "support/longs.h"
#include "support/store_again.h"
#include "support/use.h"

namespace archive {
namespace {

using Buffer = mvFrequencyBuffer;
using Byte = unsigned char;
using Word = unsigned short;
using Doubles = mvPelBuffer<double>;

// One operation; `buffer` is a copy of its own.
struct Use {
    const char* name;
    void (*call)(Buffer& buffer);
};

// --- Element access

constexpr mvPair<long> kPlaces[] = {{0, 0},       {1, 0},
                                    {-1, 0},      {0, -1},
                                    {1023, 2047}, {support::asLong(-2147483648LL), 2147483647},
                                    {2048, 2048}, {0, support::asLong(5000000000)}};

// Calls access(x, y, centred) at places within and beyond planes of all sizes.
template <class Access>
void atEachPlace(Access access) {
    for (const bool centred : {false, true}) {
        for (const mvPair<long>& at : kPlaces) tolerate([&] { access(at.x, at.y, centred); });
    }
}

constexpr Use kAccess[] = {
    {"width", [](Buffer& b) { b.width(); }},
    {"height", [](Buffer& b) { b.height(); }},
    {"get", [](Buffer& b) { atEachPlace([&](long x, long y, bool c) { b.get(x, y, c); }); }},
    {"getReal",
     [](Buffer& b) { atEachPlace([&](long x, long y, bool c) { b.getReal(x, y, c); }); }},
    {"getImaginary",
     [](Buffer& b) { atEachPlace([&](long x, long y, bool c) { b.getImaginary(x, y, c); }); }},
    {"put",
     [](Buffer& b) { atEachPlace([&](long x, long y, bool c) {
                         b.put(x, y, {1, 2}, c);
                     }); }},
    {"putReal",
     [](Buffer& b) { atEachPlace([&](long x, long y, bool c) { b.putReal(x, y, 1, c); }); }},
    {"putImaginary",
     [](Buffer& b) { atEachPlace([&](long x, long y, bool c) { b.putImaginary(x, y, 1, c); }); }},
    {"the last element", [](Buffer& b) { b.get(b.width() - 1, b.height() - 1, false); }},
    {"the first centred element",
     [](Buffer& b) { b.get(-(b.width() / 2), -(b.height() / 2), true); }},
};

// --- Life

constexpr Use kLife[] = {
    {"state",
     [](Buffer& b) {
         static_cast<void>(b.hasData() || b.inverseComputed());
         static_cast<void>(b.imageSize() == b.offset());
         static_cast<void>(b.xformCache());
         static_cast<void>(b.band());
     }},
    {"clearBand", [](Buffer& b) { b.clearBand(); }},
    {"copy", [](Buffer& b) { Buffer{b}; }},
    {"move", [](Buffer& b) { Buffer{std::move(b)}; }},
    {"assignment",
     [](Buffer& b) {
         Buffer other(4, 4);
         other = b;
     }},
    {"moving assignment",
     [](Buffer& b) {
         Buffer other(4, 4);
         other = std::move(b);
     }},
    {"assignment from another",
     [](Buffer& b) {
         const Buffer other(4, 4);
         b = other;
     }},
    {"comparison with a copy",
     [](Buffer& b) {
         const Buffer copy(b);
         static_cast<void>(copy == b);
     }},
    {"comparison with another", [](Buffer& b) { static_cast<void>(b == Buffer(4, 4)); }},
    {"reduced copy", [](Buffer& b) { Buffer(b, 2, 2); }},
    {"wide reduced copy", [](Buffer& b) { Buffer(b, 2048, 2); }},
    {"high reduced copy", [](Buffer& b) { Buffer(b, 2, 2048); }},
    {"reduced copy beyond the largest size", [](Buffer& b) { Buffer(b, 1L << 27, 1L << 16); }},
    {"storing", [](Buffer& b) { stored(b); }},
    {"storing and loading", [](Buffer& b) { storeAgain(b); }},
    {"loading into it",
     [](Buffer& b) {
         Buffer other(2, 2);
         load(stored(other), b);
     }},
};

// --- Component images

template <auto get>
void bothImages(Buffer& b) {
    for (const bool centred : {false, true}) tolerate([&] { (b.*get)(centred); });
}

void map(Buffer& b, mvFrequencyDefs::FrequencyMapping mapping) {
    mfFrequencyMapImage(b.getMagnitudeImage(true), mapping, 0, 1);
}

constexpr Use kImages[] = {
    {"real images", bothImages<&Buffer::getRealImage>},
    {"imaginary images", bothImages<&Buffer::getImaginaryImage>},
    {"magnitude images", bothImages<&Buffer::getMagnitudeImage>},
    {"phase images", bothImages<&Buffer::getPhaseImage>},
    {"clipped map", [](Buffer& b) { map(b, mvFrequencyDefs::eMapClip); }},
    {"scaled map", [](Buffer& b) { map(b, mvFrequencyDefs::eMapAutoScale); }},
    {"map of a range", [](Buffer& b) { map(b, mvFrequencyDefs::eMapRange); }},
    {"logarithmic map", [](Buffer& b) { map(b, mvFrequencyDefs::eMapLog); }},
    {"map of angles", [](Buffer& b) { map(b, mvFrequencyDefs::eMapAngle); }},
    {"angle image",
     [](Buffer& b) {
         Doubles angle;
         mf_ComputeAngleImage(b, angle);
     }},
    {"bound angle image",
     [](Buffer& b) {
         Doubles angle(3, 3);
         mf_ComputeAngleImage(b, angle);
     }},
    {"quadrant image",
     [](Buffer& b) {
         mvPelBuffer<Byte> quadrant;
         mf_ComputeQuadrantImage(b, quadrant);
     }},
    {"bound quadrant image",
     [](Buffer& b) {
         mvPelBuffer<Byte> quadrant(3, 3);
         mf_ComputeQuadrantImage(b, quadrant);
     }},
};

// --- Transforms of a buffer into itself, and into others or two images

constexpr Use kOntoItself[] = {
    {"forward in place", [](Buffer& b) { mfForwardFFT(b, b); }},
    {"inverse to the buffer itself", [](Buffer& b) { mfInverseFFT(b, b, false); }},
    {"inverse to the buffer itself, in place", [](Buffer& b) { mfInverseFFT(b, b, true); }},
};

constexpr Use kTransforms[] = {
    {"forward",
     [](Buffer& b) {
         Buffer out;
         mfForwardFFT(b, out);
     }},
    {"inverse to a buffer",
     [](Buffer& b) {
         Buffer out;
         mfInverseFFT(std::as_const(b), out);
     }},
    {"inverse to a buffer, in place",
     [](Buffer& b) {
         Buffer out;
         mfInverseFFT(b, out, true);
     }},
    {"inverse to real and imaginary",
     [](Buffer& b) {
         Doubles real, imaginary;
         mfInverseFFT(std::as_const(b), real, imaginary);
     }},
    {"inverse to real and imaginary, bound, in place",
     [](Buffer& b) {
         Doubles real(3, 3), imaginary(3, 3);
         mfInverseFFT(b, real, imaginary, true);
     }},
};

// --- Magnitudes of each pel type, in place and not, into new and bound images

template <class T>
constexpr Use kMagnitudes[] = {
    {"inverse to magnitudes",
     [](Buffer& b) {
         mvPelBuffer<T> out;
         mfInverseFFT(std::as_const(b), out, true);
     }},
    {"inverse to magnitudes, bound, in place",
     [](Buffer& b) {
         mvPelBuffer<T> out(3, 3);
         mfInverseFFT(b, out, false, true);
     }},
    {"inverse with angles",
     [](Buffer& b) {
         mvPelBuffer<T> out;
         Doubles angle;
         mfInverseFFTAngle(std::as_const(b), out, angle, false);
     }},
    {"inverse with angles, bound, in place",
     [](Buffer& b) {
         mvPelBuffer<T> out(3, 3);
         Doubles angle(3, 3);
         mfInverseFFTAngle(b, out, angle, true, true);
     }},
    {"inverse with quadrants",
     [](Buffer& b) {
         mvPelBuffer<T> out;
         mvPelBuffer<Byte> quadrant;
         mfInverseFFTQuadrant(std::as_const(b), out, quadrant, true);
     }},
    {"inverse with quadrants, bound, in place",
     [](Buffer& b) {
         mvPelBuffer<T> out(3, 3);
         mvPelBuffer<Byte> quadrant(3, 3);
         mfInverseFFTQuadrant(b, out, quadrant, false, true);
     }},
};

template <class T>
constexpr Use kTwice[] = {
    {"inverse to magnitudes, twice",
     [](Buffer& b) {
         mvPelBuffer<T> out;
         mfInverseFFT(b, out, true, true);
         mfInverseFFT(b, out, true, true);
     }},
};

// --- Arithmetic, and the buffer as the image of a filter

constexpr Use kArithmetic[] = {
    {"sum",
     [](Buffer& b) {
         Buffer out;
         mfFrequencyAdd(b, b, out);
     }},
    {"sum in place", [](Buffer& b) { mfFrequencyAdd(b, b); }},
    {"difference",
     [](Buffer& b) {
         Buffer out(4, 4);
         mfFrequencySubtract(b, b, out);
     }},
    {"difference into an operand", [](Buffer& b) { mfFrequencySubtract(b, b, b); }},
    {"difference in place", [](Buffer& b) { mfFrequencySubtract(b, b); }},
    {"product",
     [](Buffer& b) {
         Buffer out;
         mfFrequencyMultiply(b, b, out);
     }},
    {"product in place", [](Buffer& b) { mfFrequencyMultiply(b, b); }},
    {"product with another", [](Buffer& b) { mfFrequencyMultiply(Buffer(4, 4), b); }},
    {"conjugate",
     [](Buffer& b) {
         Buffer out;
         mfFrequencyConjugate(b, out);
     }},
    {"conjugate in place", [](Buffer& b) { mfFrequencyConjugate(b); }},
    {"filter of it", [](Buffer& b) { mvFrequencyFilterImage(b).apply(b); }},
    {"filter of it, applied to another",
     [](Buffer& b) {
         Buffer out;
         mvFrequencyFilterImage(b).apply(b, out);
     }},
};

template <std::size_t count>
void runAll(const Use (&uses)[count], const Buffer& buffer, double elements, Steps& steps) {
    for (const Use& use : uses) {
        if (!steps.takesNext()) continue;
        Buffer own(buffer);
        steps.run(use.name, elements, [&] { use.call(own); });
    }
}

// Of what only reads the buffer or transforms it in place. Memory that runs out leaves it as it
// was.
template <std::size_t count>
void runInverses(const Use (&uses)[count], const Buffer& buffer, double elements, Steps& steps) {
    runAll(uses, buffer, elements, steps);
    if (!steps.isShortOfMemory()) return;
    for (const Use& use : uses) {
        Buffer own(buffer), former(buffer);
        if (!steps.failsWithoutMemory([&] { use.call(own); })) continue;
        EXPECT_EQ(stored(own), stored(former)) << use.name << ", without memory";
    }
}

template <class T>
void runMagnitudes(const Buffer& buffer, double elements, Steps& steps) {
    runInverses(kMagnitudes<T>, buffer, elements, steps);
    runAll(kTwice<T>, buffer, elements, steps);
}

}  // namespace

std::int64_t areaOf(const mvFrequencyBuffer& buffer) {
    std::int64_t area = 0;
    tolerate([&] { area = std::int64_t{buffer.width()} * buffer.height(); });
    return area;
}

void use(mvFrequencyBuffer& buffer, Steps& steps, long largestArea) {
    const std::int64_t area = areaOf(buffer);
    if (area > largestArea) return runAll(kAccess, buffer, 0, steps);
    const auto elements = static_cast<double>(area);
    runAll(kAccess, buffer, 0, steps);
    runAll(kLife, buffer, elements, steps);
    runAll(kImages, buffer, elements, steps);
    runAll(kOntoItself, buffer, elements, steps);
    runInverses(kTransforms, buffer, elements, steps);
    runMagnitudes<Byte>(buffer, elements, steps);
    runMagnitudes<Word>(buffer, elements, steps);
    runMagnitudes<double>(buffer, elements, steps);
    runAll(kArithmetic, buffer, elements, steps);
}

}  // namespace archive
