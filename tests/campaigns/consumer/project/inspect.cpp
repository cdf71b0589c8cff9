// Filters a frame in the program's own memory and stores the filter in the file that is named.
#include <filt/fft.h>
#include <filt/freqfilt.h>

#include <cstring>
#include <fstream>
#include <iostream>
#include <vector>

namespace {

constexpr long kWidth = 50, kHeight = 30, kStride = 64;

// Everything but the mean: a ring that rejects only DC.
mvFrequencyFilterBandReject recipe(const mvFrequencyBuffer& spectrum) {
    return {0.001, 0.0, 0.0, {spectrum.width(), spectrum.height()}, 0};
}

// The frame is level but for one bright spot; what is not the mean stands out.
bool findsTheSpot(const mvFrequencyFilter& filter) {
    std::vector<unsigned char> frame(kStride * kHeight, 100);
    frame[kStride * 7 + 11] = 200;
    const mvPelBuffer<unsigned char> image(frame.data(), kWidth, kHeight, kStride);

    mvFrequencyBuffer spectrum;
    mfForwardFFT(image, spectrum);
    filter.apply(spectrum);
    mvPelBuffer<double> result;
    mfInverseFFT(spectrum, result, false, true);
    return result.width() == kWidth && result.pel(11, 7) > 90 && result.pel(40, 20) < 60;
}

// An exception that the library throws is caught as its class by a program that was built apart.
bool catchesByClass() {
    try {
        mvFrequencyFilterBandPass(0.01, 0.0, 0.6, {64, 32}, 0);
    } catch (const mvFrequencyDefs::InvalidArgument& error) {
        return error.message() != nullptr && std::strlen(error.message()) > 0;
    }
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    mvFrequencyBuffer spectrum;
    mfForwardFFT(mvPelBuffer<unsigned char>(kWidth, kHeight), spectrum);
    mvFrequencyFilterBandReject filter = recipe(spectrum);

    std::ofstream file(argv[1], std::ios::binary);
    mvArchive archive(file);
    mvFrequencyFilter* pointer = &filter;
    archive || pointer;

    const bool good = findsTheSpot(filter) && catchesByClass();
    std::cout << (good ? "inspect: good\n" : "inspect: WRONG\n");
    return good ? 0 : 1;
}
