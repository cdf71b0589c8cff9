// The registry of persistent classes.
#include <base/registry.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "support/value_bytes.h"

namespace works {

template <int N>
struct Part : mvPersistent {
    static mvPersistent* make() { return new Part; }
};

struct Casing {
    struct Screw : mvPersistent {
        static mvPersistent* make() { return nullptr; }
    };
};

struct Bolt : mvPersistent {
    static mvPersistent* makeSteel() { return new Bolt("steel"); }
    static mvPersistent* makeBrass() { return new Bolt("brass"); }
    explicit Bolt(const char* metal) : material(metal) {}
    std::string material;
};

}  // namespace works

namespace {

using works::Part;

std::string recordOf(const std::string& name) {
    return storedBy([&](mvArchive& ar) {
        unsigned char tag = 1;
        std::string text = name;
        ar || tag || text;
    });
}

std::unique_ptr<mvPersistent> made(const std::string& name) {
    return mfLoad<mvPersistent>(Loading(recordOf(name)).archive());
}

TEST(Registry, ListsClassesInTheOrderOfTheirRegistration) {
    const std::vector<std::string> before = mfRegisteredClasses();
    const mv_Instantiator two(typeid(Part<2>), &Part<2>::make);
    const mv_Instantiator one(typeid(Part<1>), &Part<1>::make);
    std::vector<std::string> expected = before;
    expected.insert(expected.end(), {"works::Part<2>", "works::Part<1>"});
    EXPECT_EQ(mfRegisteredClasses(), expected);
}

TEST(Registry, ForgetsAClassWithItsInstantiator) {
    const std::vector<std::string> before = mfRegisteredClasses();
    std::optional<mv_Instantiator> registration;
    registration.emplace(typeid(Part<3>), &Part<3>::make);
    EXPECT_NE(made("works::Part<3>"), nullptr);
    registration.reset();
    EXPECT_EQ(mfRegisteredClasses(), before);
    EXPECT_THROW(made("works::Part<3>"), mvArchive::UnknownClass);
}

TEST(Registry, MakesAClassByItsFirstEntryThatIsLeft) {
    std::optional<mv_Instantiator> steel;
    steel.emplace(typeid(works::Bolt), &works::Bolt::makeSteel);
    const mv_Instantiator brass(typeid(works::Bolt), &works::Bolt::makeBrass);
    EXPECT_EQ(dynamic_cast<works::Bolt&>(*made("works::Bolt")).material, "steel");
    steel.reset();
    EXPECT_EQ(dynamic_cast<works::Bolt&>(*made("works::Bolt")).material, "brass");
}

TEST(Registry, KnowsNestedClassesByTheirQualifiedName) {
    const mv_Instantiator screw(typeid(works::Casing::Screw), &works::Casing::Screw::make);
    EXPECT_EQ(mfRegisteredClasses().back(), "works::Casing::Screw");
}

TEST(Registry, ReportsAFactoryWithoutMemory) {
    const mv_Instantiator screw(typeid(works::Casing::Screw), &works::Casing::Screw::make);
    EXPECT_THROW(made("works::Casing::Screw"), std::bad_alloc);
}

TEST(Registry, NamesTheUnknownClassInReadableLetters) {
    try {
        made("No\nsuch\x1b class\x7f" + std::string(10000, 'x'));
        ADD_FAILURE();
    } catch (const mvArchive::UnknownClass& error) {
        const std::string text = error.message();
        EXPECT_NE(text.find("No?such? class?x"), std::string::npos) << text;
        EXPECT_LT(text.size(), 300u);
    }
}

static_assert(!std::is_copy_constructible_v<mv_Instantiator>);
static_assert(!std::is_copy_assignable_v<mv_Instantiator>);

}  // namespace
