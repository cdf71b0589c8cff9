// Filters proposed from pictures of a good surface.
#include "suggest.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "internal/filter_search.h"
#include "internal/filtered_pictures.h"
#include "internal/good_pictures.h"
#include "internal/remarks.h"
#include "internal/strong_waves.h"
#include "internal/whole_pictures.h"
#include "program_plane.h"

namespace {

using mvi::DoubleView;

// Spots that stand out less than this are not seen.
constexpr double kStandsOut = 3;

// What leaves less of a spot leaves roundings.
constexpr double kLeastAnswer = 1e-3;

mvi::Bump bumpOf(double radius, const mvSuggestOptions& options) {
    return {radius, options.direction ? mvi::kScratchLength * radius : radius};
}

void requireBound(const std::vector<DoubleView>& pictures) {
    for (const DoubleView& picture : pictures) {
        if (!picture.isBound()) throw mvFrequencyDefs::UnboundWindow(nullptr);
    }
}

// Calls back with the part that is done.
class Progress {
  public:
    explicit Progress(const std::function<void(double)>& report) : report_(report) {}

    void expect(std::size_t steps) { expected_ = static_cast<double>(steps); }

    void advance(double steps = 1) {
        done_ += steps;
        if (report_) report_(std::min(done_ / expected_, 1.0));
    }

    void finish() {
        if (report_) report_(1);
    }

  private:
    const std::function<void(double)>& report_;
    double expected_ = 1, done_ = 0;
};

// The search for all radii over pictures that are fit for it.
class Proposals {
  public:
    Proposals(const std::vector<DoubleView>& pictures, const mvSuggestOptions& options)
        : options_(options),
          radii_(mvi::fittingRadii(pictures, options.radii)),
          picture_(pictures.front().width(), pictures.front().height()),
          windows_(mvi::lookedAt(pictures)),
          whole_(windows_, picture_),
          progress_(options.progress) {}

    std::vector<mvSuggestion> find() {
        if (radii_.empty()) return {};
        const std::vector<mvFilterStep> waves = mvi::strongWaves(windows_.front(), radii_);
        mvi::FilterSearch search = searchBehind({});
        if (waves.empty()) {
            progress_.expect(triesOf(search, {}));
            return finished(bestOfAll(search, {}));
        }
        mvi::FilterSearch behind = searchBehind(waves);
        progress_.expect(triesOf(search, {}) + triesOf(behind, waves));
        const std::vector<mvSuggestion> alone = bestOfAll(search, {});
        return finished(better(alone, bestOfAll(behind, waves)));
    }

  private:
    // A whole picture takes as long as so many tries on tiles.
    static constexpr std::size_t kWholeTries = 20;

    // Several filters must be worth their line, and that a wave is not quite as regular elsewhere.
    static constexpr double kWorthIt = 0.8;

    mvi::FilterSearch searchBehind(const std::vector<mvFilterStep>& waves) {
        const std::vector<DoubleView> pictures =

            waves.empty()
                ? windows_
                : mvi::filtered(windows_, waves, mfProgramPlane(picture_, mfFiltersReach(waves)));
        return {pictures, picture_, {radii_, options_.direction, waves}, [this] {
                    progress_.advance();
                }};
    }

    // What several filters must gain is more than what sets the best of them apart.
    std::size_t finalists(const std::vector<mvFilterStep>& waves) const {
        return waves.empty() ? whole_.finalists() : (whole_.finalists() + 3) / 4;
    }

    std::size_t triesOf(const mvi::FilterSearch& search,
                        const std::vector<mvFilterStep>& waves) const {
        return search.tries() + kWholeTries * finalists(waves) * radii_.size();
    }

    // For each radius the best filter behind those that remove waves.
    std::vector<mvSuggestion> bestOfAll(mvi::FilterSearch& search,
                                        const std::vector<mvFilterStep>& waves) {
        search.tryAll();
        std::vector<mvSuggestion> found;
        for (const double radius : radii_) {
            found.push_back(
                bestOf(search.best(bumpOf(radius, options_), finalists(waves)), waves, radius));
        }
        return found;
    }

    mvSuggestion bestOf(const std::vector<mvi::Scored>& finalists,
                        const std::vector<mvFilterStep>& waves, double radius) {
        mvSuggestion best;
        for (const mvi::Scored& finalist : finalists) {
            std::vector<mvFilterStep> steps = mvi::wavesWithin(waves, finalist.step);
            steps.push_back(finalist.step);
            mvSuggestion next = measured(steps, radius);
            if (best.steps.empty() || next.levels < best.levels) best = std::move(next);
            progress_.advance(kWholeTries);
        }
        return best;
    }

    mvSuggestion measured(const std::vector<mvFilterStep>& steps, double radius) {
        mvSuggestion found;
        found.radius = radius;
        found.steps = steps;
        found.plane = mfProgramPlane(picture_, mfFiltersReach(found.steps));
        found.answer =
            whole_.answer(found.steps, bumpOf(radius, options_), options_.direction.value_or(0));
        found.background = whole_.background(found.steps);
        found.levels = found.answer > kLeastAnswer ? kStandsOut * found.background / found.answer
                                                   : std::numeric_limits<double>::infinity();
        found.arguments = mfFilterArguments(found.steps);
        return found;
    }

    static std::vector<mvSuggestion> better(std::vector<mvSuggestion> alone,
                                            const std::vector<mvSuggestion>& behind) {
        for (std::size_t at = 0; at < alone.size(); ++at) {
            if (behind[at].levels < kWorthIt * alone[at].levels) alone[at] = behind[at];
        }
        return alone;
    }

    std::vector<mvSuggestion> finished(std::vector<mvSuggestion> found) {
        std::erase_if(found, [](const mvSuggestion& each) {
            return each.steps.empty() || !std::isfinite(each.levels);
        });
        progress_.finish();
        return found;
    }

    const mvSuggestOptions& options_;
    const std::vector<double> radii_;
    const mvPair<long> picture_;
    const std::vector<DoubleView> windows_;
    mvi::WholePictures whole_;
    Progress progress_;
};

}  // namespace

mvSuggestions mfSuggest(const std::vector<DoubleView>& pictures, const mvSuggestOptions& options) {
    requireBound(pictures);
    mvSuggestions found;
    found.refusal = mvi::refusalOf(pictures, options.white);
    if (!found.refusal.empty()) return found;
    Proposals proposals(pictures, options);
    found.filters = proposals.find();
    found.remarks = mvi::remarksOn(found.filters, options);
    return found;
}
