// Drawing chains: which operations, with which arguments.
#include <algorithm>
#include <array>
#include <iterator>

#include "campaigns/model/chain.h"
#include "reference/fft/transforms.h"
#include "support/draw.h"

namespace model {
namespace {

using support::Draw;

constexpr long kSides[] = {1, 2, 3, 4, 5, 6, 7, 8, 8, 9, 12, 16, 16, 17};
constexpr long kObjects[] = {0, 0, 0, 1, 1, 2};
constexpr long kOddSides[] = {-3, 0, 32, 2049};

// Chains have few sides and few kinds of objects, so that objects often fit each other.
class Drawing {
  public:
    explicit Drawing(unsigned long seed)
        : draw_(seed),
          pelTopic_(draw_.of(kPelTopics)),
          filterKind_(draw_.below(static_cast<long>(std::ssize(kFilterTopics)))),
          filterTopic_(kFilterTopics[static_cast<std::size_t>(filterKind_)]),
          sides_{draw_.of(kSides), draw_.of(kSides)} {
        if (draw_.oneIn(2)) sides_[1] = sides_[0];
    }

    Chain chain() {
        Chain chain;
        const auto length = static_cast<std::size_t>(1 + draw_.below(40));
        // What most other steps need.
        for (const std::string& name :
             {"new " + pelTopic_, "forward " + pelTopic_, std::string("new doubles"),
              std::string("forward doubles"), "set " + filterTopic_}) {
            if (!draw_.oneIn(5)) chain.push_back(step(operationOf(name), true));
        }
        chain.resize(std::min(chain.size(), length));
        while (chain.size() < length) chain.push_back(step(anyOperation(), false));
        return chain;
    }

  private:
    // At the begin the first image and the first filter are used.
    Step step(const Operation& operation, bool isBegin) {
        Step step{operation.name};
        for (const Domain domain : operation.domains) {
            step.arguments.push_back(argument(domain, step.arguments));
        }
        if (isBegin) step.arguments[0] = 0;
        if (operation.polls && draw_.oneIn(4)) {
            step.failAt = 1 + draw_.below(draw_.oneIn(2) ? 3 : 9);
            step.throws = draw_.oneIn(2);
        }
        return step;
    }

    const Operation& anyOperation() {
        const auto weightOf = [&](const Operation& operation) {
            return isWanted(operation) ? operation.weight : 0;
        };
        const Operations& all = operations();
        long weight = 0;
        for (const Operation& operation : all) weight += weightOf(operation);
        long left = draw_.below(weight);
        std::size_t i = 0;
        while (left >= weightOf(all[i])) left -= weightOf(all[i++]);
        return all[i];
    }

    bool isWanted(const Operation& operation) const {
        return operation.topic.empty() || operation.topic == pelTopic_ ||
               operation.topic == filterTopic_;
    }

    long argument(Domain domain, const Arguments& before) {
        switch (domain) {
            case Domain::kObject:
                return draw_.of(kObjects);
            case Domain::kOtherObject:
                return (before.back() + 1 + draw_.below(2)) % 3;
            case Domain::kSize:
                return draw_.oneIn(5) ? draw_.of(kSides) : draw_.of(sides_);
            case Domain::kAnySize:
                return draw_.oneIn(12) ? draw_.of(kOddSides) : draw_.of(sides_);
            case Domain::kPlace:
                return draw_.oneIn(2) ? 0 : draw_.below(14) - 5;
            case Domain::kFlag:
                return draw_.below(2);
            case Domain::kSeed:
                return draw_.below(1000);
            case Domain::kForm:
                return draw_.below(3);
            case Domain::kMapping:
            case Domain::kField:
            case Domain::kLeaf:
                return draw_.below(6);
            case Domain::kFilter:
                return draw_.oneIn(3) ? 1 : 0;
            case Domain::kNumber:
                return draw_.oneIn(20) ? -1 : draw_.below(21);
            case Domain::kPadded:
                return draw_.oneIn(20) ? draw_.of(kSides) : reference::paddedSize(draw_.of(sides_));
            case Domain::kDamage:
                return draw_.oneIn(3) ? draw_.below(19) : 0;
            case Domain::kRadius:
                return draw_.oneIn(8) ? draw_.below(6) - 1 : draw_.below(3);
            default:
                return pictureArgument(domain);
        }
    }

    long pictureArgument(Domain domain) {
        switch (domain) {
            case Domain::kKind:
                return draw_.oneIn(8) ? draw_.below(6) : filterKind_;
            case Domain::kList:
                return draw_.oneIn(3) ? draw_.below(7) : 0;
            case Domain::kPicture:
                return draw_.below(20);
            case Domain::kMargin:
                return draw_.oneIn(40) ? -2 : draw_.oneIn(2) ? -1 : draw_.below(6);
            case Domain::kThreads:
                return draw_.oneIn(8) ? draw_.below(4) : 1;
            case Domain::kFirst:
                return draw_.oneIn(6) ? 1 : 0;
            default:
                return 0;
        }
    }

    Draw draw_;
    std::string pelTopic_;
    long filterKind_;
    std::string filterTopic_;
    std::array<long, 2> sides_;
};

}  // namespace

Chain drawnChain(unsigned long seed) {
    return Drawing(seed).chain();
}

}  // namespace model
