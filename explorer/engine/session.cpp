// What the page asks of the library: one picture, some filters, one result.
#include "session.h"

#include <base/archive.h>

#include <algorithm>
#include <sstream>

#include "tools/failure.h"
#include "tools/filter_gains.h"
#include "tools/luma.h"
#include "tools/step_recipe.h"

namespace {

// The largest of each block of `step` by `step`, so that no narrow lobe falls between two of them.
mvPelBuffer<double> largestOfBlocks(const mvPelBuffer_const<double>& gains, mvPair<long> step) {
    mvPelBuffer<double> blocks(gains.width() / step.x, gains.height() / step.y);
    for (long y = 0; y < gains.height(); ++y) {
        const double* row = gains.pointToRow(y);
        double* to = blocks.pointToRow(y / step.y);
        for (long x = 0; x < gains.width(); ++x) {
            to[x / step.x] = std::max(to[x / step.x], row[x]);
        }
    }
    return blocks;
}

}  // namespace

template <class T>
mvPelBuffer<T> greyPicture(const T* samples, long width, long height, long channels) {
    mvPelBuffer<T> picture(width, height);
    for (long y = 0; y < height; ++y) {
        T* row = picture.pointToRow(y);
        for (long x = 0; x < width; ++x, samples += channels) {
            row[x] = channels < 3 ? *samples : luma(samples);
        }
    }
    return picture;
}

template mvPelBuffer<unsigned char> greyPicture(const unsigned char*, long, long, long);
template mvPelBuffer<unsigned short> greyPicture(const unsigned short*, long, long, long);

ChainRecipe recipeOf(const std::vector<FilterSettings>& settings,
                     const std::optional<Kernel>& kernel) {
    ChainRecipe chain;
    for (const FilterSettings& filter : settings) {
        if (filter.isConvolution) {
            if (!kernel) throw BadArgument("Choose the picture of the weights");
            chain.push_back(recipeOf(*kernel));
            continue;
        }
        const ChainRecipe more = recipeOf(filter.step, "DC radius");
        chain.insert(chain.end(), more.begin(), more.end());
    }
    return chain;
}

mvPelBuffer<unsigned char> shownGains(mvFilterList filters, long side) {
    const mvPair<long> plane = mfFilterPlane(filters);
    const mvPair<long> step(std::max(plane.x / side, 1l), std::max(plane.y / side, 1l));
    return gainPels(largestOfBlocks(gainsOf(filters), step));
}

std::string archiveOf(mvFilterList filters) {
    std::ostringstream bytes;
    mvArchive archive(bytes);
    for (const mvFrequencyFilter* filter : filters) archive.storePointer(filter);
    return bytes.str();
}

mvPelBuffer<unsigned char> halved(const mvPelBuffer_const<unsigned char>& picture) {
    mvPelBuffer<unsigned char> half((picture.width() + 1) / 2, (picture.height() + 1) / 2);
    for (long y = 0; y < half.height(); ++y) {
        const unsigned char* upper = picture.pointToRow(2 * y);
        const unsigned char* lower = picture.pointToRow(std::min(2 * y + 1, picture.height() - 1));
        unsigned char* to = half.pointToRow(y);
        for (long x = 0; x < picture.width() / 2; ++x) {
            to[x] = static_cast<unsigned char>(
                (upper[2 * x] + upper[2 * x + 1] + lower[2 * x] + lower[2 * x + 1] + 2) / 4);
        }
        if (picture.width() % 2 == 0) continue;
        const long last = picture.width() - 1;
        to[last / 2] = static_cast<unsigned char>((upper[last] + lower[last] + 1) / 2);
    }
    return half;
}

mvPelBuffer<unsigned char> upperBytes(const mvPelBuffer_const<unsigned short>& picture) {
    mvPelBuffer<unsigned char> bytes(picture.width(), picture.height());
    for (long y = 0; y < picture.height(); ++y) {
        const unsigned short* row = picture.pointToRow(y);
        std::transform(row, row + picture.width(), bytes.pointToRow(y),
                       [](unsigned short pel) { return static_cast<unsigned char>(pel >> 8); });
    }
    return bytes;
}
