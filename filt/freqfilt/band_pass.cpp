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

void mvFrequencyFilterBandPass::apply(mvFrequencyBuffer& buf) const {
    mf_RequireApplicable(buf, response_, parameters_.size);
    mf_Ring ring(parameters_, response_, mf_Ring::Inside::bySquares);
    keepRing(ring, buf, buf);
}

void mvFrequencyFilterBandPass::apply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const {
    mf_RequireApplicable(src, response_, parameters_.size);
    mf_RequirePowersOfTwo(parameters_.size);
    mf_Ring ring(parameters_, response_, mf_Ring::Inside::bySquares);
    setAndAllocateFrequencyBuffer(dst, src.width(), src.height());
    keepRing(ring, src, dst);
}

void mvFrequencyFilterBandPass::keepRing(mf_Ring& ring, const mvFrequencyBuffer& src,
                                         mvFrequencyBuffer& dst) const {
    maskFrequencyBuffer(dst, false, 0, 0);
    mf_ApplyRing(ring, getFrequencyBufferData(src), getFrequencyBufferData(dst), mf_ClearOutside());
    mf_ClearDcSquare(dst, parameters_.dcRadius);
}
