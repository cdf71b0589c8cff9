// The band-reject filter.
#include <filt/fft/internal/archive_routines.h>
#include <filt/freqfilt/band_reject.h>
#include <filt/freqfilt/internal/dc_square.h>
#include <filt/freqfilt/internal/filter_checks.h>
#include <filt/freqfilt/internal/filter_life_cycle.h>
#include <filt/freqfilt/internal/ring.h>

MVFREQ_FILTER_LIFE_CYCLE(mvFrequencyFilterBandReject, 2389)

mvFrequencyFilterBandReject::mvFrequencyFilterBandReject(double sigma, double plateau,
                                                         double frequency, const mvPair<long>& size,
                                                         long dcProtectionRadius) {
    set(sigma, plateau, frequency, size, dcProtectionRadius);
}

mvFrequencyFilterBandReject::mvFrequencyFilterBandReject(const mvRingParameters& wanted) {
    set(wanted);
}

void mvFrequencyFilterBandReject::apply(mvFrequencyBuffer& buf) const {
    mvi::requireApplicable(buf, response_, parameters_.size);
    mvi::Ring ring(parameters_, response_, mvi::Ring::Inside::bySquares);
    mvi::requireList(parameters_.dcRadius);
    mvi::DcSquare dcSquare(buf, parameters_.dcRadius);
    dcSquare.save(buf);
    maskFrequencyBuffer(buf, false, 0, 0);
    float* const plane = getFrequencyBufferData(buf);
    mvi::applyRing(ring, plane, plane, mvi::KeepOutside());
    dcSquare.restore(buf);
}

void mvFrequencyFilterBandReject::apply(const mvFrequencyBuffer& src,
                                        mvFrequencyBuffer& dst) const {
    mvi::requireApplicable(src, response_, parameters_.size);
    mvi::requirePowersOfTwo(parameters_.size);
    mvi::Ring ring(parameters_, response_, mvi::Ring::Inside::byProfile);
    mvi::DcSquare dcSquare(src, parameters_.dcRadius);
    setAndAllocateFrequencyBuffer(dst, src.width(), src.height());
    maskFrequencyBuffer(dst, false, 0, 0);
    mvi::requireList(parameters_.dcRadius);
    dcSquare.save(src);
    mvi::applyRing(ring, getFrequencyBufferData(src), getFrequencyBufferData(dst),
                   mvi::KeepOutside());
    dcSquare.restore(dst);
}
