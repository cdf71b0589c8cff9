// Keeps a recipe of filters in a file: archive_recipe recipe.mva responses.png
//
// A file written here loads on every machine, and the loaded filters have the same bits.
#include <filt/freqfilt.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <memory>
#include <numbers>
#include <vector>

#include "picture.h"
#include "program.h"

namespace {

constexpr long kSide = 128;

using Recipe = std::vector<std::unique_ptr<mvFrequencyFilter>>;

Recipe tuned() {
    const mvPair<long> size(kSide, kSide);
    const mvRadian angle(std::numbers::pi / 6);
    Recipe recipe;
    recipe.push_back(std::make_unique<mvFrequencyFilterBandPass>(0.03, 0.02, 0.25, size, 0));
    recipe.push_back(std::make_unique<mvFrequencyFilterGabor>(mvPair(0.03, 0.06), mvPair(0.02, 0.0),
                                                              angle, 0.25, size, 0));
    recipe.push_back(std::make_unique<mvFrequencyFilterGaborReject>(
        mvPair(0.03, 0.06), mvPair(0.02, 0.0), angle, 0.25, size, 0));
    return recipe;
}

void save(const Recipe& recipe, const char* path) {
    std::ofstream file(path, std::ios::binary);
    mvArchive archive(file);
    long count = std::ssize(recipe);
    archive || count;
    for (const auto& filter : recipe) {
        mvFrequencyFilter* pointer = filter.get();
        archive || pointer;  // the name of the class, then the object
    }
}

Recipe load(const char* path) {
    std::ifstream file(path, std::ios::binary);
    mvArchive archive(file);
    long count = 0;
    archive || count;
    Recipe recipe;
    for (long i = 0; i < count; ++i) recipe.push_back(mfLoad<mvFrequencyFilter>(archive));
    return recipe;
}

/// What a filter does to each frequency: a plane of ones, filtered, DC in the middle.
mvPelBuffer<double> response(const mvFrequencyFilter& filter) {
    mvFrequencyBuffer ones(kSide, kSide);
    for (long y = 0; y < kSide; ++y) {
        for (long x = 0; x < kSide; ++x) ones.putReal(x, y, 1.0, false);
    }
    filter.apply(ones);
    return ones.getRealImage(true);
}

void run(char** argv) {
    const Recipe recipe = tuned();
    save(recipe, argv[1]);
    const Recipe loaded = load(argv[1]);

    Image sheet(kSide * std::ssize(loaded), kSide);
    for (std::size_t i = 0; i < loaded.size(); ++i) {
        const mvPelBuffer<double> gains = response(*loaded[i]), before = response(*recipe[i]);
        const double* first = gains.pointToOffset();
        const bool same = std::equal(first, first + kSide * kSide, before.pointToOffset());
        std::cout << "filter " << i << (same ? " is the same\n" : " DIFFERS\n");
        Image drawn = mfFrequencyMapImage(gains, mvFrequencyDefs::eMapRange, 0.0, 1.0);
        drawn.offset(kSide * static_cast<long>(i), 0);
        mfPelCopy(drawn, sheet);
    }
    writePicture(argv[2], sheet);
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "recipe.mva responses.png", run);
}
