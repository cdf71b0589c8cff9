// What takes part in a contest.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace bench {

/// Complex planes are interleaved pairs row by row, images one value a pel.
using Values = std::vector<float>;

struct Size {
    long width;
    long height;

    long count() const { return width * height; }
};

/// One library's way of doing a piece of work. The constructor plans and allocates.
class Peer {
  public:
    explicit Peer(std::string name) : name_(std::move(name)) {}
    virtual ~Peer() = default;
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    const std::string& name() const { return name_; }

    /// Lays fresh input where the peer needs it; not timed.
    virtual void load(const Values& input) = 0;

    /// The work, timed.
    virtual void run() = 0;

    /// The answer, in the layout that the contest compares; empty when there is nothing to compare.
    virtual Values result() const { return {}; }

  private:
    std::string name_;
};

using Peers = std::vector<std::unique_ptr<Peer>>;

}  // namespace bench
