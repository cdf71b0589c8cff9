// What the model knows of buffers, images and the rest of a small world, as plain values.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "reference/fft/transforms.h"
#include "reference/freqfilt/lobe.h"
#include "reference/freqfilt/ring.h"

namespace model {

using Byte = unsigned char;
using Short = unsigned short;
using reference::Poll;

/// What a call of the model throws: the text that the library's exception is compared with.
struct Thrown {
    std::string text;
};

/// A poll that failed.
struct Stopped : Thrown {};

struct Sides {
    long x = 0;
    long y = 0;

    friend bool operator==(const Sides&, const Sides&) = default;
};

/// A client transform, if there is one: e00, e01, e10, e11, x, y.
struct Xform {
    bool isSet = false;
    std::array<double, 6> values{};

    friend bool operator==(const Xform&, const Xform&) = default;
};

/// A frequency buffer. `storage` begins with the plane; what stands behind it is left from larger
/// planes and shows again when the plane grows.
struct Buffer {
    bool hasData = false;
    long width = 0;
    long height = 0;
    long imageWidth = 0;
    long imageHeight = 0;
    bool masked = false;
    long maskedMiny = 0;
    long maskedMaxy = 0;
    Xform xform{};
    long x = 0;
    long y = 0;
    bool inverseComputed = false;
    std::vector<float> storage{};

    /// A poll failed while the plane was made: its elements may be any.
    bool anyElements = false;
    /// What stands behind the plane is the library's business.
    bool anyRest = false;
};

/// The memory that views share.
template <class T>
struct Pels {
    long step = 0;
    std::vector<T> values{};
};

/// A pel buffer: a window of shared memory, or none.
template <class T>
struct Image {
    std::shared_ptr<Pels<T>> pels{};
    long left = 0;
    long top = 0;
    long width = 0;
    long height = 0;
    long x = 0;
    long y = 0;
    Xform xform{};

    /// A call that wrote pels was ended: they may be any. With a result's size the transform may be
    /// any too, and an output that was not bound may have become an image of that size.
    bool anyPels = false;
    Sides result{};

    bool isBound() const { return pels != nullptr; }
    T& at(long column, long row) const {
        return pels->values[static_cast<std::size_t>((top + row) * pels->step + left + column)];
    }
};

/// Images of one type of pel.
template <class T>
using Images = std::array<Image<T>, 3>;

/// Who is called before a filter changes; stays with the filter whatever is assigned to it.
struct Watcher {
    /// Counts the calls; null without a watcher.
    long* calls = nullptr;
    bool throws = false;

    Watcher() = default;
    Watcher(const Watcher&) {}
    Watcher& operator=(const Watcher&) { return *this; }
    void install(long* counter, bool mayThrow) {
        calls = counter;
        throws = mayThrow;
    }
    void announce() const {
        if (calls == nullptr) return;
        ++*calls;
        if (throws) throw Thrown{"Interrupted"};
    }
};

/// A filter that is built from parameters, `response.given`.
template <class Response>
struct ParametricFilter {
    bool isInitialized = false;
    bool hasResponse = false;
    Response response{};
    Watcher watcher{};
};
using RingFilter = ParametricFilter<reference::Ring>;
using LobeFilter = ParametricFilter<reference::Lobe>;

struct ImageFilter {
    bool isInitialized = false;
    Buffer image{};
    Watcher watcher{};
};

/// An error object: the number of its class, and its message.
struct Error {
    long leaf = -1;
    std::optional<std::string> message{};

    bool isThere() const { return leaf >= 0; }
};

/// All that the chains work on.
struct World {
    std::array<Buffer, 3> buffers{};
    Images<double> doubles{};
    Images<Byte> bytes{};
    Images<Short> shorts{};
    std::array<RingFilter, 2> bandPasses{};
    std::array<RingFilter, 2> bandRejects{};
    std::array<LobeFilter, 2> gabors{};
    std::array<LobeFilter, 2> gaborRejects{};
    std::array<ImageFilter, 2> imageFilters{};
    std::array<Error, 2> errors{Error{2, "at first"}, Error{3, {}}};
    /// What the last call answered.
    std::vector<double> answer{};
    /// The bytes that it stored.
    std::string record{};
    /// How often watchers were called.
    long watched = 0;
    Poll poll = reference::noPoll;
    /// Behind the polls that a call must make: those beyond them that the library made.
    Poll morePolls = reference::noPoll;
};

template <class T>
Images<T>& imagesOf(World& world) {
    if constexpr (std::is_same_v<T, Byte>) {
        return world.bytes;
    } else if constexpr (std::is_same_v<T, Short>) {
        return world.shorts;
    } else {
        return world.doubles;
    }
}

}  // namespace model
