// The Gabor-reject filter.
#include <filt/freqfilt/gabor_reject.h>
#include <filt/freqfilt/internal/dc_square.h>
#include <filt/freqfilt/internal/filter_checks.h>
#include <filt/freqfilt/internal/filter_life_cycle.h>
#include <filt/freqfilt/internal/patch.h>

MVFREQ_FILTER_LIFE_CYCLE(mvFrequencyFilterGaborReject, 1095)

mvFrequencyFilterGaborReject::mvFrequencyFilterGaborReject(const mvPair<double>& sigma,
                                                           const mvPair<double>& plateau,
                                                           mvRadian angle, double frequency,
                                                           const mvPair<long>& size,
                                                           long dcProtectionRadius) {
    set(sigma, plateau, angle, frequency, size, dcProtectionRadius);
}

void mvFrequencyFilterGaborReject::apply(mvFrequencyBuffer& buf) const {
    mf_RequireApplicable(buf, response_, parameters_.size);
    const mf_DcSquare dcSquare(buf, parameters_.dcRadius);
    rejectLobe(buf, buf);
    dcSquare.restore(buf);
}

void mvFrequencyFilterGaborReject::apply(const mvFrequencyBuffer& src,
                                         mvFrequencyBuffer& dst) const {
    mf_RequireApplicable(src, response_, parameters_.size);
    mf_RequirePowersOfTwo(parameters_.size);
    const mf_DcSquare dcSquare(src, parameters_.dcRadius);
    setAndAllocateFrequencyBuffer(dst, src.width(), src.height());
    rejectLobe(src, dst);
    dcSquare.restore(dst);
}

void mvFrequencyFilterGaborReject::rejectLobe(const mvFrequencyBuffer& src,
                                              mvFrequencyBuffer& dst) const {
    const mf_PatchPlacement at(parameters_, response_);
    maskFrequencyBuffer(dst, false, 0, 0);
    mf_ApplyPatch(at, response_, getFrequencyBufferData(src), getFrequencyBufferData(dst),
                  mf_KeepOutside());
}
