// The registry of persistent classes.
#include <base/archive.h>
#include <base/internal/class_name.h>
#include <base/internal/registry.h>
#include <base/registry.h>

#include <algorithm>
#include <mutex>
#include <new>
#include <typeindex>

namespace {

struct Entry {
    const mv_Instantiator* registration;
    std::type_index type;
    std::string name;
    mvPersistent* (*make)();
};

struct Registry {
    std::mutex mutex;
    std::vector<Entry> entries;
};

// Made by the first registration and therefore destroyed after the last one.
Registry& registry() {
    static Registry registry;
    return registry;
}

// Copies one member of the first entry that fits; the member's default when none does.
template <class Fits, class Member>
Member find(Fits fits, Member Entry::*member) {
    const std::lock_guard lock(registry().mutex);
    const auto& entries = registry().entries;
    const auto found = std::find_if(entries.begin(), entries.end(), fits);
    return found == entries.end() ? Member{} : (*found).*member;
}

[[noreturn]] void throwUnknown(std::string name) {
    constexpr std::size_t kShown = 200;
    name.resize(std::min(name.size(), kShown));
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    throw mvArchive::UnknownClass(("The class " + name + " is not registered.").c_str());
}

}  // namespace

mv_Instantiator::mv_Instantiator(const std::type_info& type, mvPersistent* (*make)()) {
    Entry entry{this, type, mvi::className(type), make};
    const std::lock_guard lock(registry().mutex);
    registry().entries.push_back(std::move(entry));
}

mv_Instantiator::~mv_Instantiator() {
    const std::lock_guard lock(registry().mutex);
    std::erase_if(registry().entries, [this](const Entry& e) { return e.registration == this; });
}

std::vector<std::string> mfRegisteredClasses() {
    const std::lock_guard lock(registry().mutex);
    std::vector<std::string> names;
    for (const Entry& entry : registry().entries) names.push_back(entry.name);
    return names;
}

std::string mvi::registeredName(const std::type_info& type) {
    const auto fits = [&](const Entry& entry) { return entry.type == type; };
    std::string name = find(fits, &Entry::name);
    if (name.empty()) throwUnknown(mvi::className(type));
    return name;
}

std::unique_ptr<mvPersistent> mvi::makeRegistered(const std::string& name) {
    const auto fits = [&](const Entry& entry) { return entry.name == name; };
    const auto make = find(fits, &Entry::make);
    if (!make) throwUnknown(name);
    std::unique_ptr<mvPersistent> object(make());
    if (!object) throw std::bad_alloc();
    return object;
}
