// Filters the tiles of a picture in several threads: many_threads print.png tones.png
//
// There are no locks and there is no set-up: a filter is shared by all threads, and each thread has
// its own buffers. What comes out does not depend on who did what.
#include <filt/freqfilt.h>

#include <algorithm>
#include <atomic>
#include <iostream>
#include <thread>
#include <vector>

#include "picture.h"
#include "program.h"

namespace {

constexpr long kSide = 64;

/// One tile of `from`, filtered, to the same place of `to`. Windows are views: nothing is copied on
/// the way in.
void filterTile(const Image& from, const mvFrequencyFilter& filter, long index, Image& to) {
    const long columns = from.width() / kSide;
    const long x = kSide * (index % columns), y = kSide * (index / columns);
    mvFrequencyBuffer spectrum;
    Image tile = from.window(x, y, kSide, kSide);
    tile.offset(0, 0);
    mfForwardFFT(tile, spectrum);
    filter.apply(spectrum);
    Image result;
    mfInverseFFT(spectrum, result, false, true);
    result.offset(x, y);
    mfPelCopy(result, to);
}

Image filtered(const Image& picture, const mvFrequencyFilter& filter, unsigned threads) {
    const long tiles = (picture.width() / kSide) * (picture.height() / kSide);
    Image result(picture.width(), picture.height());
    std::atomic<long> next = 0;
    {
        std::vector<std::jthread> crew;
        for (unsigned i = 0; i < threads; ++i) {
            crew.emplace_back([&] {
                for (long tile = next++; tile < tiles; tile = next++) {
                    filterTile(picture, filter, tile, result);
                }
            });
        }
    }  // all have joined
    return result;
}

bool same(const Image& a, const Image& b) {
    for (long y = 0; y < a.height(); ++y) {
        if (!std::equal(a.pointToRow(y), a.pointToRow(y) + a.width(), b.pointToRow(y))) {
            return false;
        }
    }
    return true;
}

void run(char** argv) {
    const Image picture = readPicture(argv[1]);
    const mvFrequencyFilterBandReject filter(0.02, 0.05, 0.24, {kSide, kSide}, 1);

    const Image alone = filtered(picture, filter, 1);
    const Image together = filtered(picture, filter, 4);
    writePicture(argv[2], together);
    std::cout << "four threads and one: " << (same(alone, together) ? "the same" : "DIFFERENT")
              << " bits\n";
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "print.png tones.png", run);
}
