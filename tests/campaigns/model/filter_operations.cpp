// Operations of parametric filters: building, changing, copying, applying.
#include <memory>

#include "campaigns/model/filter_kinds.h"
#include "campaigns/model/filters.h"
#include "reference/freqfilt/access.h"
#include "support/thrown.h"

namespace model {
namespace {

template <class Kind, class Filter>
void create(Filter& filter, const typename Kind::Parameters& wanted) {
    validate(wanted, Kind::kRejects);
    filter.watcher.announce();
    filter.response = Kind::kBuild(wanted);
    filter.hasResponse = filter.isInitialized = true;
}

template <class Kind>
void addBuilding(Operations& all) {
    using enum Domain;
    const std::string name = Kind::kName;
    const std::vector<Domain> numbers = {kFilter, kNumber, kNumber, kNumber,
                                         kPadded, kPadded, kRadius, kNumber};
    all.push_back({"set " + name, numbers,
                   [](Library& l, const Arguments& a) {
                       libraryOf<Kind>(l, a, 0).set(Kind::given(Kind::from(&a[1])));
                   },
                   [](World& w, const Arguments& a) {
                       create<Kind>(modelOf<Kind>(w, a, 0), Kind::from(&a[1]));
                   },
                   8});
    all.push_back({"new " + name, numbers,
                   [](Library& l, const Arguments& a) {
                       auto& filter = libraryOf<Kind>(l, a, 0);
                       filter = std::decay_t<decltype(filter)>(Kind::given(Kind::from(&a[1])));
                   },
                   [](World& w, const Arguments& a) {
                       std::decay_t<decltype(modelOf<Kind>(w, a, 0))> made;
                       create<Kind>(made, Kind::from(&a[1]));
                       move(modelOf<Kind>(w, a, 0), made);
                   }});
}

// One setter, chosen by a number. Rings have no angle: it stands for the radius there.
template <class Filter, class Given>
void callSetter(Filter& filter, long field, const Given& given, void (*radius)(Filter&, long)) {
    if (field == 0) return filter.sigma(given.sigma);
    if (field == 1) return filter.plateau(given.plateau);
    if (field == 2) return filter.frequency(given.frequency);
    if (field == 3) return filter.size(given.size);
    if constexpr (requires { given.angle; }) {
        if (field == 4) return filter.angle(given.angle);
    }
    radius(filter, given.dcRadius);
}

void setField(reference::RingParameters& p, long field, const reference::RingParameters& from) {
    if (field == 0) p.sigma = from.sigma;
    if (field == 1) p.plateau = from.plateau;
    if (field == 2) p.frequency = from.frequency;
    if (field == 3) p.width = from.width, p.height = from.height;
    if (field > 3) p.radius = from.radius;
}

void setField(reference::LobeParameters& p, long field, const reference::LobeParameters& from) {
    if (field == 0) p.sigmaX = from.sigmaX, p.sigmaY = from.sigmaY;
    if (field == 1) p.plateauX = from.plateauX, p.plateauY = from.plateauY;
    if (field == 2) p.frequency = from.frequency;
    if (field == 3) p.width = from.width, p.height = from.height;
    if (field == 4) p.angle = from.angle;
    if (field > 4) p.radius = from.radius;
}

// A filter that is equal to the wanted one is not built again, and so refuses nothing.
template <class Kind>
void change(World& w, const Arguments& a) {
    auto& filter = modelOf<Kind>(w, a, 0);
    if (!filter.hasResponse) throw Thrown{kNoFilter};
    auto wanted = filter.response.given;
    setField(wanted, a[1], Kind::from(&a[2]));
    if (!(Kind::given(wanted) == Kind::given(filter.response.given))) create<Kind>(filter, wanted);
}

template <class Kind>
void addChanging(Operations& all) {
    using enum Domain;
    all.push_back({std::string("change ") + Kind::kName,
                   {kFilter, kField, kNumber, kNumber, kNumber, kPadded, kPadded, kRadius, kNumber},
                   [](Library& l, const Arguments& a) {
                       callSetter(libraryOf<Kind>(l, a, 0), a[1], Kind::given(Kind::from(&a[2])),
                                  &Kind::radius);
                   },
                   change<Kind>,
                   3});
}

// Parameters and values alike; the algorithms of the reference make equal values of these.
template <class Kind, class Filter>
bool isEqual(const Filter& a, const Filter& b) {
    if (a.isInitialized != b.isInitialized || a.hasResponse != b.hasResponse) return false;
    return !a.hasResponse || Kind::given(a.response.given) == Kind::given(b.response.given);
}

template <class Kind>
void addCopies(Operations& all) {
    using enum Domain;
    const std::string name = Kind::kName;
    all.push_back({"assign " + name,
                   {kFilter, kFilter},
                   [](Library& l, const Arguments& a) {
                       libraryOf<Kind>(l, a, 0) = libraryOf<Kind>(l, a, 1);
                   },
                   [](World& w, const Arguments& a) {
                       assign(modelOf<Kind>(w, a, 0), modelOf<Kind>(w, a, 1));
                   }});
    all.push_back(
        {"move " + name,
         {kFilter, kFilter},
         [](Library& l, const Arguments& a) {
             auto& src = libraryOf<Kind>(l, a, 1);
             libraryOf<Kind>(l, a, 0) = std::move(src);
         },
         [](World& w, const Arguments& a) { move(modelOf<Kind>(w, a, 0), modelOf<Kind>(w, a, 1)); },
         1});
    all.push_back({"clone " + name,
                   {kFilter, kFilter},
                   [](Library& l, const Arguments& a) {
                       auto& filter = libraryOf<Kind>(l, a, 0);
                       const std::unique_ptr<mvFrequencyFilter> clone(
                           libraryOf<Kind>(l, a, 1).clone());
                       filter = dynamic_cast<std::decay_t<decltype(filter)>&>(*clone);
                   },
                   [](World& w, const Arguments& a) {
                       const auto clone = modelOf<Kind>(w, a, 1);
                       assign(modelOf<Kind>(w, a, 0), clone);
                   },
                   1});
}

template <class Kind>
void addComparison(Operations& all) {
    using enum Domain;
    const std::string name = Kind::kName;
    all.push_back(
        {"compare " + name,
         {kFilter, kFilter},
         [](Library& l, const Arguments& a) {
             l.answer = {libraryOf<Kind>(l, a, 0) == libraryOf<Kind>(l, a, 1) ? 1.0 : 0.0};
         },
         [](World& w, const Arguments& a) {
             w.answer = {isEqual<Kind>(modelOf<Kind>(w, a, 0), modelOf<Kind>(w, a, 1)) ? 1.0 : 0.0};
         },
         1});
}

// Runs an algorithm of the reference on a spectrum and takes over what it leaves, also when it
// throws what element access throws.
template <class Call>
void applyTo(Buffer& b, reference::Spectrum& spectrum, Call call) {
    const char* thrown = nullptr;
    try {
        call();
    } catch (const reference::OutOfBounds&) {
        thrown = support::kOutOfBounds;
    } catch (const reference::AlreadyInverted&) {
        thrown = support::kSpent;
    }
    // Only one that has finished has written every element.
    const bool any = b.anyElements && thrown != nullptr;
    take(b, spectrum);
    b.anyElements = any;
    if (thrown != nullptr) throw Thrown{thrown};
}

// Gabor-reject filters look at the square before they touch the destination.
void requireSquare(const Buffer& src, long radius) {
    reference::Spectrum spectrum = spectrumOf(src);
    Buffer untouched = src;
    applyTo(untouched, spectrum, [&] { reference::saveSquare(spectrum, radius); });
}

template <class Kind>
void applyInPlace(World& w, const Arguments& a) {
    const auto& filter = modelOf<Kind>(w, a, 0);
    Buffer& b = w.buffers[at(a, 1)];
    requireApplicable(filter, b);
    reference::Spectrum spectrum = spectrumOf(b);
    applyTo(b, spectrum, [&] { Kind::apply(filter.response, spectrum); });
}

template <class Kind>
void applyBetween(World& w, const Arguments& a) {
    const auto& filter = modelOf<Kind>(w, a, 0);
    Buffer& src = w.buffers[at(a, 1)];
    Buffer& dst = w.buffers[at(a, 2)];
    requireApplicable(filter, src);
    if (std::is_same_v<Kind, GaborReject>) requireSquare(src, filter.response.given.radius);
    const reference::Spectrum from = spectrumOf(src);
    setAndAllocate(dst, src.width, src.height);
    reference::Spectrum to = spectrumOf(dst);
    const reference::Spectrum& read = &src == &dst ? to : from;
    applyTo(dst, to, [&] { Kind::apply(filter.response, read, to); });
}

template <class Kind>
void addApplying(Operations& all) {
    using enum Domain;
    const std::string name = Kind::kName;
    all.push_back({"apply " + name,
                   {kFilter, kObject},
                   [](Library& l, const Arguments& a) {
                       libraryOf<Kind>(l, a, 0).apply(l.buffers[at(a, 1)]);
                   },
                   applyInPlace<Kind>,
                   5});
    all.push_back({"apply between " + name,
                   {kFilter, kObject, kObject},
                   [](Library& l, const Arguments& a) {
                       libraryOf<Kind>(l, a, 0).apply(l.buffers[at(a, 1)], l.buffers[at(a, 2)]);
                   },
                   applyBetween<Kind>,
                   5});
}

template <class Kind>
void addKind(Operations& all) {
    addBuilding<Kind>(all);
    addChanging<Kind>(all);
    addCopies<Kind>(all);
    addComparison<Kind>(all);
    addApplying<Kind>(all);
}

}  // namespace

void addFilterOperations(Operations& all) {
    addKind<BandPass>(all);
    addKind<BandReject>(all);
    addKind<Gabor>(all);
    addKind<GaborReject>(all);
}

}  // namespace model
