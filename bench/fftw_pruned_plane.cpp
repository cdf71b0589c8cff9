// FFTW pruned by hand, plane by plane.
#include "fftw_pruned.h"

namespace bench {
namespace {

using Build = std::shared_ptr<const Fftw>;

// All rows of the image, then the columns that the filter reaches and back, then rows again: four
// batches over the left half of the plane, and a plane of its own for a complex image.
template <class T>
class PrunedPlane : public FftwPels<T> {
  public:
    PrunedPlane(const Pipeline& work, Build build, Pipeline::Columns columns)
        : FftwPels<T>("-pruned-plane", work, std::move(build)),
          columns_(columns),
          pitch_((work.padded.width / 2 + 16) / 8 * 8),
          leavesReals_(work.leavesReals()),
          hasRealGains_(work.hasRealGains()),
          reals_(work.padded.width * work.image.height),
          half_(2 * pitch_ * work.padded.height),
          whole_(leavesReals_ ? 0 : 2 * reals_.size()),
          gains_(columns.count * work.padded.height * (hasRealGains_ ? 1 : 2)) {
        layGains(work);
        planRows();
        forwardColumns_ = columnsPlan(FFTW_FORWARD);
        backwardColumns_ = columnsPlan(FFTW_BACKWARD);
    }

    void run() override {
        const Size image = this->image();
        const long width = this->padded_.width;
        for (long y = 0; y < image.height; ++y) this->readRow(y, reals_.data() + y * width);
        this->build_->execute(forwardRows_.get());
        for (long y = image.height; y < this->padded_.height; ++y) {
            std::fill_n(kept(y), 2 * columns_.count, 0.0f);
        }
        this->build_->execute(forwardColumns_.get());
        filter();
        this->build_->execute(backwardColumns_.get());
        layRowsForInverse();
        this->build_->execute(inverseRows_.get());
        for (long y = 0; y < image.height; ++y) {
            if (leavesReals_) {
                this->writeReals(y, reals_.data() + y * width);
            } else {
                this->template writeMagnitudes<2>(y, whole_.data() + 2 * y * width, 1);
            }
        }
    }

  private:
    float* half(long y) const { return half_.data() + 2 * y * pitch_; }
    float* kept(long y) const { return half(y) + 2 * columns_.first; }

    void layGains(const Pipeline& work) {
        const float scale = this->scaleOf(work.padded);
        float* to = gains_.data();
        for (long y = 0; y < work.padded.height; ++y) {
            for (long x = columns_.first; x < columns_.first + columns_.count; ++x) {
                *to++ = work.at(x, y).real() * scale;
                if (!hasRealGains_) *to++ = work.at(x, y).imag() * scale;
            }
        }
    }

    void filter() {
        const long gainsPerRow = gains_.size() / this->padded_.height;
        for (long y = 0; y < this->padded_.height; ++y) {
            multiply(kept(y), gains_.data() + y * gainsPerRow, columns_.count, hasRealGains_);
        }
    }

    // The columns that nobody filtered hold what the forward transform left there.
    void layRowsForInverse() {
        const long end = columns_.first + columns_.count, width = this->padded_.width;
        for (long y = 0; y < this->image().height; ++y) {
            float* const row = leavesReals_ ? half(y) : whole_.data() + 2 * y * width;
            std::fill_n(row, 2 * columns_.first, 0.0f);
            if (!leavesReals_) std::copy_n(kept(y), 2 * columns_.count, row + 2 * columns_.first);
            std::fill_n(row + 2 * end, 2 * ((leavesReals_ ? width / 2 + 1 : width) - end), 0.0f);
        }
    }

    Fftw::Plan plan(const std::string& work, const std::function<fftwf_plan(unsigned)>& make) {
        const std::string key =
            keyOf("pruned-" + work, this->padded_) + "-" + std::to_string(this->image().height) +
            "-" + std::to_string(columns_.first) + "-" + std::to_string(columns_.count);
        return this->build_->plan(key, Rigor::Patient, make);
    }

    void planRows() {
        const int width = static_cast<int>(this->padded_.width);
        const int rows = static_cast<int>(this->image().height), pitch = static_cast<int>(pitch_);
        forwardRows_ = plan("r2c", [&](unsigned flags) {
            return this->build_->planManyForward(1, &width, rows, reals_.data(), nullptr, 1, width,
                                                 half_.complex(), nullptr, 1, pitch,
                                                 flags | FFTW_DESTROY_INPUT);
        });
        inverseRows_ = plan(leavesReals_ ? "c2r" : "c2c", [&](unsigned flags) {
            return leavesReals_ ? this->build_->planManyInverse(
                                      1, &width, rows, half_.complex(), nullptr, 1, pitch,
                                      reals_.data(), nullptr, 1, width, flags | FFTW_DESTROY_INPUT)
                                : this->build_->planMany(1, &width, rows, whole_.complex(), nullptr,
                                                         1, width, whole_.complex(), nullptr, 1,
                                                         width, FFTW_BACKWARD, flags);
        });
    }

    Fftw::Plan columnsPlan(int direction) {
        const int height = static_cast<int>(this->padded_.height);
        const int pitch = static_cast<int>(pitch_), count = static_cast<int>(columns_.count);
        fftwf_complex* const first = half_.complex() + columns_.first;
        return plan(direction == FFTW_FORWARD ? "columns" : "columns-back", [&](unsigned flags) {
            return this->build_->planMany(1, &height, count, first, nullptr, pitch, 1, first,
                                          nullptr, pitch, 1, direction, flags);
        });
    }

    Pipeline::Columns columns_;
    long pitch_;
    bool leavesReals_, hasRealGains_;
    AlignedFloats reals_, half_, whole_, gains_;
    Fftw::Plan forwardRows_, forwardColumns_, backwardColumns_, inverseRows_;
};

}  // namespace

template <class T>
std::unique_ptr<PelPeer<T>> fftwPrunedPlane(const Pipeline& work, Build build,
                                            Pipeline::Columns columns) {
    return std::make_unique<PrunedPlane<T>>(work, std::move(build), columns);
}

template <class T>
void addFftwPruned(PelPeers<T>& peers, const Pipeline& work, const Build& build) {
    const auto columns = work.columnsOfLeftHalf();
    if (!columns) return;
    peers.push_back(fftwPrunedPlane<T>(work, build, *columns));
    addFftwPrunedPanels<T>(peers, work, build, *columns);
}

template void addFftwPruned(PelPeers<unsigned char>&, const Pipeline&, const Build&);
template void addFftwPruned(PelPeers<unsigned short>&, const Pipeline&, const Build&);

}  // namespace bench
