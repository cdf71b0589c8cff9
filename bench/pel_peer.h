// A peer that makes pels of pels.
#pragma once

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "peer.h"

namespace bench {

/// One image in, one of the same size out. T is the pel type; load and result: one value a pel.
template <class T>
class PelPeer : public Peer {
  public:
    PelPeer(std::string name, Size image) : Peer(std::move(name)), image_(image) {}

    Size image() const { return image_; }
    virtual T* inputRow(long y) = 0;
    virtual const T* resultRow(long y) const = 0;

    /// What an application does between two images.
    virtual void prepare() {}

    void load(const Values& input) override {
        prepare();
        for (long y = 0; y < image_.height; ++y) {
            const float* const row = input.data() + y * image_.width;
            std::transform(row, row + image_.width, inputRow(y),
                           [](float pel) { return static_cast<T>(pel); });
        }
    }
    Values result() const override {
        Values pels;
        for (long y = 0; y < image_.height; ++y) {
            pels.insert(pels.end(), resultRow(y), resultRow(y) + image_.width);
        }
        return pels;
    }

  private:
    Size image_;
};

template <class T>
using PelPeers = std::vector<std::unique_ptr<PelPeer<T>>>;

}  // namespace bench
