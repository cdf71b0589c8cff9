// The column pass of an inverse, from panels straight to results.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/plane_output.h>
#include <filt/fft/internal/kernel/work.h>
#include <filt/platform.h>

#include <cstdint>
#include <vector>

namespace mvi {

/// Polls once for each multiple of kLinesPerPoll from `begin` to `end` - 1.
void pollLines(long begin, long end);

/// Floats of panels that hold `columns` columns of `rows` rows, and of one of them.
long panelFloats(const KernelPath& path, long columns, long rows);
long panelPitch(const KernelPath& path, long rows);

/// Columns of a plane of which some rows hold data: panels of these, and one row of zeros for all
/// others. First come the rows, then the columns' results. The sign of a zero may differ from what
/// other passes give, which no magnitude shows.
class InverseColumns {
  public:
    /// For a plane of `size`; `rows`, the numbers of the rows that hold data in ascending order,
    /// outlives the object. `more` floats are taken besides for the owner.
    InverseColumns(mvPair<long> size, const std::vector<std::int32_t>& rows, const KernelPath& path,
                   long more);

    /// What passes over panels need.
    float* scratch() const { return memory_.get(); }

    /// The owner's floats.
    float* more() const { return more_; }

    /// Calls transform(rows, count, to, y) for a few row numbers at a time: it writes the columns
    /// `begin` .. `end` - 1 of these rows, without the last conjugation, to the rows y and on of
    /// `to`.
    template <class Transform>
    void passRows(long begin, long end, Transform transform) {
        prepare(begin, end);
        const PanelBlocks to{columns_.data(), static_cast<long>(columns_.size())};
        const auto rows = static_cast<long>(rows_.size());
        for (long y = 0; y < rows; y += path_.lanes) {
            transform(rows_.data() + y, std::min(path_.lanes, rows - y), to, y);
        }
    }

    /// Writes the results that `out` asks for, of the columns that were passed. Polls for all
    /// columns of the plane.
    template <class P>
    void write(const PlaneOutput<P>& out) {
        const ColumnStrips<P>& strips = path_.strips<P>();
        P* const strip = reinterpret_cast<P*>(strips_);
        const float scale = inverseScale(size_);
        const long columnsPerStep = path_.lanes * stripsPerStep(sizeof(P));
        for (long x = 0; x < out.size.x; x += columnsPerStep) {
            const long count = std::min(columnsPerStep, out.size.x - x);
            for (long i = 0; i < count; i += path_.lanes) {
                pollLines(x + i, x + i + path_.lanes);
                strips.panelToStrip(panel((x + i) / path_.lanes), rowStarts_.data(), size_.y, scale,
                                    strip + size_.y * i, scratch());
            }
            strips.joinStrips(strip + path_.lanes * out.from.y, path_.lanes * size_.y, out.size.y,
                              count, out.first + x, out.step);
        }
        pollLines(out.size.x, size_.x);
    }

  private:
    void makeColumns(float* room);
    void fillRowStarts();
    void prepare(long begin, long end);
    const float* panel(long index) const;
    long stripsPerStep(std::size_t resultBytes) const;

    mvPair<long> size_;
    const std::vector<std::int32_t>& rows_;
    const KernelPath& path_;
    Floats memory_;
    float *strips_, *more_;
    // Panels in a few blocks, each of as many panels. They have memory of their own where that
    // above has no room for them.
    std::vector<Floats> blocks_;
    std::vector<Panels> columns_;
    long panelsPerBlock_;
    // Where the rows of the plane begin in a panel.
    std::vector<std::int32_t> rowStarts_;
};

}  // namespace mvi
