// A picture through a filter and back.
#include "filter_picture.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "attention.h"
#include "complex_picture.h"
#include "failure.h"
#include "filter_archive.h"
#include "grey_levels.h"
#include "luma.h"
#include "output_file.h"
#include "overlay.h"
#include "picture_file.h"
#include "picture_format.h"
#include "picture_output.h"
#include "result_pels.h"
#include "spot_list.h"
#include "standard_names.h"
#include "strengths.h"

namespace {

// A picture for a file.
struct Result {
    std::string path;
    Picture pels;

    void write(OutputFiles& files) const {
        OutputFile& file = files.add(path);
        std::visit([&](const auto& picture) { writePicture(file, picture); }, pels);
    }
};

template <class T>
bool hasFewLevelsEach(const PictureOf<T>& picture) {
    return std::all_of(picture.channels.begin(), picture.channels.end(),
                       [](const auto& channel) { return hasFewLevels(channel); });
}

// A picture in grey stays as it is.
template <class T>
PictureOf<T> greyOf(PictureOf<T>&& picture) {
    if (!picture.isColour()) return std::move(picture);
    mvPelBuffer<T> grey(picture.first().width(), picture.first().height());
    for (long y = 0; y < grey.height(); ++y) {
        for (long x = 0; x < grey.width(); ++x) {
            const T rgb[] = {picture.channels[0].pel(x, y), picture.channels[1].pel(x, y),
                             picture.channels[2].pel(x, y)};
            grey.pointToRow(y)[x] = luma(rgb);
        }
    }
    return {{grey}};
}

// The larger of two values at each place.
mvPelBuffer<double> larger(mvPelBuffer<double> values, const mvPelBuffer<double>& others) {
    for (long y = 0; y < values.height(); ++y) {
        double* row = values.pointToRow(y);
        std::transform(row, row + values.width(), others.pointToRow(y), row,
                       [](double a, double b) { return std::max(a, b); });
    }
    return values;
}

// One picture on its way.
template <class T>
class FilterRun {
  public:
    FilterRun(PictureOf<T>&& picture, Channels channels, const FilterOptions& options,
              SharedFilters& filters, int threads)
        : shown_(options.find.overlay ? picture : PictureOf<T>()),
          picture_(channels == Channels::each ? std::move(picture) : greyOf(std::move(picture))),
          hadFewLevels_(hasFewLevelsEach(picture_)),
          options_(options),
          choice_(choosePlane(picture_.first(), filters.needs(), options.plane)),
          filters_(filters.get(choice_.plane)),
          image_(imageOptions(options.plane, threads)) {}

    PictureReport write(const PictureFiles& files) {
        beginStage("filtering", calls() * expectedPolls(choice_, image_.threads));
        std::vector<Result> results;
        if (options_.hasPhases()) results = phases();
        const std::vector<Spot> spots = found();
        if (options_.find.overlay) {
            results.push_back({*options_.find.overlay, withFrames(shown_, spots)});
        }
        results.insert(results.begin(), {files.output, filtered()});
        OutputFiles outputs;
        for (const Result& result : results) result.write(outputs);
        if (options_.save) saveFilters(outputs.add(*options_.save), filters_);
        outputs.publish();
        return {hint(results.front()), listOf({files.input, threshold(), spots})};
    }

  private:
    using Pels = mvPelBuffer<T>;
    using Values = mvPelBuffer<double>;

    // How often a channel is filtered.
    long calls() const {
        const auto channels = static_cast<long>(picture_.channels.size());
        const long parts = options_.hasPhases() ? (options_.withSign ? 1 : 2) : 0;
        const long searches = options_.find.isAsked() ? channels : 0;
        return searches + parts + (isSpreadTogether() ? 2 * channels - 1 : channels);
    }

    bool isSpreadTogether() const { return options_.rescale && picture_.isColour(); }

    Picture filtered() {
        if (options_.withSign) return withSign();
        if (isSpreadTogether()) {
            const auto values = [this](const Pels& channel) { return magnitudes(channel); };
            return spread<T>(values, magnitudeRange, spreadMagnitudes<T>);
        }
        return each<T>([this](const Pels& channel) {
            return magnitudePels(channel, filters_, image_, options_.rescale);
        });
    }

    Picture withSign() {
        const auto values = [this](const Pels& channel) { return real(channel); };
        if (isSpreadTogether()) return spread<unsigned short>(values, signedRange, spreadSigned);
        return each<unsigned short>(
            [&](const Pels& channel) { return realPels(values(channel), options_.rescale); });
    }

    // One channel after the other; each one goes when its result is there.
    template <class U, class Make>
    PictureOf<U> each(Make make) {
        PictureOf<U> result;
        for (Pels& channel : picture_.channels) {
            result.channels.push_back(make(channel));
            channel = Pels();
        }
        return result;
    }

    // All channels have one range, so that colours stay. Filtering twice takes less than keeping
    // the values of three channels would; those of the last one are there still.
    template <class U, class Make, class Range, class Spread>
    PictureOf<U> spread(Make make, Range range, Spread spreadOver) {
        std::vector<Pels>& channels = picture_.channels;
        constexpr double kInfinity = std::numeric_limits<double>::infinity();
        LevelRange all{kInfinity, -kInfinity};
        Values values;
        for (const Pels& channel : channels) {
            values = Values();
            values = make(channel);
            all = all.with(range(values, *options_.rescale));
        }
        PictureOf<U> result{std::vector<mvPelBuffer<U>>(channels.size())};
        for (std::size_t i = channels.size(); i-- > 0; values = Values()) {
            if (!values.isBound()) values = make(channels[i]);
            channels[i] = Pels();
            result.channels[i] = spreadOver(values, all);
        }
        return result;
    }

    double threshold() const { return options_.find.threshold.value_or(10); }

    // The strongest of all channels counts.
    std::vector<Spot> found() const {
        if (!options_.find.isAsked()) return {};
        Values strengths;
        for (const Pels& channel : picture_.channels) {
            Values more = magnitudes(channel);
            toStrengths(more, mfFilterReach(filters_));
            strengths = strengths.isBound() ? larger(strengths, more) : more;
        }
        return findSpots(strengths, threshold());
    }

    std::string listOf(const Findings& findings) const {
        if (options_.find.json) return spotJson(findings);
        return options_.find.list ? spotTable(findings) : "";
    }

    Values magnitudes(const Pels& channel) const {
        Values result;
        mfFilterImage(channel, filters_, result, image_);
        return result;
    }

    // Once for a single channel, of which the phases need it as well.
    Values real(const Pels& channel) {
        return real_.isBound() ? real_ : realPart(channel, filters_, image_);
    }

    std::vector<Result> phases() {
        real_ = realPart(picture_.first(), filters_, image_);
        const Values imaginary = imaginaryPart(picture_.first(), filters_, image_);
        std::vector<Result> results;
        const auto add = [&](const std::optional<std::string>& path, auto pels) {
            if (!path) return;
            results.push_back({*path, PictureOf<unsigned char>{{pels(real_, imaginary)}}});
        };
        add(options_.angleImage, anglePels);
        add(options_.quadrantImage, quadrantPels);
        return results;
    }

    // What swings around zero by a few grey levels looks black.
    std::string hint(const Result& result) const {
        if (options_.rescale || options_.withSign || hadFewLevels_) return "";
        const auto few = [](const auto& picture) { return hasFewLevelsEach(picture); };
        if (!std::visit(few, result.pels)) return "";
        return outputName(result.path) + ": has fewer than 10 grey levels (--rescale spreads them)";
    }

    const PictureOf<T> shown_;
    PictureOf<T> picture_;
    const bool hadFewLevels_;
    const FilterOptions& options_;
    const PlaneChoice choice_;
    const mvFilterList filters_;
    const mvFilterImageOptions image_;
    Values real_;
};

Channels channelsOf(const FilterOptions& options, const ChainRecipe& recipe) {
    if (!options.hasPhases()) return options.channels.value_or(::channelsOf(recipe));
    if (options.channels != Channels::each) return Channels::grey;
    throw BadArgument("--channels each: angles and quadrants are those of the grey picture");
}

}  // namespace

PictureReport filterPicture(const PictureFiles& files, const FilterOptions& options,
                            SharedFilters& filters, int threads) {
    const Channels channels = channelsOf(options, filters.recipe());
    Picture read = readPicture(files.input,
                               {options.find.overlay ? Channels::each : channels, files.maxPixels});
    return std::visit(
        [&](auto& picture) {
            const bool staysColour = channels == Channels::each && picture.isColour();
            if (staysColour) requireRoomForColour(files.output);
            return FilterRun(std::move(picture), channels, options, filters, threads).write(files);
        },
        read);
}
