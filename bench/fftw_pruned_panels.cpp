// FFTW pruned by hand, in blocks of rows and panels of columns.
#include "fftw_pruned.h"
#include "transpose.h"

namespace bench {
namespace {

using Build = std::shared_ptr<const Fftw>;

// Rows that are transformed at once, and columns: of either a cache holds all at hand.
constexpr long kRows = 16;
constexpr long kColumns = 8;

// The spectrum of a block of rows: floats from row to row, from real part to imaginary part.
struct Block {
    float* data;
    long pitch;
    long imaginary;
};

// How a panel lies in memory; everything is counted in floats. A layout also moves elements between
// panels and blocks of rows, clears the last rows of a panel, and filters one whose gains lie alike
// (complex ones) or as gainAt says (real ones).

// Elements row by row.
struct ByRows {
    static constexpr const char* kName = "panels";
    static constexpr long kStep = 2;
    explicit ByRows(long height) : size(2 * kColumns * height) {}
    long size;
    long columnStep = 2, rowStep = 2 * kColumns, imaginary = 1;

    long gainAt(long x, long y) const { return (x * columnStep + y * rowStep) / 2; }
    void clearFrom(long y, float* panel) const {
        std::fill(panel + y * rowStep, panel + size, 0.0f);
    }
    void store(Block from, float* panel, long y, long rows) const {
        for (long r = 0; r < rows; ++r) {
            std::copy_n(from.data + r * from.pitch, 2 * kColumns, panel + (y + r) * rowStep);
        }
    }
    void load(const float* panel, long y, long rows, Block to) const {
        for (long r = 0; r < rows; ++r) {
            std::copy_n(panel + (y + r) * rowStep, 2 * kColumns, to.data + r * to.pitch);
        }
    }
    void filter(float* panel, const float* gains, bool realGains) const {
        multiply(panel, gains, size / 2, realGains);
    }
};

// Elements column by column, a little apart, so that columns do not meet in one set of a cache.
struct ByColumns {
    static constexpr const char* kName = "turned";
    static constexpr long kStep = 2;
    explicit ByColumns(long height)
        : size(2 * kColumns * (height + 8)), columnStep(size / kColumns) {}
    long size, columnStep;
    long rowStep = 2, imaginary = 1;

    long gainAt(long x, long y) const { return (x * columnStep + y * rowStep) / 2; }
    void clearFrom(long y, float* panel) const {
        for (long x = 0; x < kColumns; ++x) {
            std::fill(panel + x * columnStep + y * rowStep, panel + (x + 1) * columnStep, 0.0f);
        }
    }
    void store(Block from, float* panel, long y, long rows) const {
        transpose(from.data, from.pitch / 2, panel + y * rowStep, columnStep / 2, rows, kColumns);
    }
    void load(const float* panel, long y, long rows, Block to) const {
        transpose(panel + y * rowStep, columnStep / 2, to.data, to.pitch / 2, kColumns, rows);
    }
    void filter(float* panel, const float* gains, bool realGains) const {
        multiply(panel, gains, size / 2, realGains);
    }
};

// Row by row, the real parts of a row before its imaginary parts.
struct Apart {
    static constexpr const char* kName = "split";
    static constexpr long kStep = 1;
    explicit Apart(long height) : size(2 * kColumns * height) {}
    long size;
    long columnStep = 1, rowStep = 2 * kColumns, imaginary = kColumns;

    static long gainAt(long x, long y) { return x + y * kColumns; }
    void clearFrom(long y, float* panel) const {
        std::fill(panel + y * rowStep, panel + size, 0.0f);
    }
    void store(Block from, float* panel, long y, long rows) const {
        for (long r = 0; r < rows; ++r) {
            const float* const row = from.data + r * from.pitch;
            float* const to = panel + (y + r) * rowStep;
            std::copy_n(row, kColumns, to);
            std::copy_n(row + from.imaginary, kColumns, to + imaginary);
        }
    }
    void load(const float* panel, long y, long rows, Block to) const {
        for (long r = 0; r < rows; ++r) {
            const float* const from = panel + (y + r) * rowStep;
            float* const row = to.data + r * to.pitch;
            std::copy_n(from, kColumns, row);
            std::copy_n(from + imaginary, kColumns, row + to.imaginary);
        }
    }
    void filter(float* panel, const float* gains, bool realGains) const {
        if (realGains) {
            for (long i = 0; i < size; i += 2 * kColumns) {
                for (long k = 0; k < 2 * kColumns; ++k) {
                    panel[i + k] *= gains[i / 2 + k % kColumns];
                }
            }
            return;
        }
        for (long i = 0; i < size; i += 2 * kColumns) {
            for (long k = i; k < i + kColumns; ++k) {
                const float re = panel[k], im = panel[k + kColumns];
                panel[k] = re * gains[k] - im * gains[k + kColumns];
                panel[k + kColumns] = re * gains[k + kColumns] + im * gains[k];
            }
        }
    }
};

template <class T, class Layout>
class PrunedPanels : public FftwPels<T> {
  public:
    PrunedPanels(const Pipeline& work, Build build, Pipeline::Columns columns)
        : FftwPels<T>(std::string("-pruned-") + Layout::kName, work, std::move(build)),
          layout_(work.padded.height),
          first_(columns.first),
          panels_((columns.count + kColumns - 1) / kColumns),
          leavesReals_(work.leavesReals()),
          hasRealGains_(work.hasRealGains()),
          elements_(leavesReals_ ? work.padded.width / 2 + 1 : work.padded.width),
          realPitch_(work.padded.width + 16),
          blockPitch_((elements_ + 2 * kColumns) / 8 * 8),
          reals_(kRows * realPitch_),
          blockFloats_(kRows * 2 * blockPitch_),
          block_{blockFloats_.data(), 2 * blockPitch_, Layout::kStep == 2 ? 1 : blockPitch_},
          plane_(panels_ * layout_.size),
          gainsOfPanel_(hasRealGains_ ? layout_.size / 2 : layout_.size),
          gains_(panels_ * gainsOfPanel_) {
        layGains(work, columns);
        planRows();
        planColumns();
    }

    void run() override {
        const long height = this->image().height;
        for (long y = 0; y < height; y += kRows) transformRows(y, std::min(kRows, height - y));
        for (long i = 0; i < panels_; ++i) filterPanel(i);
        for (long y = 0; y < height; y += kRows) transformRowsBack(y, std::min(kRows, height - y));
    }

  private:
    float* panel(long i) const { return plane_.data() + i * layout_.size; }
    long endOfPanels() const { return first_ + panels_ * kColumns; }

    /// The block from the first column of a panel on.
    Block blockAt(long i) const {
        Block from = block_;
        from.data += Layout::kStep * (first_ + i * kColumns);
        return from;
    }

    void transformRows(long y, long rows) {
        for (long r = 0; r < rows; ++r) this->readRow(y + r, reals_.data() + r * realPitch_);
        this->build_->execute(forwardRows_.get());
        for (long i = 0; i < panels_; ++i) layout_.store(blockAt(i), panel(i), y, rows);
    }

    void filterPanel(long i) {
        float* const re = panel(i);
        float* const im = re + layout_.imaginary;
        layout_.clearFrom(this->image().height, re);
        this->build_->executeSplitDft(forwardColumns_.get(), re, im, re, im);
        layout_.filter(re, gains_.data() + i * gainsOfPanel_, hasRealGains_);
        this->build_->executeSplitDft(backwardColumns_.get(), im, re, im, re);
    }

    void transformRowsBack(long y, long rows) {
        clearBlock(0, first_);
        clearBlock(endOfPanels(), elements_);
        for (long i = 0; i < panels_; ++i) layout_.load(panel(i), y, rows, blockAt(i));
        this->build_->execute(inverseRows_.get());
        for (long r = 0; r < rows; ++r) {
            if (leavesReals_) {
                this->writeReals(y + r, reals_.data() + r * realPitch_);
            } else {
                this->template writeMagnitudes<Layout::kStep>(y + r, block_.data + r * block_.pitch,
                                                              block_.imaginary);
            }
        }
    }

    /// The columns of no panel hold what the transform before left there.
    void clearBlock(long begin, long end) {
        if (begin >= end) return;
        const long floats = Layout::kStep * (end - begin);
        for (long r = 0; r < kRows; ++r) {
            float* const row = block_.data + r * block_.pitch + Layout::kStep * begin;
            std::fill_n(row, floats, 0.0f);
            if (Layout::kStep == 1) std::fill_n(row + block_.imaginary, floats, 0.0f);
        }
    }

    void layGains(const Pipeline& work, Pipeline::Columns columns) {
        const float scale = this->scaleOf(work.padded);
        for (long i = 0; i < columns.count; ++i) {
            float* const to = gains_.data() + i / kColumns * gainsOfPanel_;
            const long x = i % kColumns;
            for (long y = 0; y < work.padded.height; ++y) {
                const std::complex<float> gain = work.at(columns.first + i, y) * scale;
                if (hasRealGains_) {
                    to[layout_.gainAt(x, y)] = gain.real();
                } else {
                    float* const pair = to + x * layout_.columnStep + y * layout_.rowStep;
                    pair[0] = gain.real();
                    pair[layout_.imaginary] = gain.imag();
                }
            }
        }
    }

    Fftw::Plan plan(const std::string& work, const std::function<fftwf_plan(unsigned)>& make) {
        return this->build_->plan(
            keyOf(std::string("pruned-") + Layout::kName + "-" + work, this->padded_),
            Rigor::Patient, make);
    }

    using Step = fftwf_iodim;
    static Step step(long count, long in, long out) {
        return {static_cast<int>(count), static_cast<int>(in), static_cast<int>(out)};
    }

    void planRows() {
        const long width = this->padded_.width;
        float* const re = block_.data;
        float* const im = re + block_.imaginary;
        forwardRows_ = plan(leavesReals_ ? "r2c" : "r2c-whole", [&](unsigned flags) {
            const Step along = step(width, 1, Layout::kStep);
            const Step lines = step(kRows, realPitch_, block_.pitch);
            return this->build_->planSplitForward(1, &along, 1, &lines, reals_.data(), re, im,
                                                  flags | FFTW_DESTROY_INPUT);
        });
        inverseRows_ = plan(leavesReals_ ? "c2r" : "c2c-back", [&](unsigned flags) {
            const Step along = step(width, Layout::kStep, leavesReals_ ? 1 : Layout::kStep);
            const Step lines = step(kRows, block_.pitch, leavesReals_ ? realPitch_ : block_.pitch);
            return leavesReals_
                       ? this->build_->planSplitInverse(1, &along, 1, &lines, re, im, reals_.data(),
                                                        flags | FFTW_DESTROY_INPUT)
                       : this->build_->planSplit(1, &along, 1, &lines, im, re, im, re, flags);
        });
    }

    // Backward is forward with real and imaginary parts exchanged.
    void planColumns() {
        const Step along = step(this->padded_.height, layout_.rowStep, layout_.rowStep);
        const Step lines = step(kColumns, layout_.columnStep, layout_.columnStep);
        float* const re = panel(0);
        float* const im = re + layout_.imaginary;
        forwardColumns_ = plan("columns", [&](unsigned flags) {
            return this->build_->planSplit(1, &along, 1, &lines, re, im, re, im, flags);
        });
        backwardColumns_ = plan("columns-back", [&](unsigned flags) {
            return this->build_->planSplit(1, &along, 1, &lines, im, re, im, re, flags);
        });
    }

    Layout layout_;
    long first_, panels_;
    bool leavesReals_, hasRealGains_;
    long elements_, realPitch_, blockPitch_;
    AlignedFloats reals_, blockFloats_;
    Block block_;
    AlignedFloats plane_;
    long gainsOfPanel_;
    AlignedFloats gains_;
    Fftw::Plan forwardRows_, forwardColumns_, backwardColumns_, inverseRows_;
};

}  // namespace

template <class T>
void addFftwPrunedPanels(PelPeers<T>& peers, const Pipeline& work, const Build& build,
                         Pipeline::Columns columns) {
    peers.push_back(std::make_unique<PrunedPanels<T, ByRows>>(work, build, columns));
    peers.push_back(std::make_unique<PrunedPanels<T, ByColumns>>(work, build, columns));
    peers.push_back(std::make_unique<PrunedPanels<T, Apart>>(work, build, columns));
}

template void addFftwPrunedPanels(PelPeers<unsigned char>&, const Pipeline&, const Build&,
                                  Pipeline::Columns);
template void addFftwPrunedPanels(PelPeers<unsigned short>&, const Pipeline&, const Build&,
                                  Pipeline::Columns);

}  // namespace bench
