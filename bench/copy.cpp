// Copying memory: what other work is measured by.
#include <cstdlib>
#include <cstring>
#include <new>

#include "transforms.h"

namespace bench {
namespace {

class Copy : public Peer {
  public:
    Copy(long bytes, bool toNewMemory)
        : Peer(toNewMemory ? "copy-to-new-memory" : "copy"),
          bytes_(static_cast<std::size_t>(bytes)),
          toNewMemory_(toNewMemory),
          from_(bytes / 4 + 1),
          to_(toNewMemory ? 1 : bytes / 4 + 1) {}

    void load(const Values&) override { made_.reset(); }

    void run() override {
        void* to = to_.data();
        if (toNewMemory_) {
            made_.reset(std::malloc(bytes_), &std::free);
            to = made_.get();
            if (to == nullptr) throw std::bad_alloc();
        }
        std::memcpy(to, from_.data(), bytes_);
    }

  private:
    std::size_t bytes_;
    bool toNewMemory_;
    AlignedFloats from_, to_;
    std::shared_ptr<void> made_;
};

}  // namespace

std::unique_ptr<Peer> copy(long bytes, bool toNewMemory) {
    return std::make_unique<Copy>(bytes, toNewMemory);
}

}  // namespace bench
