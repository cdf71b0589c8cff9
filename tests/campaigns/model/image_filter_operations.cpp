// Operations of image filters: setting, copying, applying.
#include <utility>

#include "campaigns/model/filters.h"
#include "campaigns/model/operation.h"

namespace model {
namespace {

void addImageFilterLife(Operations& all) {
    using enum Domain;
    all.push_back({"set image filter",
                   {kFirst, kFirst},
                   [](Library& l, const Arguments& a) {
                       l.imageFilters[at(a, 0)].setImage(l.buffers[at(a, 1)]);
                   },
                   [](World& w, const Arguments& a) {
                       ImageFilter& filter = w.imageFilters[at(a, 0)];
                       requireData(w.buffers[at(a, 1)]);
                       filter.watcher.announce();
                       assign(filter.image, w.buffers[at(a, 1)]);
                       filter.isInitialized = true;
                   },
                   4});
    all.push_back({"assign image filter",
                   {kFilter, kFilter},
                   [](Library& l, const Arguments& a) {
                       l.imageFilters[at(a, 0)] = l.imageFilters[at(a, 1)];
                   },
                   [](World& w, const Arguments& a) {
                       assign(w.imageFilters[at(a, 0)], w.imageFilters[at(a, 1)]);
                   },
                   1});
    all.push_back({"move image filter",
                   {kFilter, kFilter},
                   [](Library& l, const Arguments& a) {
                       mvFrequencyFilterImage& src = l.imageFilters[at(a, 1)];
                       l.imageFilters[at(a, 0)] = std::move(src);
                   },
                   [](World& w, const Arguments& a) {
                       move(w.imageFilters[at(a, 0)], w.imageFilters[at(a, 1)]);
                   },
                   1});
}

void addImageFilterUse(Operations& all) {
    using enum Domain;
    all.push_back(
        {"apply image filter",
         {kFirst, kObject},
         [](Library& l, const Arguments& a) {
             l.imageFilters[at(a, 0)].apply(l.buffers[at(a, 1)]);
         },
         [](World& w, const Arguments& a) { apply(w.imageFilters[at(a, 0)], w.buffers[at(a, 1)]); },
         4});
    all.push_back({"apply between image filter",
                   {kFirst, kFirst, kObject},
                   [](Library& l, const Arguments& a) {
                       l.imageFilters[at(a, 0)].apply(l.buffers[at(a, 1)], l.buffers[at(a, 2)]);
                   },
                   [](World& w, const Arguments& a) {
                       apply(w.imageFilters[at(a, 0)], w.buffers[at(a, 1)], w.buffers[at(a, 2)]);
                   },
                   4});
}

}  // namespace

void addImageFilterOperations(Operations& all) {
    addImageFilterLife(all);
    addImageFilterUse(all);
}

}  // namespace model
