// The pipelines as a careful engineer writes them with FFTW: real transforms where the filter
// allows, plans and responses made beforehand, the scale folded into the response.
#include <algorithm>

#include "fftw_pels.h"

namespace bench {
namespace {

using Build = std::shared_ptr<const Fftw>;

// The image, padded as reals, and the left half of its spectrum, in one place or in two.
template <class T>
class Pipelined : public FftwPels<T> {
  public:
    Pipelined(const std::string& suffix, const Pipeline& work, Build build, FftwForm form)
        : FftwPels<T>(form.suffix() + suffix, work, std::move(build)),
          form_(form),
          half_((work.padded.width + 2) * work.padded.height),
          real_(form.place == Place::Over ? half_ : AlignedFloats(work.padded.count())),
          realPitch_(form.place == Place::Over ? work.padded.width + 2 : work.padded.width) {}

    void run() final {
        if (form_.rigor == Rigor::Estimate) makePlans();
        transformForward();
        filterAndTransformBack();
    }

  protected:
    virtual void filterAndTransformBack() = 0;

    virtual void makePlans() {
        const Size size = this->padded_;
        forward_ = plan(keyOf("r2c", size, form_.place), [&](unsigned flags) {
            return this->build_->planForward2d(static_cast<int>(size.height),
                                               static_cast<int>(size.width), real_.data(),
                                               half_.complex(), flags | FFTW_DESTROY_INPUT);
        });
    }

    Fftw::Plan plan(const std::string& key, const std::function<fftwf_plan(unsigned)>& make) {
        return this->build_->plan(key, form_.rigor, make);
    }

    FftwForm form_;
    AlignedFloats half_, real_;
    long realPitch_;

  private:
    void transformForward() {
        const long height = this->image().height;
        for (long y = 0; y < height; ++y) this->readRow(y, real_.data() + y * realPitch_);
        std::fill(real_.data() + height * realPitch_, real_.data() + real_.size(), 0.0f);
        this->build_->execute(forward_.get());
    }

    Fftw::Plan forward_;
};

// A filter that leaves a real image: half the spectrum and a real inverse do.
template <class T>
class RealFilter : public Pipelined<T> {
  public:
    RealFilter(const Pipeline& work, Build build, FftwForm form)
        : Pipelined<T>("", work, std::move(build), form),
          hasRealGains_(work.hasRealGains()),
          response_(this->half_.size()) {
        makePlans();
        const float scale = this->scaleOf(this->padded_);
        float* to = response_.data();
        for (long y = 0; y < this->padded_.height; ++y) {
            for (long x = 0; x <= this->padded_.width / 2; ++x) {
                *to++ = work.at(x, y).real() * scale;
                if (!hasRealGains_) *to++ = work.at(x, y).imag() * scale;
            }
        }
    }

  protected:
    void makePlans() override {
        Pipelined<T>::makePlans();
        const Size size = this->padded_;
        inverse_ = this->plan(keyOf("c2r", size, this->form_.place), [&](unsigned flags) {
            return this->build_->planInverse2d(static_cast<int>(size.height),
                                               static_cast<int>(size.width), this->half_.complex(),
                                               this->real_.data(), flags);
        });
    }

    void filterAndTransformBack() override {
        multiply(this->half_.data(), response_.data(), this->half_.size() / 2, hasRealGains_);
        this->build_->execute(inverse_.get());
        const long height = this->image().height;
        for (long y = 0; y < height; ++y) {
            this->writeReals(y, this->real_.data() + y * this->realPitch_);
        }
    }

  private:
    bool hasRealGains_;
    AlignedFloats response_;
    Fftw::Plan inverse_;
};

// One lobe leaves a complex image: only the lobe is filtered into a plane of zeros and transformed
// back, rows without data not at all when `banded`.
template <class T>
class LobeFilter : public Pipelined<T> {
  public:
    LobeFilter(const Pipeline& work, Build build, FftwForm form, bool banded)
        : Pipelined<T>(banded ? "-banded" : "", work, std::move(build), form),
          banded_(banded),
          plane_(2 * work.padded.count()) {
        findRuns(work);
        makePlans();
    }

  protected:
    void makePlans() override {
        Pipelined<T>::makePlans();
        inverse_.clear();
        if (banded_) {
            planBanded();
        } else {
            planWhole();
        }
    }

    void filterAndTransformBack() override {
        filter();
        for (const auto& plan : inverse_) this->build_->execute(plan.get());
        const long height = this->image().height;
        for (long y = 0; y < height; ++y) {
            this->template writeMagnitudes<2>(y, plane_.data() + y * 2 * this->padded_.width, 1);
        }
    }

  private:
    // Consecutive elements of a row that the filter keeps.
    struct Run {
        long x, y;
        std::vector<float> factors;
    };
    struct Rows {
        long first, count;
    };

    void findRuns(const Pipeline& work) {
        const float scale = 1.0f / static_cast<float>(work.padded.count());
        for (long y = 0; y < work.padded.height; ++y) {
            if (!work.rowHasData[static_cast<std::size_t>(y)]) continue;
            if (rows_.empty() || rows_.back().first + rows_.back().count != y) {
                rows_.push_back({y, 0});
            }
            ++rows_.back().count;
            for (long x = 0; x < work.padded.width; ++x) {
                if (work.at(x, y) == std::complex<float>()) continue;
                if (runs_.empty() || runs_.back().y != y || runEnd(runs_.back()) != x) {
                    runs_.push_back({x, y, {}});
                }
                runs_.back().factors.push_back(work.at(x, y).real() * scale);
            }
        }
    }
    static long runEnd(const Run& run) { return run.x + static_cast<long>(run.factors.size()); }

    // Elements right of the middle are the conjugates of the mirrored ones.
    void filter() {
        const long width = this->padded_.width, height = this->padded_.height;
        std::fill_n(plane_.data(), plane_.size(), 0.0f);
        for (const Run& run : runs_) {
            float* const to = plane_.data() + 2 * (run.y * width + run.x);
            const float* const row = this->half_.data() + run.y * (width + 2);
            const float* const mirror =
                this->half_.data() + (height - run.y) % height * (width + 2);
            for (long i = 0; i < static_cast<long>(run.factors.size()); ++i) {
                const long x = run.x + i;
                const float factor = run.factors[static_cast<std::size_t>(i)];
                const bool left = x <= width / 2;
                const float* const from = left ? row + 2 * x : mirror + 2 * (width - x);
                to[2 * i] = from[0] * factor;
                to[2 * i + 1] = left ? from[1] * factor : -from[1] * factor;
            }
        }
    }

    void planWhole() {
        const Size size = this->padded_;
        inverse_.push_back(this->plan(keyOf("c2c-back", size), [&](unsigned flags) {
            return this->build_->planDft2d(static_cast<int>(size.height),
                                           static_cast<int>(size.width), plane_.complex(),
                                           plane_.complex(), FFTW_BACKWARD, flags);
        }));
    }

    void planBanded() {
        const Size size = this->padded_;
        for (const Rows& rows : rows_) {
            planLines(size.width, rows.count, 1, size.width,
                      plane_.complex() + rows.first * size.width);
        }
        planLines(size.height, size.width, size.width, 1, plane_.complex());
    }

    void planLines(long length, long count, long stride, long distance, fftwf_complex* data) {
        const int n = static_cast<int>(length);
        const std::string work =
            "c2c-back-" + std::to_string(count) + "-by-" + std::to_string(stride);
        inverse_.push_back(this->plan(keyOf(work, this->padded_), [&](unsigned flags) {
            return this->build_->planMany(1, &n, static_cast<int>(count), data, nullptr,
                                          static_cast<int>(stride), static_cast<int>(distance),
                                          data, nullptr, static_cast<int>(stride),
                                          static_cast<int>(distance), FFTW_BACKWARD, flags);
        }));
    }

    bool banded_;
    std::vector<Run> runs_;
    std::vector<Rows> rows_;
    AlignedFloats plane_;
    std::vector<Fftw::Plan> inverse_;
};

}  // namespace

template <class T>
void addFftwPipelines(PelPeers<T>& peers, const Pipeline& work, const Build& build, FftwForm form) {
    if (work.leavesReals()) {
        peers.push_back(std::make_unique<RealFilter<T>>(work, build, form));
        return;
    }
    peers.push_back(std::make_unique<LobeFilter<T>>(work, build, form, false));
    if (form.rigor != Rigor::Estimate) {
        peers.push_back(std::make_unique<LobeFilter<T>>(work, build, form, true));
    }
}

template void addFftwPipelines(PelPeers<unsigned char>&, const Pipeline&, const Build&, FftwForm);
template void addFftwPipelines(PelPeers<unsigned short>&, const Pipeline&, const Build&, FftwForm);

}  // namespace bench
