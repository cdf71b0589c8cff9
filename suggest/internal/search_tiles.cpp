// Tiles of the good pictures, transformed once and filtered often.
#include "search_tiles.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "poll.h"

namespace {

using mvi::DoubleImage;
using mvi::DoubleView;
using mvi::TileAxis;

// Where the tiles along an axis begin.
struct Spread {
    long pels, core, count = 1;

    Spread(long n, const TileAxis& axis)
        : pels(n), core(axis.isWhole ? n : std::min(n, axis.side - 2 * axis.margin)) {}
    long most() const { return (pels + core - 1) / core; }
    long begin(long number) const {
        return count == 1 ? (pels - core) / 2 : (pels - core) * number / (count - 1);
    }
    double step() const { return static_cast<double>(pels) / static_cast<double>(count); }
};

// The longer steps are shortened first, so that the tiles lie evenly.
void spread(Spread& across, Spread& down, long most) {
    const auto canGrow = [most](const Spread& axis, const Spread& other) {
        return axis.count < axis.most() && (axis.count + 1) * other.count <= most;
    };
    for (;;) {
        const bool grows[] = {canGrow(across, down), canGrow(down, across)};
        if (!grows[0] && !grows[1]) return;
        const bool isAcross = grows[0] && (!grows[1] || across.step() >= down.step());
        ++(isAcross ? across : down).count;
    }
}

// What a position of a plane shows: a blend of two pels.
struct Source {
    long a, b;
    double t;
};

// The pels along an axis of a tile whose first counting pel is `first`.
std::vector<Source> sources(long n, const TileAxis& axis, long first) {
    std::vector<Source> line;
    for (long at = 0; at < axis.side; ++at) {
        const bool fades = axis.isWhole && at >= n;
        const long from = axis.isWhole ? at : first - axis.margin + at;
        const double t = (static_cast<double>(at - n) + 0.5) / static_cast<double>(axis.side - n);
        line.push_back(
            {mvi::reflected(from, n), mvi::reflected(axis.side - 1 - at, n), fades ? t : 0.0});
    }
    return line;
}

void lay(const DoubleView& picture, const std::vector<Source>& across,
         const std::vector<Source>& down, DoubleImage& plane) {
    for (long y = 0; y < plane.height(); ++y) {
        mvi::pollRow(y);
        const Source v = down[static_cast<std::size_t>(y)];
        const double *a = picture.pointToRow(v.a), *b = picture.pointToRow(v.b);
        double* to = plane.pointToRow(y);
        const auto along = [](const double* row, const Source& u) {
            return row[u.a] + (row[u.b] - row[u.a]) * u.t;
        };
        for (const Source& u : across) {
            const double upper = along(a, u);
            *to++ = v.t == 0 ? upper : upper + (along(b, u) - upper) * v.t;
        }
    }
}

// The filter with the same bins in a plane of which only the lowest frequencies are kept.
mvFilterStep atScale(mvFilterStep step, long scale) {
    for (double* width :
         {&step.frequency, &step.sigma, &step.plateau, &step.sigmaAcross, &step.plateauAcross}) {
        *width *= static_cast<double>(scale);
    }
    return step;
}

}  // namespace

mvi::SearchTiles::SearchTiles(const std::vector<DoubleView>& pictures, const TileLayout& layout,
                              long most, Answers answers)
    : layout_(layout), answers_(answers) {
    const long each = std::max(most / static_cast<long>(pictures.size()), 1l);
    for (DoubleImage& part : parts_) part = DoubleImage(layout.x.side, layout.y.side);
    for (const DoubleView& picture : pictures) addPicture(picture, each);
    if (!filled_.empty()) finishPlane();
    for (DoubleImage& part : parts_) part = DoubleImage();
}

void mvi::SearchTiles::addPicture(const DoubleView& picture, long most) {
    Spread across(picture.width(), layout_.x), down(picture.height(), layout_.y);
    spread(across, down, most);
    for (long v = 0; v < down.count; ++v) {
        for (long u = 0; u < across.count; ++u) {
            addTile(picture, {across.begin(u), down.begin(v)});
        }
    }
}

void mvi::SearchTiles::addTile(const DoubleView& picture, mvPair<long> first) {
    lay(picture, sources(picture.width(), layout_.x, first.x),
        sources(picture.height(), layout_.y, first.y), parts_[filled_.size()]);
    filled_.push_back(coreOf(picture));
    if (filled_.size() == (answers_ == Answers::real ? 2 : 1)) finishPlane();
}

mvi::SearchTiles::Core mvi::SearchTiles::coreOf(const DoubleView& picture) const {
    const auto begin = [this](const TileAxis& axis) {
        return axis.isWhole ? 0 : axis.margin / layout_.scale;
    };
    const auto length = [this](long pels, const TileAxis& axis) {
        return std::max(Spread(pels, axis).core / layout_.scale, 1l);
    };
    return {begin(layout_.x), begin(layout_.y), length(picture.width(), layout_.x),
            length(picture.height(), layout_.y)};
}

void mvi::SearchTiles::finishPlane() {
    if (filled_.size() == 1) mfPelSet(parts_[1], 0.0);
    mvFrequencyBuffer whole;
    mfForwardFFT(parts_[0], parts_[1], whole);
    const long scale = layout_.scale;
    if (scale > 1) whole = mvFrequencyBuffer(whole, whole.width() / scale, whole.height() / scale);
    planes_.push_back({std::move(whole), std::exchange(filled_, {})});
}

double mvi::SearchTiles::background(const mvFilterStep& step) {
    visit(step, [this](double magnitude) { counts_.add(magnitude); });
    return unscaled(counts_.takeQuantile());
}

double mvi::SearchTiles::peak(const mvFilterStep& step) {
    double most = 0;
    visit(step, [&](double magnitude) { most = std::max(most, std::abs(magnitude)); });
    return unscaled(most);
}

// The values of the spectrum stayed while its plane became smaller.
double mvi::SearchTiles::unscaled(double magnitude) const {
    return magnitude / static_cast<double>(layout_.scale * layout_.scale);
}

// Calls each(magnitude) for the filtered pels that count.
template <class Each>
void mvi::SearchTiles::visit(const mvFilterStep& step, Each each) {
    const mvPair<long> size = planes_.front().spectrum.size();
    const auto filter = mfBuildFilter(atScale(step, layout_.scale), size);
    for (const Plane& plane : planes_) {
        filter->apply(plane.spectrum, filtered_);
        mfInverseFFT(filtered_, results_[0], results_[1], true);
        visit(plane, each);
    }
}

template <class Each>
void mvi::SearchTiles::visit(const Plane& plane, Each each) const {
    const auto walk = [&](const Core& core, auto magnitude) {
        for (long y = core.y; y < core.y + core.height; ++y) {
            const double *re = results_[0].pointToRow(y), *im = results_[1].pointToRow(y);
            for (long x = core.x; x < core.x + core.width; ++x) each(magnitude(re[x], im[x]));
        }
    };
    if (answers_ == Answers::complex) {
        walk(plane.cores[0], [](double re, double im) { return std::hypot(re, im); });
        return;
    }
    walk(plane.cores[0], [](double re, double) { return re; });
    if (plane.cores.size() == 2) walk(plane.cores[1], [](double, double im) { return im; });
}
