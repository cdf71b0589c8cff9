// An operation, as the library does it and as the model does.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "campaigns/model/library.h"
#include "campaigns/model/state.h"

namespace model {

using Arguments = std::vector<long>;

/// What an argument is, and so what it is drawn from.
enum class Domain {
    kObject,       ///< the number of a buffer or an image
    kOtherObject,  ///< another one than the argument before
    kSize,         ///< a side that there is
    kAnySize,      ///< a side, sometimes one that is refused
    kPlace,        ///< an offset or a coordinate
    kFlag,
    kSeed,
    kForm,     ///< of a call: keep the source, destroy it, take it as const
    kMapping,  ///< of numbers to bytes
    kFilter,   ///< the number of a filter or of an error object
    kLeaf,     ///< the class of an error
    kFirst,    ///< that of an image or a filter, most often of the one that is made first
    kNumber,   ///< what a parameter of a filter is made from
    kPadded,   ///< a padded side, sometimes another one
    kRadius,   ///< of the square around DC
    kField,    ///< which parameter to set
    kDamage,   ///< done to a record before it is loaded
    kKind,     ///< of a filter: the number of a topic, or behind them one of the caller's own
    kList,     ///< how the picture call gets its filters
    kPicture,  ///< what it makes of them
    kMargin,   ///< of its tiles
    kThreads   ///< that it may take
};

struct Operation {
    std::string name;
    std::vector<Domain> domains;
    std::function<void(Library&, const Arguments&)> call;
    std::function<void(World&, const Arguments&)> model;
    /// How often it is drawn.
    int weight = 2;
    /// Polls, so that it is often made to fail there.
    bool polls = false;
    /// The type of pel or the kind of filter, of which a chain has few; empty where every chain has
    /// the operation.
    std::string topic{};
};

using Operations = std::vector<Operation>;

inline std::size_t at(const Arguments& arguments, std::size_t i) {
    return static_cast<std::size_t>(arguments[i]);
}

void addBufferOperations(Operations& all);
void addArithmeticOperations(Operations& all);
void addImageOperations(Operations& all);
void addTransformOperations(Operations& all);
void addFilterOperations(Operations& all);
void addImageFilterOperations(Operations& all);
void addWatchOperations(Operations& all);
void addArchiveOperations(Operations& all);
void addPictureOperations(Operations& all);
void addErrorOperations(Operations& all);

/// What a chain has one of each of.
inline const std::vector<std::string> kPelTopics = {"bytes", "shorts"};
inline const std::vector<std::string> kFilterTopics = {"band pass", "band reject", "gabor",
                                                       "gabor reject", "image filter"};

/// All of them.
const Operations& operations();
const Operation& operationOf(const std::string& name);

}  // namespace model
