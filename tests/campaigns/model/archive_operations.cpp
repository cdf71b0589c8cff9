// Operations of archives: an object is stored, its record compared, and loaded into another one.
#include "campaigns/model/archive_damage.h"
#include "campaigns/model/archives.h"
#include "campaigns/model/filter_kinds.h"
#include "campaigns/model/hostile_records.h"

namespace model {
namespace {

void addBuffers(Operations& all) {
    using enum Domain;
    all.push_back({"archive buffer",
                   {kObject, kObject, kDamage},
                   [](Library& l, const Arguments& a) {
                       l.record = stored(l.buffers[at(a, 0)]);
                       loadInto(l.buffers[at(a, 1)], damaged(l.record, a[2]));
                   },
                   [](World& w, const Arguments& a) {
                       w.record = recordOf(w.buffers[at(a, 0)]).bytes();
                       load(w.buffers[at(a, 1)], damaged(w.record, a[2]));
                   },
                   5});
}

// A filter without response is stored with whatever numbers it has: there is nothing to compare.
template <class Kind>
void addFilter(Operations& all) {
    using enum Domain;
    all.push_back({std::string("archive ") + Kind::kName,
                   {kFilter, kFilter, kDamage},
                   [](Library& l, const Arguments& a) {
                       auto& filter = libraryOf<Kind>(l, a, 0);
                       const std::string bytes = stored(filter);
                       if (filter.hasResponse()) l.record = bytes;
                       loadInto(libraryOf<Kind>(l, a, 1), damaged(bytes, a[2]));
                   },
                   [](World& w, const Arguments& a) {
                       const auto filter = modelOf<Kind>(w, a, 0);
                       const std::string bytes = recordOf(filter).bytes();
                       if (filter.hasResponse) w.record = bytes;
                       load(modelOf<Kind>(w, a, 1), damaged(bytes, a[2]), filter, Kind::kVersion);
                   },
                   3});
}

void addImageFilters(Operations& all) {
    using enum Domain;
    all.push_back({"archive image filter",
                   {kFilter, kFilter, kDamage},
                   [](Library& l, const Arguments& a) {
                       l.record = stored(l.imageFilters[at(a, 0)]);
                       loadInto(l.imageFilters[at(a, 1)], damaged(l.record, a[2]));
                   },
                   [](World& w, const Arguments& a) {
                       w.record = recordOf(w.imageFilters[at(a, 0)]).bytes();
                       load(w.imageFilters[at(a, 1)], damaged(w.record, a[2]));
                   },
                   3});
}

// What no library wrote, loaded as a buffer and as an image filter.
void addHostile(Operations& all) {
    using enum Domain;
    all.push_back(
        {"load buffer",
         {kObject, kSeed},
         [](Library& l, const Arguments& a) { loadInto(l.buffers[at(a, 0)], hostileBuffer(a[1])); },
         [](World& w, const Arguments& a) { load(w.buffers[at(a, 0)], hostileBuffer(a[1])); },
         4});
    const auto base = archive::Record().u8(0).u8(0).flag(true).bytes();
    all.push_back({"load image filter",
                   {kFilter, kSeed},
                   [base](Library& l, const Arguments& a) {
                       loadInto(l.imageFilters[at(a, 0)], base + hostileBuffer(a[1]));
                   },
                   [base](World& w, const Arguments& a) {
                       load(w.imageFilters[at(a, 0)], base + hostileBuffer(a[1]));
                   },
                   4});
}

}  // namespace

void addArchiveOperations(Operations& all) {
    addBuffers(all);
    addFilter<BandPass>(all);
    addFilter<BandReject>(all);
    addFilter<Gabor>(all);
    addFilter<GaborReject>(all);
    addImageFilters(all);
    addHostile(all);
}

}  // namespace model
