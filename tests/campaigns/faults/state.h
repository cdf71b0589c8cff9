// The state that the operands of an operation are in, and what a failed call may leave of it.
#pragma once

#include <map>
#include <set>
#include <string>

#include "campaigns/faults/operands.h"

namespace faults {

/// All that can be known of an operand.
struct Picture {
    bool holds = true;           ///< data, pels or a response
    bool isOverwritten = false;  ///< marked as overwritten by an inverse
    std::string size{};          ///< with the size of the image and its place
    std::string band{};          ///< of rows
    std::string content{};       ///< everything, as bytes

    friend bool operator==(const Picture&, const Picture&) = default;
};

/// Every operand's name and state.
using State = std::map<std::string, Picture>;
State stateOf(Operands& operands);

/// The names of the operands whose state differs.
std::set<std::string> changed(const State& before, const State& after);

/// What a call that fails may leave of an operand that it was to change.
enum class Left {
    /// The same, or after a poll: an image of the caller's that has its size and place, or a new
    /// one that has those of the result; its pels may be any.
    kImage,
    /// The same, or an image that was the caller's, whose pels may be any.
    kPels,
    /// The same, or a plane of the result's size and place that counts as frequencies, partly made.
    kPlane,
    /// Likewise, but the same unless a poll failed.
    kPlaneInPlace,
    /// The same, or after a poll: a plane that an inverse has overwritten in part or as a whole and
    /// that is marked so once the call comes to that; then it is the result.
    kOverwritten,
    /// No data and no response, or all that was loaded before the archive failed.
    kLoaded
};

/// Where a call failed.
struct Failure {
    bool isPoll;       ///< an allocation otherwise
    bool isAfterMark;  ///< a poll behind the place where an inverse marks what it has overwritten
};

/// Whether a failed call may leave an operand so; `good` is what it is when nothing fails.
bool isLeft(Left left, const Failure& failure, const Picture& before, const Picture& after,
            const Picture& good);

}  // namespace faults
