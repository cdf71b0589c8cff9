// The public operations, one row each.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "campaigns/faults/state.h"

namespace faults {

struct Operation {
    std::string name;
    std::function<void(Operands&)> call;
    /// What a call that fails may have changed, and how; everything else stays as it was.
    std::map<std::string, Left> mayChange = {};
    /// What the call throws when nothing fails, as support::thrownBy names it.
    std::string thrown = "nothing";
    /// Polls of copies, for images with an offset, that follow the mark of an inverse in place.
    long pollsAfterMark = 0;
};

std::vector<Operation> bufferOperations();
std::vector<Operation> transformOperations();
std::vector<Operation> filterOperations();
std::vector<Operation> pictureOperations();
std::vector<Operation> baseOperations();

}  // namespace faults
