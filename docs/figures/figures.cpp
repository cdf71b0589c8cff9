// What the figures of the guide show, computed by the library: figures PICTURES RESULTS
//
// Leaves pictures and tables of numbers in the folder RESULTS; draw.py puts axes around them.
#include <filt/freqfilt.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <numbers>
#include <string>

#include "examples/picture.h"

namespace {

std::string results;

/// A table with one row of numbers a line.
void writeTable(const std::string& name, const mvPelBuffer_const<double>& table) {
    std::ofstream file(results + name + ".csv");
    file.precision(9);
    for (long y = 0; y < table.height(); ++y) {
        for (long x = 0; x < table.width(); ++x) {
            file << table.pel(x, y) << (x + 1 < table.width() ? ',' : '\n');
        }
    }
}

/// What a filter does to each frequency, DC in the middle.
mvPelBuffer<double> response(const mvFrequencyFilter& filter, long width, long height) {
    mvFrequencyBuffer ones(width, height);
    for (long y = 0; y < height; ++y) {
        for (long x = 0; x < width; ++x) ones.putReal(x, y, 1.0, false);
    }
    filter.apply(ones);
    return ones.getRealImage(true);
}

/// What a filter makes of a single bright pel in the middle: real parts.
mvPelBuffer<double> answerToPoint(const mvFrequencyFilter& filter, long side) {
    mvPelBuffer<double> point(side, side), real, imaginary;
    point.pointToRow(side / 2)[side / 2] = 1.0;
    mvFrequencyBuffer spectrum;
    mfForwardFFT(point, spectrum);
    filter.apply(spectrum);
    mfInverseFFT(spectrum, real, imaginary, true);
    return real;
}

/// The spectrum of a soft spot with a wave of 18 bins to the right and 10 downwards.
void writeSpectrum() {
    const long side = 64;
    mvPelBuffer<double> picture(side, side);
    for (long y = 0; y < side; ++y) {
        for (long x = 0; x < side; ++x) {
            const double spot =
                std::exp(-std::hypot(static_cast<double>(x - 32), static_cast<double>(y - 32)) / 4);
            const double turns = static_cast<double>(18 * x + 10 * y) / side;
            picture.pointToRow(y)[x] = 20 * spot + std::cos(2 * std::numbers::pi * turns);
        }
    }
    mvFrequencyBuffer spectrum;
    mfForwardFFT(picture, spectrum);
    writeTable("spectrum-storage", spectrum.getMagnitudeImage(false));
    writeTable("spectrum-shifted", spectrum.getMagnitudeImage(true));
}

/// A ring and a lobe on a plane that is twice as wide as high.
void writeShapes() {
    const mvPair<long> size(256, 128);
    const mvRadian angle(std::numbers::pi / 6);
    writeTable("ring",
               response(mvFrequencyFilterBandPass(0.02, 0.03, 0.25, size, 0), size.x, size.y));
    writeTable("lobe",
               response(mvFrequencyFilterGabor({0.02, 0.05}, {0.03, 0.0}, angle, 0.25, size, 0),
                        size.x, size.y));
}

/// Three rings of one frequency: what they let through, and how they ring.
void writeWidths() {
    const double shapes[][2] = {{0.004, 0.0}, {0.03, 0.0}, {0.004, 0.05}};  // sigma, plateau
    int number = 0;
    for (const auto& [sigma, plateau] : shapes) {
        const mvFrequencyFilterBandPass filter(sigma, plateau, 0.125, {512, 512}, 0);
        const std::string name = "width-" + std::to_string(number++);
        writeTable(name + "-response", response(filter, 512, 512).window(256, 256, 256, 1));
        writeTable(name + "-answer", answerToPoint(filter, 512).window(128, 256, 256, 1));
    }
}

/// Where lobes that point right, left and left upwards come to lie on a small plane.
void writePlacement() {
    const double degrees[] = {0, 180, 225};
    for (int i = 0; i < 3; ++i) {
        const mvRadian angle(degrees[i] * std::numbers::pi / 180);
        const mvFrequencyFilterGabor filter({0.03, 0.03}, {0, 0}, angle, 0.21, {64, 64}, 0);
        writeTable("placement-" + std::to_string(i), response(filter, 64, 64));
    }
}

/// The bytes that each mapping makes of a ramp, which shows what is peculiar to it.
void writeMappings() {
    const double ramps[][2] = {{-60, 320}, {100, 200}, {0, 160}, {0, 20}, {-7, 7}};
    for (int mapping = 0; mapping < 5; ++mapping) {
        mvPelBuffer<double> table(701, 2);
        mvPelBuffer<double> ramp = table.window(0, 0, 701, 1);
        const auto& [from, to] = ramps[mapping];
        for (long x = 0; x < 701; ++x) {
            ramp.pointToRow(0)[x] = from + (to - from) * static_cast<double>(x) / 700;
        }
        const auto which = static_cast<mvFrequencyDefs::FrequencyMapping>(mapping);
        const Image bytes = mfFrequencyMapImage(ramp, which, 20, 100);
        for (long x = 0; x < 701; ++x) table.pointToRow(1)[x] = bytes.pel(x, 0);
        writeTable("mapping-" + std::to_string(mapping), table);
    }
}

constexpr long kPlane = 1024;

/// What a ring at 0.03 cycles per pixel leaves of the cloth.
Image throughRing(const Image& cloth, double sigma, mvBorder border) {
    const mvFrequencyFilterBandPass ring(
        {.sigma = sigma, .frequency = 0.03, .size = {kPlane, kPlane}, .dcRadius = 1});
    Image result;
    mfFilterImage(cloth, ring, result, {.border = border, .rescale = true});
    return result;
}

/// A position of the plane as the blend of two pels of a line, the second with the weight t.
struct Blend {
    long a, b;
    double t;
};
Blend blendAt(long i, long n) {
    if (i < n) return {i, i, 0.0};
    const auto mirrored = [n](long j) {
        j = ((j % (2 * n)) + 2 * n) % (2 * n);
        return std::min(j, 2 * n - 1 - j);
    };
    const double t = (static_cast<double>(i - n) + 0.5) / static_cast<double>(kPlane - n);
    return {mirrored(i), mirrored(i - kPlane), t};
}

/// The plane that the picture call fills for the cloth.
Image filledPlane(const Image& cloth, mvBorder border) {
    Image plane(kPlane, kPlane);
    mfPelCopy(cloth, plane);
    if (border == mvBorder::zero) return plane;
    for (long y = 0; y < kPlane; ++y) {
        const Blend row = blendAt(y, cloth.height());
        for (long x = 0; x < kPlane; ++x) {
            const Blend at = blendAt(x, cloth.width());
            const auto along = [&](long v) {
                return std::lerp(cloth.pel(at.a, v), cloth.pel(at.b, v), at.t);
            };
            const double value = std::lerp(along(row.a), along(row.b), row.t);
            plane.pointToRow(y)[x] = static_cast<unsigned char>(std::lround(value));
        }
    }
    return plane;
}

/// The cloth and its padded planes through the ring that finds its defects.
void writeBorders(const Image& cloth) {
    const mvBorder borders[] = {mvBorder::zero, mvBorder::mirror};
    for (int i = 0; i < 2; ++i) {
        const std::string number = std::to_string(i);
        writePicture(results + "plane-" + number + ".png", filledPlane(cloth, borders[i]));
        writePicture(results + "border-" + number + ".png", throughRing(cloth, 0.012, borders[i]));
    }
}

/// The same ring, too narrow, right and too wide.
void writeChoice(const Image& cloth) {
    const double sigmas[] = {0.002, 0.012, 0.06};
    for (int i = 0; i < 3; ++i) {
        const Image result = throughRing(cloth, sigmas[i], mvBorder::mirror);
        writePicture(results + "choice-" + std::to_string(i) + ".png", result);
    }
}

/// A picture at three places of its image, there and back.
void writeOffsets(Image picture) {
    const mvPair<long> offsets[] = {{0, 0}, {96, 48}, {-96, -48}};
    for (int i = 0; i < 3; ++i) {
        picture.offset(offsets[i]);
        mvFrequencyBuffer spectrum;
        mfForwardFFT(picture, spectrum);
        Image back;
        mfInverseFFT(spectrum, back, false, true);
        writePicture(results + "offset-" + std::to_string(i) + ".png", back);
    }
}

/// The spectrum of a picture after a lobe, rows that hold nothing included.
void writeBand(const Image& picture) {
    mvFrequencyBuffer spectrum;
    mfForwardFFT(picture, spectrum);
    const mvPair<long> size(spectrum.width(), spectrum.height());
    const mvFrequencyFilterGabor filter({0.03, 0.03}, {0, 0}, mvRadian(0.45), 0.3, size, 0);
    filter.apply(spectrum);
    writeTable("band", spectrum.getMagnitudeImage(true));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const std::string pictures = std::string(argv[1]) + "/";
    results = std::string(argv[2]) + "/";
    const Image disturbed = readPicture(pictures + "disturbed.png");
    writeSpectrum();
    const Image cloth = readPicture(pictures + "woven.png");
    writeBorders(cloth);
    writeChoice(cloth);
    writeShapes();
    writeWidths();
    writePlacement();
    writeMappings();
    writeOffsets(disturbed);
    writeBand(disturbed);
}
