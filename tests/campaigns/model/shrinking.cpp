// The shortest chain that still shows a difference.
#include <algorithm>
#include <cstdlib>

#include "campaigns/model/chain.h"

namespace model {
namespace {

bool fails(const Chain& chain) {
    return !differenceOf(chain).empty();
}

Chain without(const Chain& chain, std::size_t first, std::size_t count) {
    Chain rest = chain;
    const auto begin = rest.begin() + static_cast<std::ptrdiff_t>(first);
    rest.erase(begin, begin + static_cast<std::ptrdiff_t>(std::min(count, chain.size() - first)));
    return rest;
}

// Leaves out runs of steps, long ones first.
bool leaveOut(Chain& chain) {
    bool isShorter = false;
    for (std::size_t count = chain.size(); count > 0; count /= 2) {
        for (std::size_t first = 0; first < chain.size();) {
            Chain rest = without(chain, first, count);
            if (fails(rest)) {
                chain = rest;
                isShorter = true;
            } else {
                first += count;
            }
        }
    }
    return isShorter;
}

// Sets a number to the first of the simpler ones that keeps the difference.
bool simplify(Chain& chain, long& number, std::vector<long> simpler) {
    const long old = number;
    for (const long value : simpler) {
        if (std::abs(value) >= std::abs(old)) break;
        number = value;
        if (fails(chain)) return true;
    }
    number = old;
    return false;
}

bool isObject(Domain domain) {
    return domain == Domain::kObject || domain == Domain::kOtherObject ||
           domain == Domain::kFilter || domain == Domain::kFirst;
}

bool simplifyNumbers(Chain& chain) {
    bool isSimpler = false;
    for (Step& step : chain) {
        const std::vector<Domain>& domains = operationOf(step.operation).domains;
        isSimpler |= simplify(chain, step.failAt, {0, 1, 2});
        for (std::size_t i = 0; i < domains.size(); ++i) {
            if (isObject(domains[i])) continue;
            isSimpler |= simplify(chain, step.arguments[i], {0, 1, 2, 3, 4, 8});
        }
    }
    return isSimpler;
}

}  // namespace

Chain shrunk(Chain chain) {
    if (!fails(chain)) return chain;
    while (leaveOut(chain) || simplifyNumbers(chain)) {
    }
    return chain;
}

}  // namespace model
