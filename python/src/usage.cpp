// Who uses an object: keeps threads that run without the interpreter lock from each other.
#include "usage.h"

#include <algorithm>
#include <stdexcept>

void Usage::requireUnchanging() const {
    if (changing) throw std::runtime_error("The object is being changed by another call.");
}

void Usage::requireUnused() const {
    requireUnchanging();
    if (readers != 0) throw std::runtime_error("The object is in use by another call.");
}

namespace {
bool contains(const std::vector<Usage*>& usages, const Usage* usage) {
    return std::find(usages.begin(), usages.end(), usage) != usages.end();
}
}  // namespace

Uses::Uses(std::initializer_list<Usage*> changed, const std::vector<Usage*>& read) {
    for (Usage* usage : changed) {
        if (!contains(changed_, usage)) changed_.push_back(usage);
    }
    for (Usage* usage : read) {
        if (!contains(changed_, usage)) read_.push_back(usage);
    }
    for (const Usage* usage : changed_) usage->requireUnused();
    for (const Usage* usage : read_) usage->requireUnchanging();
    for (Usage* usage : changed_) usage->changing = true;
    for (Usage* usage : read_) ++usage->readers;
}

Uses::~Uses() {
    for (Usage* usage : changed_) usage->changing = false;
    for (Usage* usage : read_) --usage->readers;
}
