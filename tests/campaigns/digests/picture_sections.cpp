// The picture call with filters from archives, and its way without a plane on every path.
#include <base/archive.h>
#include <filt/fft/internal/kernel/filtered_plane.h>
#include <filt/freqfilt.h>
#include <filt/freqfilt/internal/half_filters.h>

#include <algorithm>
#include <memory>
#include <type_traits>

#include "campaigns/digests/digest.h"
#include "campaigns/digests/operands.h"
#include "campaigns/digests/sections.h"
#include "support/archive_bytes.h"

namespace digest {

namespace {

using Byte = unsigned char;
using Word = unsigned short;

template <class Filter>
Filter loaded(const archive::Record& record) {
    Filter filter;
    support::Loading(record.bytes()).archive() || filter;
    return filter;
}

mvPair<std::int32_t> makePlane(Numbers& numbers, long least) {
    const mvPair<long> logs = numbers.pair(least, 6);
    return {1 << logs.x, 1 << logs.y};
}

template <class T>
void addPlaneless(Digest& digest, Numbers& numbers, const mvi::SpectrumFilter& filter,
                  const mvi::KernelPath& path) {
    const mvPair<long> size = filter.size();
    const auto image = makeImage<T>(numbers, size.x, numbers.between(1, size.y), false);
    mvi::FilteredPlane plane(filter, path);
    plane.forward<T>(image.height(), numbers.between(1, size.x),
                     [&](long y) { return image.pointToRow(y); });
    const auto count = static_cast<std::size_t>(size.x * size.y);
    if (numbers.coin()) {
        std::vector<float> squares(count);
        plane.inverse<float>({mvi::PlaneResult::squares, {0, 0}, size, squares.data(), size.x});
        for (const float square : squares) digest.add(square);
    } else {
        std::vector<double> magnitudes(count);
        plane.inverse<double>(
            {mvi::PlaneResult::magnitudes, {0, 0}, size, magnitudes.data(), size.x});
        // The digest is of what the transform gives before it is scaled.
        const double scale = mvi::inverseScale(size);
        for (const double magnitude : magnitudes) digest.add(static_cast<float>(magnitude / scale));
    }
}

// A filter may have no such form, or leave nothing.
void addPlanelessFilter(Digest& digest, Numbers& numbers, const mvFrequencyFilter& filter,
                        const mvi::KernelPath& path) {
    const std::unique_ptr<const mvi::SpectrumFilter> half = mvi::halfFilterOf(filter, false);
    const bool leavesAny = half && !half->rows().empty();
    digest.add(static_cast<Byte>(leavesAny));
    if (!leavesAny) return;
    addPlaneless<Byte>(digest, numbers, *half, path);
    addPlaneless<Word>(digest, numbers, *half, path);
    addPlaneless<double>(digest, numbers, *half, path);
}

void addPlanelessCase(Digest& digest, Numbers& numbers, const mvi::KernelPath& path) {
    const mvPair<std::int32_t> plane = makePlane(numbers, 4);
    const archive::Record ring = makeRing(numbers, plane).record();
    const archive::Record lobe = makeLobe(numbers, plane).record();
    const auto addFilter = [&](const mvFrequencyFilter& filter) {
        addPlanelessFilter(digest, numbers, filter, path);
    };
    addFilter(loaded<mvFrequencyFilterBandPass>(ring));
    addFilter(loaded<mvFrequencyFilterBandReject>(ring));
    addFilter(loaded<mvFrequencyFilterGabor>(lobe));
    addFilter(loaded<mvFrequencyFilterGaborReject>(lobe));
    addFilter(mvFrequencyFilterImage(makeBuffer(numbers, plane.x, plane.y)));
}

template <class U>
mvFilterImageOptions makeOptions(Numbers& numbers, mvPair<std::int32_t> plane) {
    mvFilterImageOptions options;
    options.border = numbers.coin() ? mvBorder::mirror : mvBorder::zero;
    const bool second = numbers.coin();
    if (std::is_same_v<U, double> && second) options.result = mvFilterResult::real;
    options.rescale = !std::is_same_v<U, double> && second;
    options.margin.x = numbers.between(-1, (plane.x - 1) / 2);
    options.margin.y = numbers.between(-1, (plane.y - 1) / 2);
    options.threads = static_cast<int>(numbers.between(1, 3));
    return options;
}

template <class T, class U>
void addPicture(Digest& digest, Numbers& numbers, const mvFrequencyFilter& filter,
                mvPair<std::int32_t> plane) {
    const mvPair<long> size = numbers.pair(1, 90);
    const auto image = makeImage<T>(numbers, size.x, size.y, numbers.coin());
    mvPelBuffer<U> out;
    mfFilterImage(image, filter, out, makeOptions<U>(numbers, plane));
    add(digest, out);
}

void addReach(Digest& digest, const mvFrequencyFilter& filter) {
    const mvPair<long> reach = mfFilterReach(filter);
    digest.add(static_cast<std::uint64_t>(reach.x), 8);
    digest.add(static_cast<std::uint64_t>(reach.y), 8);
}

template <class T, class U>
void addPictures(Digest& digest, Numbers& numbers) {
    const mvPair<std::int32_t> plane = makePlane(numbers, 2);
    const archive::Record ring = makeRing(numbers, plane).record();
    const archive::Record lobe = makeLobe(numbers, plane).record();
    const auto addFilter = [&](const mvFrequencyFilter& filter) {
        addReach(digest, filter);
        addPicture<T, U>(digest, numbers, filter, plane);
    };
    addFilter(loaded<mvFrequencyFilterBandPass>(ring));
    addFilter(loaded<mvFrequencyFilterBandReject>(ring));
    addFilter(loaded<mvFrequencyFilterGabor>(lobe));
    addFilter(loaded<mvFrequencyFilterGaborReject>(lobe));
    addFilter(mvFrequencyFilterImage(makeBuffer(numbers, plane.x, plane.y)));
}

}  // namespace

std::vector<Section> planelessSections() {
    std::vector<Section> sections;
    for (const mvi::KernelPath* path : mvi::KernelPathList()) {
        if (!path->isSupported()) continue;
        sections.push_back(sectionOf(
            std::string("pictures without a plane, ") + path->name, 200,
            [&](Digest& digest, Numbers& numbers) { addPlanelessCase(digest, numbers, *path); }));
    }
    return sections;
}

std::vector<Section> pictureSections() {
    return {
        sectionOf("pictures of bytes", 401, addPictures<Byte, Byte>),
        sectionOf("pictures of words", 402, addPictures<Word, Word>),
        sectionOf("pictures of doubles", 403, addPictures<double, double>),
        sectionOf("pictures of bytes to doubles", 201, addPictures<Byte, double>),
        sectionOf("pictures of words to bytes", 202, addPictures<Word, Byte>),
        sectionOf("pictures of doubles to words", 203, addPictures<double, Word>),
    };
}

}  // namespace digest
