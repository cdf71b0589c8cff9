// Watchers of filters, which count or throw.
#include "campaigns/model/filter_kinds.h"
#include "support/attention.h"

namespace model {
namespace {

// Forms of watching: not at all, by one who counts, by one who throws.
void watch(Library& l, mvPersistent& object, long form) {
    if (form == 0) return mvPersistent::watch(object, {});
    mvPersistent::watch(object, [&l, form] {
        ++l.watched;
        if (form == 2) throw support::Interrupted{};
    });
}

template <class LibraryFilters, class ModelFilters>
void addWatching(Operations& all, const std::string& name, LibraryFilters found,
                 ModelFilters model) {
    using enum Domain;
    all.push_back(
        {"watch " + name,
         {kFirst, kForm},
         [found](Library& l, const Arguments& a) { watch(l, (l.*found)[at(a, 0)], a[1]); },
         [model](World& w, const Arguments& a) {
             (w.*model)[at(a, 0)].watcher.install(a[1] == 0 ? nullptr : &w.watched, a[1] == 2);
         },
         2});
}

template <class Kind>
void addWatchingOf(Operations& all) {
    addWatching(all, Kind::kName, Kind::kLibrary, Kind::kModel);
}

}  // namespace

void addWatchOperations(Operations& all) {
    addWatchingOf<BandPass>(all);
    addWatchingOf<BandReject>(all);
    addWatchingOf<Gabor>(all);
    addWatchingOf<GaborReject>(all);
    addWatching(all, "image filter", &Library::imageFilters, &World::imageFilters);
}

}  // namespace model
