// The library's objects that stand beside the model's.
#pragma once

#include <filt/fft.h>
#include <filt/freqfilt.h>

#include <array>
#include <memory>
#include <vector>

#include "campaigns/model/state.h"

namespace model {

template <class T>
using PelBuffers = std::array<mvPelBuffer<T>, 3>;

struct Library {
    std::array<mvFrequencyBuffer, 3> buffers{};
    PelBuffers<double> doubles{};
    PelBuffers<Byte> bytes{};
    PelBuffers<Short> shorts{};
    std::array<mvFrequencyFilterBandPass, 2> bandPasses{};
    std::array<mvFrequencyFilterBandReject, 2> bandRejects{};
    std::array<mvFrequencyFilterGabor, 2> gabors{};
    std::array<mvFrequencyFilterGaborReject, 2> gaborRejects{};
    std::array<mvFrequencyFilterImage, 2> imageFilters{};
    std::array<std::unique_ptr<mvFrequencyDefs::Errors>, 2> errors{
        std::make_unique<mvFrequencyDefs::InvalidSize>("at first"),
        std::make_unique<mvFrequencyDefs::UnboundWindow>(nullptr)};
    std::vector<double> answer{};
    std::string record{};
    long watched = 0;
};

template <class T>
PelBuffers<T>& imagesOf(Library& library) {
    if constexpr (std::is_same_v<T, Byte>) {
        return library.bytes;
    } else if constexpr (std::is_same_v<T, Short>) {
        return library.shorts;
    } else {
        return library.doubles;
    }
}

}  // namespace model
