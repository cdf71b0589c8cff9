// The state that the operands of an operation are in, and what a failed call may leave of it.
#include "campaigns/faults/state.h"

#include <filt/fft/internal/buffer_access.h>

#include <sstream>

#include "support/streams.h"

namespace faults {

namespace {

using Access = mvi::BufferAccess;

template <class... T>
std::string listed(const T&... values) {
    std::ostringstream out;
    ((out << values << ' '), ...);
    return out.str();
}

Picture pictureOf(const std::string& text) {
    return {.content = text};
}

Picture pictureOf(mvFrequencyBuffer& b) {
    const mvPair<long> offset = Access::offset(b);
    return {.holds = Access::data(b) != nullptr,
            .isOverwritten = Access::inverseComputed(b),
            .size = listed(Access::width(b), Access::height(b), Access::imageWidth(b),
                           Access::imageHeight(b), offset.x, offset.y),
            .band = listed(Access::masked(b), Access::maskedMiny(b), Access::maskedMaxy(b)),
            .content = recordOf(b)};
}

template <class T>
Picture pictureOf(mvPelBuffer<T>& image) {
    std::ostringstream out;
    mv2XformCache xform = image.xformCache();
    mvArchive ar(out);
    ar || xform;
    for (long y = 0; y < image.height(); ++y) {
        out.write(reinterpret_cast<const char*>(image.pointToRow(y)),
                  image.width() * static_cast<long>(sizeof(T)));
    }
    return {.holds = image.isBound(),
            .size = listed(image.width(), image.height(), image.offset().x, image.offset().y),
            .content = out.str()};
}

Picture pictureOf(mvPersistent& object) {
    return {.content = recordOf(object)};
}

template <class F>
requires std::is_base_of_v<mvFrequencyFilter, F> Picture pictureOf(F& filter) {
    Picture picture{.content = recordOf(filter)};
    try {
        filter.supportWidth();
    } catch (const mvFrequencyDefs::Uninitialized&) {
        picture.holds = false;
    }
    return picture;
}

}  // namespace

State stateOf(Operands& operands) {
    State state;
    visitOperands(operands,
                  [&](const std::string& name, auto& object) { state[name] = pictureOf(object); });
    return state;
}

std::set<std::string> changed(const State& before, const State& after) {
    std::set<std::string> names;
    for (const auto& [name, picture] : before) {
        if (!(after.at(name) == picture)) names.insert(name);
    }
    return names;
}

bool isLeft(Left left, const Failure& failure, const Picture& before, const Picture& after,
            const Picture& good) {
    const bool isPartlyMade = after.holds && !after.isOverwritten && after.size == good.size;
    switch (left) {
        case Left::kImage:
            return failure.isPoll && after.holds &&
                   after.size == (before.holds ? before.size : good.size);
        case Left::kPels:
            return before.holds && after.holds && after.size == before.size;
        case Left::kPlane:
            return isPartlyMade;
        case Left::kPlaneInPlace:
            return failure.isPoll && isPartlyMade;
        case Left::kOverwritten:
            if (failure.isAfterMark) return after == good;
            return failure.isPoll && after.holds && !after.isOverwritten &&
                   after.size == before.size && after.band == before.band;
        case Left::kLoaded:
            return !after.holds || after == good;
    }
    return false;
}

}  // namespace faults
