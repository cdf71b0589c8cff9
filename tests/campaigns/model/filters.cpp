// The filters in the model.
#include "campaigns/model/filters.h"

#include <utility>

#include "reference/fft/arithmetic.h"
#include "support/thrown.h"

namespace model {
namespace {

[[noreturn]] void refuse(const char* message) {
    throw Thrown{std::string("InvalidArgument: ") + message};
}

void requireFrequency(double frequency) {
    if (!(frequency >= 0.0 && frequency <= 0.5)) refuse("Frequency must be between 0.0 and 0.5.");
}

void requireRadius(long radius, bool rejects) {
    if (radius >= 0) return;
    refuse(rejects ? "DC Protection Radius cannot be negative."
                   : "DC Removal Radius cannot be negative.");
}

void requireSides(long width, long height) {
    for (const long side : {width, height}) {
        if (reference::paddedSize(side) != side) throw Thrown{support::kNotPowerOfTwo};
    }
}

void requireApplicable(const ImageFilter& filter, const Buffer& b) {
    requireData(b);
    requireData(filter.image);
    if (b.width != filter.image.width || b.height != filter.image.height) throw Thrown{kOtherSize};
}

void multiply(const ImageFilter& filter, Buffer& b) {
    if (b.inverseComputed || filter.image.inverseComputed) throw Thrown{support::kSpent};
    setPlane(b, reference::product(planeOf(filter.image), planeOf(b)));
    b.masked = false;
    b.maskedMiny = b.maskedMaxy = 0;
}

}  // namespace

void validate(const reference::RingParameters& given, bool rejects) {
    requireFrequency(given.frequency);
    if (!(given.sigma > 0.0)) refuse("Sigma must be positive.");
    if (!(given.plateau >= 0.0)) refuse("Plateau cannot be negative.");
    requireRadius(given.radius, rejects);
    requireSides(given.width, given.height);
}

void validate(const reference::LobeParameters& given, bool rejects) {
    requireFrequency(given.frequency);
    if (given.sigmaX <= 0.0 || given.sigmaY <= 0.0) refuse("Sigma values must be positive.");
    if (given.plateauX < 0.0 || given.plateauY < 0.0) refuse("Plateau values cannot be negative.");
    requireRadius(given.radius, rejects);
    requireSides(given.width, given.height);
}

void take(Buffer& b, const reference::Spectrum& spectrum) {
    setPlane(b, spectrum.plane);
    b.imageWidth = spectrum.imageWidth;
    b.imageHeight = spectrum.imageHeight;
    b.masked = spectrum.masked;
    b.maskedMiny = spectrum.maskedMiny;
    b.maskedMaxy = spectrum.maskedMaxy;
    b.inverseComputed = spectrum.inverseComputed;
}

void assign(ImageFilter& filter, const ImageFilter& src) {
    if (&filter == &src) return;
    filter.watcher.announce();
    assign(filter.image, src.image);
    filter.isInitialized = src.isInitialized;
}

void move(ImageFilter& filter, ImageFilter& src) {
    if (&filter == &src) return;
    filter.watcher.announce();
    move(filter.image, src.image);
    filter.isInitialized = std::exchange(src.isInitialized, false);
}

void apply(const ImageFilter& filter, Buffer& b) {
    requireApplicable(filter, b);
    multiply(filter, b);
}

void apply(const ImageFilter& filter, const Buffer& src, Buffer& dst) {
    requireApplicable(filter, src);
    assign(dst, src);
    multiply(filter, dst);
}

}  // namespace model
