// The pipelines as a careful engineer writes them with FFTW: real transforms where the filter
// allows, plans and responses made beforehand, the scale folded into the response. The bounds of
// the loops that write pels are local, since bytes might overlap anything that is a member.
#include <algorithm>
#include <cmath>
#include <limits>

#include "pipeline.h"

namespace bench {
namespace {

using Build = std::shared_ptr<const Fftw>;

std::string keyOf(const char* work, Size size) {
    return std::string(work) + "-" + std::to_string(size.width) + "x" + std::to_string(size.height);
}

// The image, padded as reals, and the left half of its spectrum.
template <class T>
class FromImage : public Peer {
  public:
    FromImage(std::string name, const Pipeline& work, Build build)
        : Peer(std::move(name)),
          image_(work.image),
          padded_(work.padded),
          build_(std::move(build)),
          pels_(static_cast<std::size_t>(image_.count())),
          out_(pels_.size()),
          real_(padded_.count()),
          half_((padded_.width + 2) * padded_.height) {
        forward_ = build_->plan(keyOf("r2c", padded_), Rigor::Measure, [&](unsigned flags) {
            return build_->planForward2d(static_cast<int>(padded_.height),
                                         static_cast<int>(padded_.width), real_.data(),
                                         half_.complex(), flags | FFTW_DESTROY_INPUT);
        });
    }

    void load(const Values& input) override {
        std::transform(input.begin(), input.end(), pels_.begin(),
                       [](float pel) { return static_cast<T>(pel); });
    }
    Values result() const override { return {out_.begin(), out_.end()}; }

  protected:
    void transformForward() {
        for (long y = 0; y < image_.height; ++y) {
            const T* const from = pels_.data() + y * image_.width;
            float* const to = real_.data() + y * padded_.width;
            for (long x = 0; x < image_.width; ++x) to[x] = from[x];
            std::fill(to + image_.width, to + padded_.width, 0.0f);
        }
        std::fill(real_.data() + image_.height * padded_.width, real_.data() + real_.size(), 0.0f);
        build_->execute(forward_.get());
    }

    static T pelOf(float magnitude) {
        constexpr float kFull = std::numeric_limits<T>::max();
        return static_cast<T>(static_cast<int>(std::min(magnitude + 0.5f, kFull)));
    }

    Size image_, padded_;
    Build build_;
    std::vector<T> pels_, out_;
    AlignedFloats real_, half_;
    Fftw::Plan forward_;
};

// A filter that leaves a real image: half the spectrum and a real inverse do.
template <class T>
class RealFilter : public FromImage<T> {
  public:
    RealFilter(const Pipeline& work, Build build)
        : FromImage<T>(build->name(), work, build),
          isComplex_(work.kind == FilterKind::Image),
          response_(this->half_.size()) {
        const Size size = this->padded_;
        inverse_ = build->plan(keyOf("c2r", size), Rigor::Measure, [&](unsigned flags) {
            return build->planInverse2d(static_cast<int>(size.height), static_cast<int>(size.width),
                                        this->half_.complex(), this->real_.data(), flags);
        });
        const float scale = 1.0f / static_cast<float>(size.count());
        float* to = response_.data();
        for (long y = 0; y < size.height; ++y) {
            for (long x = 0; x <= size.width / 2; ++x) {
                *to++ = work.at(x, y).real() * scale;
                if (isComplex_) *to++ = work.at(x, y).imag() * scale;
            }
        }
    }

    void run() override {
        this->transformForward();
        if (isComplex_) {
            multiplyComplex();
        } else {
            multiplyReal();
        }
        this->build_->execute(inverse_.get());
        const Size image = this->image_;
        for (long y = 0; y < image.height; ++y) {
            const float* const from = this->real_.data() + y * this->padded_.width;
            T* const to = this->out_.data() + y * image.width;
            for (long x = 0; x < image.width; ++x) to[x] = this->pelOf(std::abs(from[x]));
        }
    }

  private:
    void multiplyReal() {
        const float* const factors = response_.data();
        float* const values = this->half_.data();
        for (long i = 0; i < this->half_.size() / 2; ++i) {
            values[2 * i] *= factors[i];
            values[2 * i + 1] *= factors[i];
        }
    }
    void multiplyComplex() {
        const float* const factors = response_.data();
        float* const values = this->half_.data();
        for (long i = 0; i < this->half_.size(); i += 2) {
            const float re = values[i], im = values[i + 1];
            values[i] = re * factors[i] - im * factors[i + 1];
            values[i + 1] = re * factors[i + 1] + im * factors[i];
        }
    }

    bool isComplex_;
    AlignedFloats response_;
    Fftw::Plan inverse_;
};

// One lobe leaves a complex image: only the lobe is filtered into a plane of zeros and transformed
// back, rows without data not at all when `banded`.
template <class T>
class LobeFilter : public FromImage<T> {
  public:
    LobeFilter(const Pipeline& work, Build build, bool banded)
        : FromImage<T>(build->name() + (banded ? "-banded" : ""), work, build),
          plane_(2 * work.padded.count()) {
        findRuns(work);
        if (banded) {
            planBanded();
        } else {
            planWhole();
        }
    }

    void run() override {
        this->transformForward();
        filter();
        for (const auto& plan : inverse_) this->build_->execute(plan.get());
        const Size image = this->image_;
        for (long y = 0; y < image.height; ++y) {
            const float* const from = plane_.data() + y * 2 * this->padded_.width;
            T* const to = this->out_.data() + y * image.width;
            for (long x = 0; x < image.width; ++x) {
                const float re = from[2 * x], im = from[2 * x + 1];
                to[x] = this->pelOf(std::sqrt(re * re + im * im));
            }
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
        inverse_.push_back(
            this->build_->plan(keyOf("c2c-back", size), Rigor::Measure, [&](unsigned flags) {
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
        const std::string key = keyOf("c2c-back-lines", this->padded_) + "-" +
                                std::to_string(count) + "x" + std::to_string(stride);
        inverse_.push_back(this->build_->plan(key, Rigor::Measure, [&](unsigned flags) {
            return this->build_->planMany(1, &n, static_cast<int>(count), data, nullptr,
                                          static_cast<int>(stride), static_cast<int>(distance),
                                          data, nullptr, static_cast<int>(stride),
                                          static_cast<int>(distance), FFTW_BACKWARD, flags);
        }));
    }

    std::vector<Run> runs_;
    std::vector<Rows> rows_;
    AlignedFloats plane_;
    std::vector<Fftw::Plan> inverse_;
};

}  // namespace

template <class T>
void addFftwPipelines(Peers& peers, const Pipeline& work, const Build& build) {
    if (work.kind == FilterKind::Gabor) {
        peers.push_back(std::make_unique<LobeFilter<T>>(work, build, false));
        peers.push_back(std::make_unique<LobeFilter<T>>(work, build, true));
    } else {
        peers.push_back(std::make_unique<RealFilter<T>>(work, build));
    }
}

template void addFftwPipelines<unsigned char>(Peers&, const Pipeline&, const Build&);
template void addFftwPipelines<unsigned short>(Peers&, const Pipeline&, const Build&);

}  // namespace bench
