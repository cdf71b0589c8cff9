// The public operations, one row each.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "campaigns/faults/operands.h"

namespace faults {

struct Operation {
    std::string name;
    std::function<void(Operands&)> call;
    /// What a call that fails may have changed; everything else stays as it was.
    std::set<std::string> mayChange = {};
    /// What the call throws when nothing fails, as support::thrownBy names it.
    std::string thrown = "nothing";
};

std::vector<Operation> bufferOperations();
std::vector<Operation> transformOperations();
std::vector<Operation> filterOperations();
std::vector<Operation> pictureOperations();
std::vector<Operation> baseOperations();

}  // namespace faults
