// Every public operation upon a filter.
#include <algorithm>
#include <cstdint>

#include "support/buffer_record.h"
#include "support/filter_uses.h"
#include "support/use.h"

namespace archive {
namespace {

// --- How large new responses are

// How large a new response is at most.
struct Extent {
    double width, height;

    double gains() const { return width * height; }

    // Beyond the sides and the number of gains that any response may have.
    bool isRefused() const { return !(width < 1e12 && height < 1e12); }
};

Extent extentOf(const mvRingFilter& filter, mvPair<long> size) {
    const double support = 4 * filter.sigma() + filter.plateau() + 0.05;
    return {support * static_cast<double>(size.x) + 2, 32};
}

Extent extentOf(mvLobeFilter& filter, mvPair<long> size) {
    const double reach = 8 * std::max(filter.sigma().x, filter.sigma().y) +
                         2 * std::max(filter.plateau().x, filter.plateau().y) + 0.05;
    return {reach * static_cast<double>(size.x) + 2, reach * static_cast<double>(size.y) + 2};
}

// --- What there is to work on

template <class Parameters>
struct Response : mvResponseFilter<Parameters> {
    static constexpr auto member = &Response::response_;
};

// Gains of the filter; none without response.
template <class Parameters>
std::int64_t gainsOf(const mvResponseFilter<Parameters>& filter) {
    const mvFilterResponse& response = filter.*Response<Parameters>::member;
    return response.isSet() ? static_cast<std::int64_t>(response.size()) : 0;
}

std::int64_t gainsOf(const mvFrequencyFilterImage& filter) {
    std::int64_t area = 0;
    tolerate([&] { area = std::int64_t{filter.supportWidth()} * filter.supportHeight(); });
    return area;
}

template <class F>
mvPair<long> sizeOf(F& filter) {
    mvPair<long> size;
    tolerate([&] {
        if constexpr (requires { filter.size(); }) {
            size = filter.size();
        } else {
            size = {filter.supportWidth(), filter.supportHeight()};
        }
    });
    return size;
}

// A buffer of the given padded size, as an archive can make it; without data when it is too large.
// Planes up to the largest size may come with some of their floats.
mvFrequencyBuffer bufferOfSize(mvPair<long> size, long largestArea) {
    constexpr std::int64_t kMostFloats = 1 << 18, kSome = 1 << 12;
    const bool isOrdinary = size.x <= 2048 && size.y <= 2048;
    const std::int64_t area = std::int64_t{size.x} * size.y;
    if (size.x < 0 || size.y < 0 || area > largestArea) return {};
    const std::int64_t floats = isOrdinary ? std::min(2 * area, kSome) : 2 * area;
    if (floats > kMostFloats) return {};
    support::BufferRecord record;
    record.width = record.imageWidth = static_cast<std::int32_t>(size.x);
    record.height = record.imageHeight = static_cast<std::int32_t>(size.y);
    record.floats.assign(static_cast<std::size_t>(floats), 1.5F);
    return support::loaded(record);
}

// Elements of the plane that pictures go through; none when they are refused.
long planeForPictures(mvPair<long> size) {
    const bool isRefused = size.x < 1 || size.y < 1 || size.x > 2048 || size.y > 2048;
    return isRefused ? 0 : size.x * size.y;
}

// --- The filters

template <class F, std::size_t count>
void runAll(const FilterUse<F> (&uses)[count], const F& filter, const mvFrequencyBuffer& buffer,
            double elements, Steps& steps) {
    for (const FilterUse<F>& use : uses) {
        if (!steps.takesNext()) continue;
        F ownFilter(filter);
        mvFrequencyBuffer ownBuffer(buffer);
        steps.run(use.name, elements, [&] { use.call({ownFilter, ownBuffer}); });
    }
}

// How many gains the setters build at most. Where no response may have as many they build none.
template <class F>
double gainsToBuild(F& filter) {
    double gains = 0;
    tolerate([&] {
        for (const mvPair<long> size : {filter.size(), mvPair<long>(16, 16)}) {
            const Extent extent = extentOf(filter, size);
            if (!extent.isRefused()) gains = std::max(gains, extent.gains());
        }
    });
    return gains;
}

// Responses of no more gains than `most` are built; those that are refused are asked for.
template <class F>
void useParameters(F& filter, double gains, Steps& steps, double most) {
    runAll(kGetters<F>, filter, {}, 0, steps);
    runAll(kBuilding<F>, filter, {}, gains + 1e4, steps);
    const double wanted = gainsToBuild(filter);
    if (wanted <= most) runAll(kSetters<F>, filter, {}, gains + wanted, steps);
}

void useImage(const mvFrequencyFilterImage& filter, double elements, Steps& steps) {
    runAll(kImageGetters, filter, {}, 0, steps);
    runAll(kImageSetters, filter, {}, elements, steps);
}

// Whether the filter is an F, which is then used unless it is large.
template <class F>
bool useAs(mvFrequencyFilter& filter, Steps& steps, long largestArea) {
    F* const typed = dynamic_cast<F*>(&filter);
    if (typed == nullptr || gainsOf(*typed) > largestArea) return typed != nullptr;
    const auto gains = static_cast<double>(gainsOf(*typed));
    const mvFrequencyBuffer buffer = bufferOfSize(sizeOf(*typed), largestArea);
    const double elements = gains + static_cast<double>(areaOf(buffer));
    runAll(kLife<F>, *typed, buffer, gains, steps);
    runAll(kApplication<F>, *typed, buffer, elements, steps);
    // Small planes take a tile for each pel of the picture.
    constexpr double kTiles = 15;
    const long plane = planeForPictures(sizeOf(*typed));
    if (plane <= largestArea) {
        runAll(kPictures<F>, *typed, {}, gains + kTiles * static_cast<double>(plane), steps);
    }
    if constexpr (std::is_same_v<F, mvFrequencyFilterImage>) {
        useImage(*typed, elements, steps);
    } else {
        useParameters(*typed, gains, steps, static_cast<double>(largestArea));
    }
    return true;
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

void use(mvFrequencyFilter& filter, Steps& steps, long largestArea) {
    const bool used = useAs<mvFrequencyFilterBandPass>(filter, steps, largestArea) ||
                      useAs<mvFrequencyFilterBandReject>(filter, steps, largestArea) ||
                      useAs<mvFrequencyFilterGabor>(filter, steps, largestArea) ||
                      useAs<mvFrequencyFilterGaborReject>(filter, steps, largestArea) ||
                      useAs<mvFrequencyFilterImage>(filter, steps, largestArea);
    EXPECT_TRUE(used);
}

void use(mvPersistent& object, Steps& steps, long largestArea) {
    if (auto* filter = dynamic_cast<mvFrequencyFilter*>(&object)) {
        return use(*filter, steps, largestArea);
    }
    if (auto* error = dynamic_cast<mvFrequencyDefs::Errors*>(&object)) useError(*error);
}

}  // namespace archive
