// The library as the page's worker calls it.
#include <emscripten/bind.h>
#include <emscripten/val.h>
#include <suggest/peaks.h>
#include <suggest/suggest.h>
#include <suggest/windowed_spectrum.h>

#include <algorithm>
#include <limits>

#include "answers.h"
#include "session.h"
#include "tools/failure.h"
#include "tools/logarithmic_pels.h"
#include "wishes.h"

using emscripten::val;

namespace {

// The grey levels as the engine of the proposals takes them.
template <class T>
mvPelBuffer<double> greyLevels(const PictureOf<T>& picture) {
    const mvPelBuffer<T>& pels = picture.first();
    mvPelBuffer<double> levels(pels.width(), pels.height());
    for (long y = 0; y < pels.height(); ++y) {
        std::copy_n(pels.pointToRow(y), pels.width(), levels.pointToRow(y));
    }
    return levels;
}

template <class T>
mvSuggestions suggestionsFor(const PictureOf<T>& picture, const val& progress) {
    mvSuggestOptions options;
    options.white = std::numeric_limits<T>::max();
    options.progress = [&](double part) { progress(part); };
    return mfSuggest({greyLevels(picture)}, options);
}

// All that the worker keeps. Every call gives an object; one that fails has an `error`.
class Engine {
  public:
    val setPicture(const val& samples, long width, long height, long channels) {
        return guarded([&] {
            drop();
            picture_ = pictureOf(samples, width, height, channels);
            return std::visit([](const auto& picture) { return shown(picture.first()); }, picture_);
        });
    }

    val setKernel(const val& samples, long width, long height, long channels) {
        return guarded([&] {
            kernel_.emplace("The weights", pictureOf(samples, width, height, channels));
            return val::object();
        });
    }

    // The magnitudes of the picture's frequencies, and what they look like.
    val spectrum() const {
        return guarded([&] {
            const mvPelBuffer<double> magnitudes = std::visit(
                [](const auto& picture) { return windowedSpectrum(picture.first()); }, picture_);
            val result = shown(logarithmicPels(magnitudes));
            result.set("magnitudes", numbersOf(magnitudes));
            return result;
        });
    }

    // Builds the filters and cuts the picture; gives the plane and the tiles.
    val begin(const val& settings) {
        return guarded([&] {
            const ResultWish wish = wishOf(settings);
            const ChainRecipe recipe = recipeOf(filtersOf(settings), kernel_);
            drop();
            std::visit([&](const auto& picture) { prepare(picture.first(), recipe, wish); },
                       picture_);
            return plan();
        });
    }

    val work(long tile) {
        return guarded([&] {
            std::visit([=](auto& work) { work->work(tile); }, work_);
            return val::object();
        });
    }

    // The result, or what there is of it.
    val result() const {
        return guarded([&] {
            return std::visit(
                [](const auto& work) {
                    return work->isWide() ? shown(work->words()) : shown(work->bytes());
                },
                work_);
        });
    }

    val gains(long side) const {
        return guarded([&] { return onePicture(shownGains(filters_.list(), side)); });
    }

    val suggest(const val& progress) const {
        return guarded([&] {
            return shown(std::visit(
                [&](const auto& picture) { return suggestionsFor(picture, progress); }, picture_));
        });
    }

    val peaks() const {
        return guarded([&] {
            return shown(std::visit(
                [](const auto& picture) { return mfPeaks(greyLevels(picture)); }, picture_));
        });
    }

    val archive() const {
        return guarded([&] {
            val result = val::object();
            result.set("bytes", bytesOf(archiveOf(filters_.list())));
            return result;
        });
    }

  private:
    template <class Steps>
    static val guarded(Steps steps) {
        try {
            return steps();
        } catch (...) {
            val result = val::object();
            result.set("error", reportOfException().text);
            return result;
        }
    }

    template <class T>
    static Picture pictureFrom(const val& samples, long width, long height, long channels) {
        const std::vector<T> values = emscripten::convertJSArrayToNumberVector<T>(samples);
        return PictureOf<T>{{greyPicture(values.data(), width, height, channels)}};
    }

    static Picture pictureOf(const val& samples, long width, long height, long channels) {
        const bool isWide = samples["BYTES_PER_ELEMENT"].as<int>() == 2;
        const auto from = isWide ? pictureFrom<unsigned short> : pictureFrom<unsigned char>;
        return from(samples, width, height, channels);
    }

    // The work refers to picture and filters: it goes first.
    void drop() {
        work_ = std::unique_ptr<TileWork<unsigned char>>();
        filters_ = {};
    }

    template <class T>
    void prepare(const mvPelBuffer<T>& pels, const ChainRecipe& recipe, const ResultWish& wish) {
        const PlaneOptions options{.border = wish.border};
        const mvPair<long> plane = choosePlane(pels, needsOf(recipe), options).plane;
        for (const FilterRecipe& filter : recipe) filters_.add(filter.make(plane));
        work_ = std::make_unique<TileWork<T>>(pels, filters_.list(), wish);
    }

    val plan() const {
        val areas = val::array();
        const auto add = [&](const auto& work) {
            for (long at = 0; at < work->tiles(); ++at) {
                const PelArea part = work->area(at);
                val area = val::object();
                area.set("x", part.x);
                area.set("y", part.y);
                area.set("width", part.width);
                area.set("height", part.height);
                areas.call<void>("push", area);
            }
        };
        std::visit(add, work_);
        const mvPair<long> plane = mfFilterPlane(filters_.list());
        val result = val::object();
        result.set("planeWidth", plane.x);
        result.set("planeHeight", plane.y);
        result.set("tiles", areas);
        return result;
    }

    Picture picture_;
    std::optional<Kernel> kernel_;
    mvFilterChain filters_;
    std::variant<std::unique_ptr<TileWork<unsigned char>>,
                 std::unique_ptr<TileWork<unsigned short>>>
        work_;
};

}  // namespace

EMSCRIPTEN_BINDINGS(mvfreq) {
    emscripten::class_<Engine>("Engine")
        .constructor<>()
        .function("setPicture", &Engine::setPicture)
        .function("setKernel", &Engine::setKernel)
        .function("spectrum", &Engine::spectrum)
        .function("begin", &Engine::begin)
        .function("work", &Engine::work)
        .function("result", &Engine::result)
        .function("gains", &Engine::gains)
        .function("suggest", &Engine::suggest)
        .function("peaks", &Engine::peaks)
        .function("archive", &Engine::archive);
}
