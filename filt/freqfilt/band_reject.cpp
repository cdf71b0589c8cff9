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

void mvFrequencyFilterBandReject::apply(mvFrequencyBuffer& buf) const {
    mf_RequireApplicable(buf, response_, parameters_.size);
    mf_Ring ring(parameters_, response_, mf_Ring::Inside::bySquares);
    mf_RequireList(parameters_.dcRadius);
    const mf_DcSquare dcSquare(buf, parameters_.dcRadius);
    maskFrequencyBuffer(buf, false, 0, 0);
    float* const plane = getFrequencyBufferData(buf);
    mf_ApplyRing(ring, plane, plane, mf_KeepOutside());
    dcSquare.restore(buf);
}

void mvFrequencyFilterBandReject::apply(const mvFrequencyBuffer& src,
                                        mvFrequencyBuffer& dst) const {
    mf_RequireApplicable(src, response_, parameters_.size);
    mf_RequirePowersOfTwo(parameters_.size);
    mf_Ring ring(parameters_, response_, mf_Ring::Inside::byProfile);
    setAndAllocateFrequencyBuffer(dst, src.width(), src.height());
    maskFrequencyBuffer(dst, false, 0, 0);
    mf_RequireList(parameters_.dcRadius);
    const mf_DcSquare dcSquare(src, parameters_.dcRadius);
    mf_ApplyRing(ring, getFrequencyBufferData(src), getFrequencyBufferData(dst), mf_KeepOutside());
    dcSquare.restore(dst);
}
