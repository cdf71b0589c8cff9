// The library as the page's worker calls it.
#include <emscripten/bind.h>
#include <emscripten/val.h>
#include <suggest/suggest.h>
#include <suggest/windowed_spectrum.h>

#include <algorithm>
#include <limits>

#include "session.h"
#include "tools/failure.h"
#include "tools/logarithmic_pels.h"

using emscripten::typed_memory_view;
using emscripten::val;

namespace {

// The kinds of filters count as in mvFilterKind; this one is behind them.
constexpr int kConvolution = 4;

// A copy of pels in the page's memory, without the gaps between rows.
template <class T>
val copyOf(const mvPelBuffer_const<T>& picture, const char* type) {
    const val all = val::global(type).new_(picture.width() * picture.height());
    const bool hasGaps = picture.rowUpdate() != picture.width();
    const long rows = hasGaps ? 1 : picture.height();
    for (long y = 0; y < picture.height(); y += rows) {
        const auto count = static_cast<std::size_t>(rows * picture.width());
        all.call<void>("set", typed_memory_view(count, picture.pointToRow(y)), y * picture.width());
    }
    return all;
}

val copyOf(const mvPelBuffer_const<unsigned char>& picture) {
    return copyOf(picture, "Uint8Array");
}

// A picture and its halves, to be looked at from near and far.
val levelsOf(mvPelBuffer<unsigned char> picture) {
    val levels = val::array();
    for (;;) {
        val level = val::object();
        level.set("width", picture.width());
        level.set("height", picture.height());
        level.set("pels", copyOf(picture));
        levels.call<void>("push", level);
        if (picture.width() <= 64 && picture.height() <= 64) return levels;
        picture = halved(picture);
    }
}

val shown(const mvPelBuffer<unsigned char>& picture) {
    val result = val::object();
    result.set("levels", levelsOf(picture));
    result.set("pels", val::null());
    return result;
}

val shown(const mvPelBuffer<unsigned short>& picture) {
    val result = val::object();
    result.set("levels", levelsOf(upperBytes(picture)));
    result.set("pels", copyOf<unsigned short>(picture, "Uint16Array"));
    return result;
}

FilterSettings settingsOf(const val& from) {
    const int kind = from["kind"].as<int>();
    if (kind == kConvolution) return {.isConvolution = true};
    const auto number = [&](const char* name) { return from[name].as<double>(); };
    return {.step = {.kind = static_cast<mvFilterKind>(kind),
                     .frequency = number("frequency"),
                     .sigma = number("sigma"),
                     .plateau = number("plateau"),
                     .degrees = number("angle"),
                     .sigmaAcross = number("sigmaAcross"),
                     .plateauAcross = number("plateauAcross"),
                     .dcRadius = from["dcRadius"].as<long>(),
                     .bothSides = from["bothSides"].as<bool>()}};
}

std::vector<FilterSettings> filtersOf(const val& settings) {
    std::vector<FilterSettings> filters;
    for (const val& each : settings["filters"]) filters.push_back(settingsOf(each));
    return filters;
}

ResultWish wishOf(const val& from) {
    ResultWish wish;
    if (from["border"].as<std::string>() == "zero") wish.border = mvBorder::zero;
    if (!from["rescale"].isNull()) wish.percent = from["rescale"].as<double>();
    wish.withSign = from["signed"].as<bool>();
    return wish;
}

template <class T>
mvSuggestions suggestionsFor(const PictureOf<T>& picture, const val& progress) {
    const mvPelBuffer<T>& pels = picture.first();
    mvPelBuffer<double> levels(pels.width(), pels.height());
    for (long y = 0; y < pels.height(); ++y) {
        std::copy_n(pels.pointToRow(y), pels.width(), levels.pointToRow(y));
    }
    mvSuggestOptions options;
    options.white = std::numeric_limits<T>::max();
    options.progress = [&](double part) { progress(part); };
    return mfSuggest({levels}, options);
}

val shown(const mvFilterStep& step) {
    val result = val::object();
    result.set("kind", static_cast<int>(step.kind));
    result.set("frequency", step.frequency);
    result.set("angle", step.degrees);
    result.set("sigma", step.sigma);
    result.set("sigmaAcross", step.sigmaAcross == 0 ? step.sigma : step.sigmaAcross);
    result.set("plateau", step.plateau);
    result.set("plateauAcross", step.plateauAcross);
    result.set("dcRadius", step.dcRadius);
    result.set("bothSides", step.bothSides);
    return result;
}

template <class List, class Make>
val listOf(const List& list, Make make) {
    val result = val::array();
    for (const auto& each : list) result.call<void>("push", make(each));
    return result;
}

val shown(const mvSuggestion& suggestion) {
    val result = val::object();
    result.set("radius", suggestion.radius);
    result.set("levels", suggestion.levels);
    result.set("steps", listOf(suggestion.steps, [](const auto& step) { return shown(step); }));
    result.set("arguments",
               listOf(suggestion.arguments, [](const auto& word) { return val(word); }));
    return result;
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
            result.set("magnitudes", copyOf<double>(magnitudes, "Float32Array"));
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
        return guarded([&] {
            const mvPelBuffer<unsigned char> picture = shownGains(filters_.list(), side);
            val result = val::object();
            result.set("width", picture.width());
            result.set("height", picture.height());
            result.set("pels", copyOf(picture));
            return result;
        });
    }

    val suggest(const val& progress) const {
        return guarded([&] {
            const mvSuggestions found = std::visit(
                [&](const auto& picture) { return suggestionsFor(picture, progress); }, picture_);
            val result = val::object();
            result.set("filters",
                       listOf(found.filters, [](const auto& each) { return shown(each); }));
            result.set("remarks",
                       listOf(found.remarks, [](const auto& text) { return val(text); }));
            result.set("refusal", found.refusal);
            return result;
        });
    }

    val archive() const {
        return guarded([&] {
            const std::string bytes = archiveOf(filters_.list());
            const val copy = val::global("Uint8Array").new_(bytes.size());
            copy.call<void>(
                "set", typed_memory_view(bytes.size(),
                                         reinterpret_cast<const unsigned char*>(bytes.data())));
            val result = val::object();
            result.set("bytes", copy);
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
        .function("archive", &Engine::archive);
}
