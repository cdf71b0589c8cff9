// Everything that can be done with what came out of an archive. None of it may do harm.
#include "archive/use.h"

#include <memory>
#include <stdexcept>
#include <utility>

#include "archive/loading.h"
#include "support/buffer_record.h"

namespace archive {
namespace {

constexpr long kLargestImage = 1L << 20;

template <class Call>
void tolerate(Call call) {
    try {
        call();
    } catch (const mvException&) {
    } catch (const std::length_error&) {
    }
}

// What was stored loads again, and is stored the same.
template <class T>
void storeAgain(T& object) {
    tolerate([&] {
        const std::string bytes = stored(object);
        T again;
        load(bytes, again);
        EXPECT_EQ(stored(again), bytes);
    });
}

void readElements(mvFrequencyBuffer& buffer) {
    for (const bool centred : {false, true}) {
        for (const long at : {-1L, 0L, 1L, 1000L}) {
            tolerate([&] { buffer.get(at, 0, centred); });
            tolerate([&] { buffer.putReal(0, at, 1.0, centred); });
        }
        tolerate([&] { buffer.get(buffer.width() - 1, buffer.height() - 1, centred); });
        tolerate([&] { buffer.get(-buffer.width() / 2, -buffer.height() / 2, centred); });
    }
}

void readImages(const mvFrequencyBuffer& buffer) {
    for (const bool centred : {false, true}) {
        tolerate([&] { buffer.getRealImage(centred); });
        tolerate([&] { buffer.getPhaseImage(centred); });
        tolerate([&] {
            mfFrequencyMapImage(buffer.getMagnitudeImage(centred), mvFrequencyDefs::eMapLog, 0, 1);
        });
    }
}

template <class Pel>
void invert(mvFrequencyBuffer buffer) {
    const mvFrequencyBuffer& constant = buffer;
    mvPelBuffer<Pel> bound(3, 3);
    mvPelBuffer<double> angle;
    mvPelBuffer<unsigned char> quadrant;
    tolerate([&] { mfInverseFFT(constant, bound, true); });
    tolerate([&] {
        mvPelBuffer<Pel> unbound;
        mfInverseFFTAngle(constant, unbound, angle, false);
    });
    tolerate([&] { mfInverseFFTQuadrant(buffer, bound, quadrant, true, true); });
    tolerate([&] { mfInverseFFT(buffer, bound, false, true); });
}

void transform(const mvFrequencyBuffer& buffer) {
    mvFrequencyBuffer out;
    tolerate([&] { mfForwardFFT(buffer, out); });
    tolerate([&] { mfInverseFFT(buffer, out); });
    mvPelBuffer<double> real;
    mvPelBuffer<double> imaginary;
    tolerate([&] { mfInverseFFT(buffer, real, imaginary); });
    tolerate([&] { mf_ComputeAngleImage(buffer, real); });
    invert<unsigned char>(buffer);
    invert<unsigned short>(buffer);
    invert<double>(buffer);
}

void combine(const mvFrequencyBuffer& buffer) {
    mvFrequencyBuffer result;
    tolerate([&] { mfFrequencyAdd(buffer, buffer, result); });
    tolerate([&] { mfFrequencySubtract(buffer, result, result); });
    tolerate([&] { mfFrequencyMultiply(buffer, result); });
    tolerate([&] { mfFrequencyConjugate(buffer, result); });
    tolerate([&] { const mvFrequencyBuffer reduced(buffer, 2, 2); });
    tolerate([&] { mvFrequencyFilterImage(buffer).apply(buffer, result); });
}

// A buffer of the given padded size, as an archive can make it; without data when it is too large.
mvFrequencyBuffer bufferOfSize(long width, long height) {
    if (width < 1 || height < 1 || width > 300 || height > 300) return {};
    return support::loaded(
        support::recordOf(static_cast<std::int32_t>(width), static_cast<std::int32_t>(height)));
}

void applyTo(mvFrequencyFilter& filter, mvPair<long> size) {
    mvFrequencyBuffer buffer = bufferOfSize(size.x, size.y);
    mvFrequencyBuffer result;
    tolerate([&] { filter.apply(buffer, result); });
    tolerate([&] { filter.apply(buffer); });
    tolerate([&] { filter.apply(buffer, buffer); });
    transform(result);
    mvFrequencyBuffer other(16, 2);
    tolerate([&] { filter.apply(other); });
}

template <class F>
void useParametric(F& filter) {
    tolerate([&] { applyTo(filter, filter.size()); });
    F copy(filter);
    storeAgain(filter);
    tolerate([&] { EXPECT_EQ(copy.supportWidth(), filter.supportWidth()); });
    static_cast<void>(copy == filter);
    tolerate([&] { copy.frequency(0.125); });
    tolerate([&] { copy.size(mvPair<long>(16, 16)); });
    tolerate([&] { applyTo(copy, copy.size()); });
    copy = filter;
    const F moved(std::move(copy));
    static_cast<void>(moved == filter);
}

void useImage(mvFrequencyFilterImage& filter) {
    tolerate([&] { applyTo(filter, mvPair<long>(filter.supportWidth(), filter.supportHeight())); });
    mvFrequencyFilterImage copy(filter);
    storeAgain(filter);
    static_cast<void>(copy == filter);
    copy.setImage(mvFrequencyBuffer(4, 4));
    applyTo(copy, mvPair<long>(4, 4));
}

template <class F>
bool useAs(mvFrequencyFilter& filter) {
    F* typed = dynamic_cast<F*>(&filter);
    if (typed) useParametric(*typed);
    return typed != nullptr;
}

}  // namespace

void use(mvFrequencyBuffer& buffer) {
    readElements(buffer);
    tolerate([&] {
        const bool fits = buffer.width() > 0 && buffer.height() > 0 &&
                          buffer.width() <= kLargestImage / buffer.height();
        if (fits) readImages(buffer);
    });
    transform(buffer);
    combine(buffer);
    mvFrequencyBuffer copy(buffer);
    static_cast<void>(copy == buffer);
    mvFrequencyBuffer assigned(4, 4);
    assigned = buffer;
    storeAgain(buffer);
    tolerate([&] { mfInverseFFT(copy, assigned, true); });
}

void use(mvFrequencyFilter& filter) {
    filter.isInitialized();
    const std::unique_ptr<mvFrequencyFilter> clone(filter.clone());
    if (auto* image = dynamic_cast<mvFrequencyFilterImage*>(&filter)) return useImage(*image);
    const bool used =
        useAs<mvFrequencyFilterBandPass>(filter) || useAs<mvFrequencyFilterBandReject>(filter) ||
        useAs<mvFrequencyFilterGabor>(filter) || useAs<mvFrequencyFilterGaborReject>(filter);
    EXPECT_TRUE(used);
}

void use(mvPersistent& object) {
    if (auto* filter = dynamic_cast<mvFrequencyFilter*>(&object)) return use(*filter);
    if (auto* error = dynamic_cast<mvFrequencyDefs::Errors*>(&object)) {
        error->errorNumber();
        std::ostringstream out;
        out << *error;
    }
}

}  // namespace archive
