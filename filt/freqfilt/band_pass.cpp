// The band-pass filter.
#include <filt/freqfilt/band_pass.h>
#include <filt/freqfilt/internal/dc_square.h>
#include <filt/freqfilt/internal/filter_checks.h>
#include <filt/freqfilt/internal/filter_life_cycle.h>
#include <filt/freqfilt/internal/ring.h>

MVFREQ_FILTER_LIFE_CYCLE(mvFrequencyFilterBandPass, 1765)

mvFrequencyFilterBandPass::mvFrequencyFilterBandPass(double sigma, double plateau, double frequency,
                                                     const mvPair<long>& size,
                                                     long dcRemovalRadius) {
    set(sigma, plateau, frequency, size, dcRemovalRadius);
}

mvFrequencyFilterBandPass::mvFrequencyFilterBandPass(const mvRingParameters& wanted) {
    set(wanted);
}

void mvFrequencyFilterBandPass::apply(mvFrequencyBuffer& buf) const {
    mvi::requireApplicable(buf, response_, parameters_.size);
    mvi::Ring ring(parameters_, response_, mvi::Ring::Inside::bySquares);
    keepRing(ring, buf, buf);
}

void mvFrequencyFilterBandPass::apply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const {
    mvi::requireApplicable(src, response_, parameters_.size);
    mvi::requirePowersOfTwo(parameters_.size);
    mvi::Ring ring(parameters_, response_, mvi::Ring::Inside::bySquares);
    setAndAllocateFrequencyBuffer(dst, src.width(), src.height());
    keepRing(ring, src, dst);
}

void mvFrequencyFilterBandPass::keepRing(mvi::Ring& ring, const mvFrequencyBuffer& src,
                                         mvFrequencyBuffer& dst) const {
    maskFrequencyBuffer(dst, false, 0, 0);
    mvi::applyRing(ring, getFrequencyBufferData(src), getFrequencyBufferData(dst),
                   mvi::ClearOutside());
    mvi::clearDcSquare(dst, parameters_.dcRadius);
}
