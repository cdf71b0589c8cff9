// What each kind of parametric filter is called, and how it is built, changed and applied.
#pragma once

#include <filt/freqfilt.h>

#include <cmath>

#include "campaigns/model/library.h"
#include "campaigns/model/operation.h"

namespace model {

/// Parameters from the numbers of a step: sigma, plateau, frequency, width, height, radius and,
/// for lobes, the angle.
inline reference::RingParameters ringFrom(const long* n) {
    return {static_cast<double>(n[0]) / 100,
            static_cast<double>(n[1]) / 100,
            static_cast<double>(n[2]) / 40,
            n[3],
            n[4],
            n[5]};
}

inline reference::LobeParameters lobeFrom(const long* n) {
    const double sigma = static_cast<double>(n[0]) / 100;
    const double plateau = static_cast<double>(n[1]) / 100;
    return {sigma,
            sigma * 0.75,
            plateau * 0.5,
            plateau,
            static_cast<double>(n[6]) * 0.4,
            static_cast<double>(n[2]) / 40,
            n[3],
            n[4],
            n[5]};
}

struct RingKind {
    using Parameters = reference::RingParameters;
    using Given = mvRingParameters;
    static Parameters from(const long* numbers) { return ringFrom(numbers); }
    static Given given(const Parameters& p) {
        return {p.sigma, p.plateau, p.frequency, {p.width, p.height}, p.radius};
    }
};

struct LobeKind {
    using Parameters = reference::LobeParameters;
    using Given = mvLobeParameters;
    static Parameters from(const long* numbers) { return lobeFrom(numbers); }
    static Given given(const Parameters& p) {
        return {{p.sigmaX, p.sigmaY}, {p.plateauX, p.plateauY}, mvRadian(p.angle),
                p.frequency,          {p.width, p.height},      p.radius};
    }
};

struct BandPass : RingKind {
    static constexpr const char* kName = "band pass";
    static constexpr const char* kVersion = "filt/freqfilt 1765";
    static constexpr bool kRejects = false;
    static constexpr auto kModel = &World::bandPasses;
    static constexpr auto kLibrary = &Library::bandPasses;
    static constexpr auto kBuild = reference::bandPass;
    static void radius(mvFrequencyFilterBandPass& f, long r) { f.dcRemovalRadius(r); }
    template <class... Buffers>
    static void apply(const reference::Ring& ring, Buffers&... buffers) {
        reference::applyBandPass(ring, buffers...);
    }
};

struct BandReject : RingKind {
    static constexpr const char* kName = "band reject";
    static constexpr const char* kVersion = "filt/freqfilt 2389";
    static constexpr bool kRejects = true;
    static constexpr auto kModel = &World::bandRejects;
    static constexpr auto kLibrary = &Library::bandRejects;
    static constexpr auto kBuild = reference::bandReject;
    static void radius(mvFrequencyFilterBandReject& f, long r) { f.dcProtectionRadius(r); }
    template <class... Buffers>
    static void apply(const reference::Ring& ring, Buffers&... buffers) {
        reference::applyBandReject(ring, buffers...);
    }
};

struct Gabor : LobeKind {
    static constexpr const char* kName = "gabor";
    static constexpr const char* kVersion = "filt/freqfilt 371";
    static constexpr bool kRejects = false;
    static constexpr auto kModel = &World::gabors;
    static constexpr auto kLibrary = &Library::gabors;
    static constexpr auto kBuild = reference::gabor;
    static void radius(mvFrequencyFilterGabor& f, long r) { f.dcRemovalRadius(r); }
    template <class... Buffers>
    static void apply(const reference::Lobe& lobe, Buffers&... buffers) {
        reference::applyGabor(lobe, buffers...);
    }
};

struct GaborReject : LobeKind {
    static constexpr const char* kName = "gabor reject";
    static constexpr const char* kVersion = "filt/freqfilt 1095";
    static constexpr bool kRejects = true;
    static constexpr auto kModel = &World::gaborRejects;
    static constexpr auto kLibrary = &Library::gaborRejects;
    static constexpr auto kBuild = reference::gaborReject;
    static void radius(mvFrequencyFilterGaborReject& f, long r) { f.dcProtectionRadius(r); }
    template <class... Buffers>
    static void apply(const reference::Lobe& lobe, Buffers&... buffers) {
        reference::applyGaborReject(lobe, buffers...);
    }
};

template <class Kind>
auto& modelOf(World& world, const Arguments& a, std::size_t i) {
    return (world.*Kind::kModel)[at(a, i)];
}
template <class Kind>
auto& libraryOf(Library& library, const Arguments& a, std::size_t i) {
    return (library.*Kind::kLibrary)[at(a, i)];
}

}  // namespace model
