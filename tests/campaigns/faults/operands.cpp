// The objects that operations work on, and a picture of the state each of them is in.
#include "campaigns/faults/operands.h"

#include <sstream>

#include "support/pel_images.h"
#include "support/random_planes.h"
#include "support/streams.h"

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

template <class F>
void makeFilters(Filters<F>& filters, mvPair<long> size) {
    filters.built = makeFilter<F>(size);
    filters.other = makeFilter<F>({4, 8});
}

std::string pictureOf(const std::string& text) {
    return text;
}

std::string pictureOf(mvFrequencyBuffer& buffer) {
    return recordOf(buffer);
}

std::string pictureOf(mvPersistent& object) {
    return recordOf(object);
}

template <class T>
std::string pictureOf(mvPelBuffer<T>& image) {
    std::ostringstream out;
    out << image.width() << ' ' << image.height() << ' ' << image.offset().x << ' '
        << image.offset().y << ' ';
    mv2XformCache xform = image.xformCache();
    mvArchive ar(out);
    ar || xform;
    for (long y = 0; y < image.height(); ++y) {
        out.write(reinterpret_cast<const char*>(image.pointToRow(y)),
                  image.width() * static_cast<long>(sizeof(T)));
    }
    return out.str();
}

}  // namespace

Operands::Operands(const Shape& shape)
    : bytes(someImage<Byte>(shape, 1)),
      words(someImage<Word>(shape, 2)),
      doubles(someImage<double>(shape, 3)),
      other(4, 8),
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

State stateOf(Operands& operands) {
    State state;
    visitOperands(operands,
                  [&](const std::string& name, auto& object) { state[name] = pictureOf(object); });
    return state;
}

std::set<std::string> changed(const State& before, const State& after) {
    std::set<std::string> names;
    for (const auto& [name, picture] : before) {
        if (after.at(name) != picture) names.insert(name);
    }
    return names;
}

}  // namespace faults
