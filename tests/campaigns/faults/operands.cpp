// The objects that operations work on.
#include "campaigns/faults/operands.h"

#include <map>
#include <memory>
#include <utility>

#include "support/buffer_probe.h"
#include "support/pel_images.h"
#include "support/random_planes.h"

namespace faults {

namespace {

template <class T>
mvPelBuffer<T> someImage(const Shape& shape, unsigned seed) {
    const auto image = support::randomImage<T>(shape.width, shape.height, seed);
    return support::pelBufferOf(support::at(image, shape.offset ? 2 : 0, shape.offset ? -1 : 0));
}

// Smaller than the images and moved against them, so that only a part is delivered.
template <class T>
mvPelBuffer<T> boundImage() {
    mvPelBuffer<T> image(3, 2);
    image.offset(1, 0);
    mfPelSet(image, 113);
    return image;
}

// Thousands of operands hold the same few filters; copies, which have responses of their own, are
// made faster than responses.
template <class F>
const F& madeFilter(mvPair<long> size) {
    static std::map<std::pair<long, long>, F> made;
    const auto [at, isNew] = made.try_emplace({size.x, size.y});
    if (isNew) at->second = makeFilter<F>(size);
    return at->second;
}

template <class F>
void makeFilters(Filters<F>& filters, mvPair<long> size) {
    filters.built = madeFilter<F>(size);
    filters.other = madeFilter<F>({4, 8});
}

// A square plane whose rows outside a narrow band are not empty: some of them must change places.
mvFrequencyBuffer bandAmongOthers() {
    mvFrequencyBuffer buffer(16, 16);
    for (long y = 0; y < 16; ++y) buffer.put(y, y, {1.0, 2.0}, false);
    support::BufferProbe::maskFrequencyBuffer(buffer, true, 8, 9);
    return buffer;
}

// The same band, and nothing outside of it.
mvFrequencyBuffer bandOfRows() {
    mvFrequencyBuffer buffer(16, 16);
    buffer.put(3, 0, {1.0, 2.0}, false);
    support::BufferProbe::maskFrequencyBuffer(buffer, true, 8, 9);
    return buffer;
}

// In place, as nothing else brings back what an object remembers that lost its contents.
template <class T>
void renew(T& object) {
    std::destroy_at(&object);
    std::construct_at(&object);
}

}  // namespace

Operands::Operands(const Shape& shape)
    : bytes(someImage<Byte>(shape, 1)),
      words(someImage<Word>(shape, 2)),
      doubles(someImage<double>(shape, 3)),
      other(4, 8),
      banded(bandAmongOthers()),
      bandAlone(bandOfRows()),
      boundBytes(boundImage<Byte>()),
      boundCodes(boundImage<Byte>()),
      boundWords(boundImage<Word>()),
      boundFirst(boundImage<double>()),
      boundSecond(boundImage<double>()) {
    mfForwardFFT<Byte>(bytes, spectrum);
    spent = spectrum;
    mfInverseFFT(spent, other, true);
    other = mvFrequencyBuffer(4, 8);
    const mvPair<long> size(spectrum.width(), spectrum.height());
    makeFilters(bandPass, size);
    makeFilters(bandReject, size);
    makeFilters(gabor, size);
    makeFilters(gaborReject, size);
    makeFilters(image, size);
    image.built.setImage(spectrum);
}

void separate(Operands& operands) {
    mvPersistent::watch(operands.error, {});
    visitOperands(operands, [](const std::string&, auto& object) {
        if constexpr (requires { object.isBound(); }) object = mfPelClone(object);
        if constexpr (requires { object.hasResponse(); }) {
            if (!object.hasResponse()) renew(object);
        }
        if constexpr (requires { object.hasData(); }) {
            if (!object.hasData()) renew(object);
        }
    });
}

}  // namespace faults
