// FFTW's transforms as peers.
#include <algorithm>
#include <functional>

#include "transforms.h"

namespace bench {
namespace {

using Build = std::shared_ptr<const Fftw>;

// Floats in, floats out, and a few plans to execute one after the other.
class Planned : public Peer {
  public:
    struct Layout {
        AlignedFloats in;
        long inPitch;
        AlignedFloats out;
        long rows;
    };

    Planned(std::string name, Build build, Layout layout, std::vector<Fftw::Plan> plans)
        : Peer(std::move(name)),
          build_(std::move(build)),
          layout_(std::move(layout)),
          plans_(std::move(plans)) {}

    void load(const Values& input) override {
        const long width = static_cast<long>(input.size()) / layout_.rows;
        for (long y = 0; y < layout_.rows; ++y) {
            std::copy_n(input.data() + y * width, width, layout_.in.data() + y * layout_.inPitch);
        }
    }
    void run() override {
        for (const auto& plan : plans_) build_->execute(plan.get());
    }
    Values result() const override {
        return {layout_.out.data(), layout_.out.data() + layout_.out.size()};
    }

  private:
    Build build_;
    Layout layout_;
    std::vector<Fftw::Plan> plans_;
};

// What a caller pays who has no plan yet.
class PlannedEachTime : public Peer {
  public:
    PlannedEachTime(std::string name, Build build, AlignedFloats in, AlignedFloats out,
                    std::function<fftwf_plan(unsigned)> make)
        : Peer(std::move(name)), build_(std::move(build)), in_(in), out_(out), make_(make) {}

    void load(const Values& input) override { std::copy(input.begin(), input.end(), in_.data()); }
    void run() override { build_->execute(build_->plan("", Rigor::Estimate, make_).get()); }
    Values result() const override { return {out_.data(), out_.data() + out_.size()}; }

  private:
    Build build_;
    AlignedFloats in_, out_;
    std::function<fftwf_plan(unsigned)> make_;
};

// An input may be spoilt unless it is to be kept.
unsigned with(unsigned flags, Place place) {
    return flags | (place == Place::BesideKept ? FFTW_PRESERVE_INPUT : FFTW_DESTROY_INPUT);
}

// All rows of `width` elements, or all columns, of a plane of such rows, in place.
Fftw::Plan linesPlan(const Fftw& build, const std::string& key, Size plane, bool rows,
                     fftwf_complex* data) {
    const int length = static_cast<int>(rows ? plane.width : plane.height);
    const int count = static_cast<int>(rows ? plane.height : plane.width);
    const int stride = rows ? 1 : static_cast<int>(plane.width);
    const int distance = rows ? static_cast<int>(plane.width) : 1;
    return build.plan(key + (rows ? "-rows" : "-columns"), Rigor::Measure, [&](unsigned flags) {
        return build.planMany(1, &length, count, data, nullptr, stride, distance, data, nullptr,
                              stride, distance, FFTW_FORWARD, flags);
    });
}

}  // namespace

void addFftwComplex(Peers& peers, Size size, const Build& build, FftwForm form) {
    const AlignedFloats in(2 * size.count());
    const AlignedFloats out = form.place == Place::Over ? in : AlignedFloats(in.size());
    const auto make = [=](unsigned flags) {
        return build->planDft2d(static_cast<int>(size.height), static_cast<int>(size.width),
                                in.complex(), out.complex(), FFTW_FORWARD, with(flags, form.place));
    };
    if (form.rigor == Rigor::Estimate) {
        peers.push_back(
            std::make_unique<PlannedEachTime>(build->name() + form.suffix(), build, in, out, make));
        return;
    }
    peers.push_back(std::make_unique<Planned>(
        build->name() + form.suffix(), build, Planned::Layout{in, 2 * size.width, out, size.height},
        std::vector{build->plan(keyOf("c2c", size, form.place), form.rigor, make)}));
}

void addFftwComplexTwoStep(Peers& peers, Size size, const Build& build) {
    const AlignedFloats plane(2 * size.count());
    const std::string key = keyOf("c2c-lines", size);
    peers.push_back(std::make_unique<Planned>(
        build->name() + "-two-step", build,
        Planned::Layout{plane, 2 * size.width, plane, size.height},
        std::vector{linesPlan(*build, key, size, true, plane.complex()),
                    linesPlan(*build, key, size, false, plane.complex())}));
}

void addFftwReal(Peers& peers, Size size, const Build& build, FftwForm form) {
    const AlignedFloats half((size.width + 2) * size.height);
    const AlignedFloats image = form.place == Place::Over ? half : AlignedFloats(size.count());
    const auto make = [=](unsigned flags) {
        return build->planForward2d(static_cast<int>(size.height), static_cast<int>(size.width),
                                    image.data(), half.complex(), with(flags, form.place));
    };
    if (form.rigor == Rigor::Estimate) {
        peers.push_back(std::make_unique<PlannedEachTime>(build->name() + form.suffix(), build,
                                                          image, half, make));
        return;
    }
    const long pitch = form.place == Place::Over ? size.width + 2 : size.width;
    peers.push_back(std::make_unique<Planned>(
        build->name() + form.suffix(), build, Planned::Layout{image, pitch, half, size.height},
        std::vector{build->plan(keyOf("r2c", size, form.place), form.rigor, make)}));
}

void addFftwRealTwoStep(Peers& peers, Size size, const Build& build) {
    const AlignedFloats image(size.count());
    const Size halfSize{size.width / 2 + 1, size.height};
    const AlignedFloats half(2 * halfSize.count());
    const int width = static_cast<int>(size.width);
    const auto rows = build->plan(keyOf("r2c-rows", size), Rigor::Measure, [&](unsigned flags) {
        return build->planManyForward(1, &width, static_cast<int>(size.height), image.data(),
                                      nullptr, 1, width, half.complex(), nullptr, 1,
                                      static_cast<int>(halfSize.width), flags | FFTW_DESTROY_INPUT);
    });
    peers.push_back(std::make_unique<Planned>(
        build->name() + "-two-step", build, Planned::Layout{image, size.width, half, size.height},
        std::vector{rows,
                    linesPlan(*build, keyOf("r2c-lines", size), halfSize, false, half.complex())}));
}

}  // namespace bench
