// Operations of the picture call: images of any type into images of any type, planes, reaches.
#include <cmath>
#include <numbers>
#include <span>

#include "campaigns/model/filter_kinds.h"
#include "campaigns/model/filters.h"
#include "campaigns/model/pictures.h"
#include "reference/freqfilt/access.h"
#include "support/picture_cases.h"
#include "support/thrown.h"

namespace model {
namespace {

constexpr long kOwnKind = 5;

// The forms in which the call gets its filters.
enum Form { kSingle, kListOfOne, kBothOfAKind, kTwice, kWithOwn, kEmpty, kWithNull };

long ceiled(double reach) {
    return std::max(1L, static_cast<long>(std::ceil(reach)));
}

Sides reachOf(const reference::RingParameters& given) {
    const long reach = ceiled(2 / (std::numbers::pi * given.sigma));
    return {reach, reach};
}

Sides reachOf(const reference::LobeParameters& given) {
    const double c = std::cos(given.angle);
    const double s = std::sin(given.angle);
    const auto along = [&](double u, double v) {
        return ceiled(2 / std::numbers::pi *
                      std::sqrt(std::pow(u / given.sigmaX, 2) + std::pow(v / given.sigmaY, 2)));
    };
    return {along(c, s), along(s, c)};
}

// What element access throws, as the library's text.
template <class Kind, class Response>
void applyKind(const Response& response, reference::Spectrum& buf) {
    try {
        Kind::apply(response, buf);
    } catch (const reference::OutOfBounds&) {
        throw Thrown{support::kOutOfBounds};
    }
}

template <class Kind>
PictureFilter parametric(World& w, std::size_t i) {
    const auto& filter = (w.*Kind::kModel)[i];
    if (!filter.hasResponse) return {.refused = kNoFilter, .apply = [](reference::Spectrum&) {}};
    const auto& response = filter.response;
    return {.plane = Sides{response.given.width, response.given.height},
            .reach = [&response](const Poll&) { return reachOf(response.given); },
            .apply = [&response](reference::Spectrum& buf) { applyKind<Kind>(response, buf); }};
}

PictureFilter modelFilter(World& w, long kind, std::size_t i) {
    if (kind == 0) return parametric<BandPass>(w, i);
    if (kind == 1) return parametric<BandReject>(w, i);
    if (kind == 2) return parametric<Gabor>(w, i);
    if (kind == 3) return parametric<GaborReject>(w, i);
    return kind == kOwnKind ? ownFilter() : pictureFilterOf(w.imageFilters[i]);
}

const mvFrequencyFilter* libraryFilter(Library& l, long kind, std::size_t i) {
    static const cases::OwnFilter own;
    if (kind == 0) return &l.bandPasses[i];
    if (kind == 1) return &l.bandRejects[i];
    if (kind == 2) return &l.gabors[i];
    if (kind == 3) return &l.gaborRejects[i];
    return kind == kOwnKind ? static_cast<const mvFrequencyFilter*>(&own) : &l.imageFilters[i];
}

// The list of a form, from what finds a filter by kind and number and from what stands for none.
template <class Filter, class Find>
std::vector<Filter> listOf(const long* a, Find find, const Filter& none) {
    const auto i = static_cast<std::size_t>(a[1]);
    const Filter first = find(a[0], i);
    switch (a[2]) {
        case kBothOfAKind:
            return {first, find(a[0], 1 - i)};
        case kTwice:
            return {first, first};
        case kWithOwn:
            return {first, find(kOwnKind, i)};
        case kEmpty:
            return {};
        case kWithNull:
            return {first, none};
        default:
            return {first};
    }
}

std::vector<const mvFrequencyFilter*> libraryFilters(Library& l, const long* a) {
    return listOf<const mvFrequencyFilter*>(
        a, [&](long kind, std::size_t i) { return libraryFilter(l, kind, i); }, nullptr);
}

PictureFilters modelFilters(World& w, const long* a) {
    return listOf<PictureFilter>(
        a, [&](long kind, std::size_t i) { return modelFilter(w, kind, i); }, missingFilter());
}

// Half of the options are plain, most others are what only some types of pel have.
PictureOptions optionsOf(const long* a, bool isDouble) {
    const bool special = a[0] / 2 >= 5;
    const bool fits = a[0] / 2 != 9;
    return {.mirror = a[0] % 2 == 0,
            .real = special && isDouble == fits,
            .rescale = special && isDouble != fits,
            .margin = {a[1], a[2]},
            .threads = static_cast<int>(a[3])};
}

mvFilterImageOptions given(const PictureOptions& options) {
    return {.border = options.mirror ? mvBorder::mirror : mvBorder::zero,
            .result = options.real ? mvFilterResult::real : mvFilterResult::magnitude,
            .rescale = options.rescale,
            .margin = {options.margin.x, options.margin.y},
            .threads = options.threads};
}

// With several threads it is not said how often this one polls.
class Unasked {
  public:
    Unasked() : former_(vsys_set_attention_handler(nullptr, nullptr)) {}
    ~Unasked() { vsys_set_attention_handler(former_.handler, former_.context); }
    Unasked(const Unasked&) = delete;
    Unasked& operator=(const Unasked&) = delete;

  private:
    vsys_attention_state former_;
};

template <class T, class U>
void callLibrary(Library& l, const Arguments& a) {
    const auto filters = libraryFilters(l, &a[2]);
    const mvFilterImageOptions options = given(optionsOf(&a[5], std::is_same_v<U, double>));
    const auto call = [&](const auto& filter) {
        mfFilterImage<T, U>(imagesOf<T>(l)[at(a, 0)], filter, imagesOf<U>(l)[at(a, 1)], options);
    };
    const auto callWithList = [&] {
        if (a[4] == kSingle) return call(*filters.front());
        call(std::span<const mvFrequencyFilter* const>(filters));
    };
    if (options.threads < 2) return callWithList();
    const Unasked unasked;
    callWithList();
}

template <class T, class U>
void callModel(World& w, const Arguments& a) {
    const PictureOptions options = optionsOf(&a[5], std::is_same_v<U, double>);
    const Poll poll = options.threads < 2 ? w.poll : reference::noPoll;
    filterImage<T, U>(imagesOf<T>(w)[at(a, 0)], modelFilters(w, &a[2]), imagesOf<U>(w)[at(a, 1)],
                      options, poll, w.morePolls);
}

template <class T, class U>
void addPicture(Operations& all, const std::string& name, const std::string& topic) {
    using enum Domain;
    all.push_back({name,
                   {kFirst, kObject, kKind, kFirst, kList, kPicture, kMargin, kMargin, kThreads},
                   callLibrary<T, U>,
                   callModel<T, U>,
                   5,
                   true,
                   topic});
}

template <class Call>
void answer(std::vector<double>& answer, Call call) {
    const auto sides = call();
    answer = {static_cast<double>(sides.x), static_cast<double>(sides.y)};
}

void addQuestions(Operations& all) {
    using enum Domain;
    all.push_back({"filter plane",
                   {kKind, kFirst, kList},
                   [](Library& l, const Arguments& a) {
                       answer(l.answer, [&] { return mfFilterPlane(libraryFilters(l, &a[0])); });
                   },
                   [](World& w, const Arguments& a) {
                       answer(w.answer,
                              [&] { return planeOf(modelFilters(w, &a[0])).value_or(Sides{}); });
                   }});
    all.push_back({"filter reach",
                   {kKind, kFirst, kList},
                   [](Library& l, const Arguments& a) {
                       answer(l.answer, [&] { return mfFilterReach(libraryFilters(l, &a[0])); });
                   },
                   [](World& w, const Arguments& a) {
                       answer(w.answer, [&] { return reachOf(modelFilters(w, &a[0]), w.poll); });
                   },
                   3,
                   true});
}

}  // namespace

// A chain has images of bytes or of shorts, and now and then some of the others.
void addPictureOperations(Operations& all) {
    addPicture<Byte, Byte>(all, "filter bytes into bytes", "bytes");
    addPicture<Byte, Short>(all, "filter bytes into shorts", "bytes");
    addPicture<Byte, double>(all, "filter bytes into doubles", "bytes");
    addPicture<Short, Byte>(all, "filter shorts into bytes", "shorts");
    addPicture<Short, Short>(all, "filter shorts into shorts", "shorts");
    addPicture<Short, double>(all, "filter shorts into doubles", "shorts");
    addPicture<double, Byte>(all, "filter doubles into bytes", "bytes");
    addPicture<double, Short>(all, "filter doubles into shorts", "shorts");
    addPicture<double, double>(all, "filter doubles into doubles", "");
    addQuestions(all);
}

}  // namespace model
