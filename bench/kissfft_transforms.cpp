// kissfft, plain code without vector instructions, as a peer.
#include <kissfft/kiss_fftnd.h>

#include <algorithm>
#include <cstdlib>

#include "transforms.h"

namespace bench {
namespace {

kiss_fft_cpx* complexOf(const AlignedFloats& floats) {
    return reinterpret_cast<kiss_fft_cpx*>(floats.data());
}

class Complex : public Peer {
  public:
    explicit Complex(Size size)
        : Peer("kissfft"),
          in_(2 * size.count()),
          out_(2 * size.count()),
          plan_(kiss_fftnd_alloc(Sides(size).sides, 2, 0, nullptr, nullptr), &std::free) {}

    void load(const Values& input) override { std::copy(input.begin(), input.end(), in_.data()); }
    void run() override { kiss_fftnd(plan_.get(), complexOf(in_), complexOf(out_)); }
    Values result() const override { return {out_.data(), out_.data() + out_.size()}; }

    struct Sides {
        explicit Sides(Size size)
            : sides{static_cast<int>(size.height), static_cast<int>(size.width)} {}
        int sides[2];
    };

  private:
    AlignedFloats in_, out_;
    std::shared_ptr<kiss_fftnd_state> plan_;
};

}  // namespace

std::unique_ptr<Peer> kissfftComplex(Size size) {
    return std::make_unique<Complex>(size);
}

}  // namespace bench
