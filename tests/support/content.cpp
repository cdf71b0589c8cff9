// What an archive is read as.
#include "support/content.h"

#include <vector>

#include "support/archive_bytes.h"

namespace archive {
namespace {

template <class T>
class OneValue : public Content {
  public:
    void load(mvArchive& ar) override { ar || value_; }
    bool takesMore() const override { return false; }
    void store(mvArchive& ar) override { ar || value_; }
    void use(Steps& steps, long largestArea) override { archive::use(value_, steps, largestArea); }

  private:
    T value_;
};

class Pointers : public Content {
  public:
    void load(mvArchive& ar) override {
        std::unique_ptr<mvPersistent> owner;
        objects_.push_back(ar.loadPointer(owner));
        if (owner) owners_.push_back(std::move(owner));
    }
    bool takesMore() const override { return true; }
    void store(mvArchive& ar) override {
        for (mvPersistent* object : objects_) ar || object;
    }
    void use(Steps& steps, long largestArea) override {
        for (const auto& object : owners_) archive::use(*object, steps, largestArea);
    }

  private:
    std::vector<mvPersistent*> objects_;
    std::vector<std::unique_ptr<mvPersistent>> owners_;
};

template <class C>
std::unique_ptr<Content> made() {
    return std::make_unique<C>();
}

constexpr ContentKind kKinds[] = {
    {"pointers", made<Pointers>},
    {"buffer", made<OneValue<mvFrequencyBuffer>>},
    {"mvFrequencyFilterGabor", made<OneValue<mvFrequencyFilterGabor>>},
    {"mvFrequencyFilterGaborReject", made<OneValue<mvFrequencyFilterGaborReject>>},
    {"mvFrequencyFilterBandPass", made<OneValue<mvFrequencyFilterBandPass>>},
    {"mvFrequencyFilterBandReject", made<OneValue<mvFrequencyFilterBandReject>>},
    {"mvFrequencyFilterImage", made<OneValue<mvFrequencyFilterImage>>},
    {"mvFrequencyDefs::InvalidArgument", made<OneValue<mvFrequencyDefs::InvalidArgument>>},
    {"mvFrequencyDefs::Uninitialized", made<OneValue<mvFrequencyDefs::Uninitialized>>},
    {"mvFrequencyDefs::InvalidSize", made<OneValue<mvFrequencyDefs::InvalidSize>>},
    {"mvFrequencyDefs::UnboundWindow", made<OneValue<mvFrequencyDefs::UnboundWindow>>},
    {"mvFrequencyDefs::InvalidBuffer", made<OneValue<mvFrequencyDefs::InvalidBuffer>>},
    {"mvFrequencyDefs::BadCoord", made<OneValue<mvFrequencyDefs::BadCoord>>}};

}  // namespace

std::span<const ContentKind> contentKinds() {
    return kKinds;
}

const ContentKind* contentKind(std::string_view name) {
    for (const ContentKind& kind : kKinds) {
        if (name == kind.name) return &kind;
    }
    return nullptr;
}

void load(Content& content, const std::string& bytes) {
    support::Loading loading(bytes);
    do {
        content.load(loading);
    } while (content.takesMore() && loading.rest() > 0);
}

}  // namespace archive
