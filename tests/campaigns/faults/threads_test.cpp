// Many threads at once: buffers, handlers and archives of their own, filters that all share.
#include <base/archive.h>
#include <filt/fft.h>
#include <filt/freqfilt.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "support/attention.h"
#include "support/pel_images.h"
#include "support/random_planes.h"
#include "support/thrown.h"

namespace {

using Byte = unsigned char;

constexpr unsigned kThreads = 8;
constexpr int kRounds = 5;

struct SharedFilters {
    const mvPair<long> size{64, 32};
    const mvFrequencyFilterBandPass bandPass{0.05, 0.02, 0.2, size, 1};
    const mvFrequencyFilterBandReject bandReject{0.05, 0.02, 0.1, size, 1};
    const mvFrequencyFilterGabor gabor{{0.05, 0.04}, {0.01, 0.02}, mvRadian(0.5), 0.2, size, 1};
    const mvFrequencyFilterGaborReject gaborReject{{0.05, 0.04}, {0.01, 0.02}, mvRadian(2.0),
                                                   0.1,          size,         1};
    const mvFrequencyFilterImage image{mvFrequencyBuffer(size.x, size.y)};

    std::vector<const mvFrequencyFilter*> all() const {
        return {&bandPass, &bandReject, &gabor, &gaborReject, &image};
    }
};

// What one thread sees of all it did.
using Work = std::function<std::string(unsigned seed)>;

void runAtOnce(const std::function<void(unsigned seed)>& work) {
    std::vector<std::thread> threads;
    for (unsigned seed = 0; seed < kThreads; ++seed) threads.emplace_back(work, seed);
    for (std::thread& thread : threads) thread.join();
}

void expectTheSameOnManyThreads(const Work& work) {
    std::vector<std::string> expected, actual(kThreads);
    for (unsigned seed = 0; seed < kThreads; ++seed) expected.push_back(work(seed));
    for (int round = 0; round < kRounds; ++round) {
        runAtOnce([&](unsigned seed) { actual[seed] = work(seed); });
        for (unsigned seed = 0; seed < kThreads; ++seed) {
            EXPECT_TRUE(actual[seed] == expected[seed]) << "thread " << seed;
        }
    }
}

template <class Object>
std::string recordOf(Object& object) {
    std::ostringstream out;
    mvArchive ar(out);
    ar || object;
    return out.str();
}

mvPelBuffer<Byte> imageOfThread(unsigned seed) {
    return support::pelBufferOf(support::randomImage<Byte>(60, 30, seed));
}

TEST(Threads, FilterBuffersOfTheirOwnWithSharedFilters) {
    const SharedFilters filters;
    expectTheSameOnManyThreads([&](unsigned seed) {
        std::string seen;
        for (const mvFrequencyFilter* filter : filters.all()) {
            mvFrequencyBuffer spectrum, filtered;
            mfForwardFFT<Byte>(imageOfThread(seed), spectrum);
            filter->apply(spectrum, filtered);
            filter->apply(spectrum);
            const std::unique_ptr<mvFrequencyFilter> copy(filter->clone());
            copy->apply(filtered);
            mfFrequencyMultiply(spectrum, filtered);
            mvPelBuffer<Byte> pels;
            mfInverseFFT<Byte>(filtered, pels, true, false);
            const auto image = support::imageOf(pels);
            seen += recordOf(filtered) + std::string(image.pels.begin(), image.pels.end());
        }
        return seen;
    });
}

// Every call has threads of its own, too; all share the filters and the picture.
TEST(Threads, FilterPicturesOnThreadsOfTheCall) {
    const SharedFilters filters;
    const mvPelBuffer<Byte> picture = support::pelBufferOf(support::randomImage<Byte>(200, 90, 1));
    expectTheSameOnManyThreads([&](unsigned seed) {
        mvFilterImageOptions options{.margin = {4, 3}, .threads = 1 + static_cast<int>(seed % 4)};
        options.rescale = seed % 2 == 0;
        std::string seen;
        for (const mvFrequencyFilter* filter : filters.all()) {
            mvPelBuffer<Byte> out;
            mfFilterImage(picture, *filter, out, options);
            const auto image = support::imageOf(out);
            seen.append(image.pels.begin(), image.pels.end());
        }
        return seen;
    });
}

// Stopped on the way by the handler of each calling thread, also while others work on.
TEST(Threads, StopTheirOwnPicturesAlone) {
    const SharedFilters filters;
    expectTheSameOnManyThreads([&](unsigned seed) {
        const support::AttentionCounter attention(seed % 2 == 0 ? 0 : static_cast<long>(seed));
        mvPelBuffer<Byte> picture(200, 90), out;
        const std::string thrown = support::thrownBy([&] {
            mfFilterImage(picture, filters.bandPass, out, {.margin = {4, 3}, .threads = 3});
        });
        return thrown + (out.isBound() ? ", bound" : ", unbound");
    });
}

TEST(Threads, StoreAndLoadInArchivesOfTheirOwn) {
    expectTheSameOnManyThreads([](unsigned seed) {
        mvFrequencyFilterBandPass filter(0.05, 0.02, 0.05 * seed, mvPair<long>(16, 16), 1);
        mvPersistent* pointer = &filter;
        const std::string record = recordOf(pointer);
        std::istringstream in(record);
        mvArchive ar(in);
        const std::unique_ptr<mvFrequencyFilter> loaded = mfLoad<mvFrequencyFilter>(ar);
        mvFrequencyBuffer buffer(16, 16);
        buffer.put(1, 1, {1, 2}, true);
        loaded->apply(buffer);
        return record + recordOf(buffer) + recordOf(*loaded);
    });
}

TEST(Threads, MayStoreOneFilterAtOnceInArchivesOfTheirOwn) {
    const SharedFilters filters;
    expectTheSameOnManyThreads([&](unsigned) {
        std::string seen;
        for (const mvFrequencyFilter* filter : filters.all()) seen += recordOf(*filter);
        return seen;
    });
}

TEST(Threads, AreInterruptedByTheirOwnHandlersAlone) {
    expectTheSameOnManyThreads([](unsigned seed) {
        const support::AttentionCounter attention(seed % 2 == 0 ? 0 : static_cast<long>(seed));
        mvFrequencyBuffer spectrum;
        const std::string thrown =
            support::thrownBy([&] { mfForwardFFT<Byte>(imageOfThread(seed), spectrum); });
        EXPECT_EQ(thrown, seed % 2 == 0 ? "nothing" : "status 77");
        return thrown + " after " + std::to_string(attention.polls());
    });
}

TEST(Threads, MakeErrorsOfTheRegistryAtOnce) {
    expectTheSameOnManyThreads([](unsigned seed) {
        mvFrequencyDefs::InvalidSize error(std::to_string(seed).c_str());
        mvPersistent* pointer = &error;
        std::istringstream in(recordOf(pointer));
        mvArchive ar(in);
        return std::string(mfLoad<mvFrequencyDefs::Errors>(ar)->message());
    });
}

}  // namespace
