// Everything that can be done with what came out of an archive. None of it may do harm.
#include "support/use.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

#include "support/buffer_record.h"
#include "support/loading.h"

namespace archive {
namespace {

template <class Call>
void tolerate(Call call) {
    try {
        call();
    } catch (const mvException&) {
    } catch (const std::length_error&) {
    } catch (const std::bad_alloc&) {
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

// Elements of the plane; none without data.
long areaOf(const mvFrequencyBuffer& buffer) {
    long area = 0;
    tolerate([&] { area = buffer.width() * buffer.height(); });
    return area;
}

long areaOf(const mvFrequencyFilterImage& filter) {
    long area = 0;
    tolerate([&] { area = filter.supportWidth() * filter.supportHeight(); });
    return area;
}

template <class Parameters>
struct Response : mvResponseFilter<Parameters> {
    static constexpr auto kMember = &Response::response_;
};

// Gains of the filter; none without response.
template <class Parameters>
long areaOf(const mvResponseFilter<Parameters>& filter) {
    const mvFilterResponse& response = filter.*Response<Parameters>::kMember;
    return response.isSet() ? static_cast<long>(response.size()) : 0;
}

double reachOf(const mvRingFilter& filter) {
    return filter.sigma() + filter.plateau();
}

double reachOf(mvLobeFilter& filter) {
    return std::max(filter.sigma().x + filter.plateau().x, filter.sigma().y + filter.plateau().y);
}

// Whether a new response is small, or so large that it is refused.
template <class F>
bool isRebuiltSoon(F& filter, mvPair<long> size, long largestArea) {
    const double bins = 16 * reachOf(filter) * static_cast<double>(std::max(size.x, size.y));
    const double largest = 8 * std::sqrt(static_cast<double>(largestArea));
    return !(bins > largest) || bins > 1e12;
}

// A buffer of the given padded size, as an archive can make it; without data when it is too large.
mvFrequencyBuffer bufferOfSize(long width, long height, long largestArea) {
    if (width < 1 || height < 1 || width > 300 || height > 300) return {};
    if (width * height > largestArea) return {};
    return support::loaded(
        support::recordOf(static_cast<std::int32_t>(width), static_cast<std::int32_t>(height)));
}

void applyTo(mvFrequencyFilter& filter, mvPair<long> size, long largestArea) {
    mvFrequencyBuffer buffer = bufferOfSize(size.x, size.y, largestArea);
    mvFrequencyBuffer result;
    tolerate([&] { filter.apply(buffer, result); });
    tolerate([&] { filter.apply(buffer); });
    tolerate([&] { filter.apply(buffer, buffer); });
    transform(result);
    mvFrequencyBuffer other(16, 2);
    tolerate([&] { filter.apply(other); });
}

template <class F>
void setParameters(F& filter, long largestArea) {
    tolerate([&] {
        if (isRebuiltSoon(filter, filter.size(), largestArea)) filter.frequency(0.125);
    });
    const mvPair<long> size(16, 16);
    tolerate([&] {
        if (isRebuiltSoon(filter, size, largestArea)) filter.size(size);
    });
}

template <class F>
void useParametric(F& filter, long largestArea) {
    tolerate([&] { applyTo(filter, filter.size(), largestArea); });
    F copy(filter);
    storeAgain(filter);
    tolerate([&] { EXPECT_EQ(copy.supportWidth(), filter.supportWidth()); });
    static_cast<void>(copy == filter);
    setParameters(copy, largestArea);
    tolerate([&] { applyTo(copy, copy.size(), largestArea); });
    copy = filter;
    const F moved(std::move(copy));
    static_cast<void>(moved == filter);
}

void useImage(mvFrequencyFilterImage& filter, long largestArea) {
    tolerate([&] {
        const mvPair<long> size(filter.supportWidth(), filter.supportHeight());
        applyTo(filter, size, largestArea);
    });
    mvFrequencyFilterImage copy(filter);
    storeAgain(filter);
    static_cast<void>(copy == filter);
    copy.setImage(mvFrequencyBuffer(4, 4));
    applyTo(copy, mvPair<long>(4, 4), largestArea);
}

// Whether the filter is an F, which is then used unless it is large.
template <class F, class Use>
bool useAs(mvFrequencyFilter& filter, long largestArea, Use use) {
    F* typed = dynamic_cast<F*>(&filter);
    if (typed && areaOf(*typed) <= largestArea) {
        const std::unique_ptr<mvFrequencyFilter> clone(filter.clone());
        use(*typed, largestArea);
    }
    return typed != nullptr;
}

template <class F>
bool useAs(mvFrequencyFilter& filter, long largestArea) {
    return useAs<F>(filter, largestArea, useParametric<F>);
}

void useError(mvFrequencyDefs::Errors& error) {
    error.errorNumber();
    std::ostringstream out;
    out << error;
    mvPersistent* pointer = &error;
    Loading loading(stored(pointer));
    const auto copy = mfLoad<mvFrequencyDefs::Errors>(loading).release();
    EXPECT_THROW(copy->suicideAndRethrow(), mvFrequencyDefs::Errors);
}

}  // namespace

void use(mvFrequencyBuffer& buffer, long largestArea) {
    readElements(buffer);
    if (areaOf(buffer) > largestArea) return;
    readImages(buffer);
    transform(buffer);
    combine(buffer);
    mvFrequencyBuffer copy(buffer);
    static_cast<void>(copy == buffer);
    mvFrequencyBuffer assigned(4, 4);
    assigned = buffer;
    storeAgain(buffer);
    tolerate([&] { mfInverseFFT(copy, assigned, true); });
}

void use(mvFrequencyFilter& filter, long largestArea) {
    filter.isInitialized();
    const bool used = useAs<mvFrequencyFilterBandPass>(filter, largestArea) ||
                      useAs<mvFrequencyFilterBandReject>(filter, largestArea) ||
                      useAs<mvFrequencyFilterGabor>(filter, largestArea) ||
                      useAs<mvFrequencyFilterGaborReject>(filter, largestArea) ||
                      useAs<mvFrequencyFilterImage>(filter, largestArea, useImage);
    EXPECT_TRUE(used);
}

void use(mvPersistent& object, long largestArea) {
    if (auto* filter = dynamic_cast<mvFrequencyFilter*>(&object)) return use(*filter, largestArea);
    if (auto* error = dynamic_cast<mvFrequencyDefs::Errors*>(&object)) useError(*error);
}

}  // namespace archive
