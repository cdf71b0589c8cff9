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

mvFrequencyFilterGaborReject::mvFrequencyFilterGaborReject(const mvLobeParameters& wanted) {
    set(wanted);
}

void mvFrequencyFilterGaborReject::apply(mvFrequencyBuffer& buf) const {
    mvi::requireApplicable(buf, response_, parameters_.size);
    mvi::DcSquare dcSquare(buf, parameters_.dcRadius);
    dcSquare.save(buf);
    rejectLobe(buf, buf);
    dcSquare.restore(buf);
}

void mvFrequencyFilterGaborReject::apply(const mvFrequencyBuffer& src,
                                         mvFrequencyBuffer& dst) const {
    mvi::requireApplicable(src, response_, parameters_.size);
    mvi::requirePowersOfTwo(parameters_.size);
    mvi::DcSquare dcSquare(src, parameters_.dcRadius);
    dcSquare.save(src);
    setAndAllocateFrequencyBuffer(dst, src.width(), src.height());
    rejectLobe(src, dst);
    dcSquare.restore(dst);
}

void mvFrequencyFilterGaborReject::rejectLobe(const mvFrequencyBuffer& src,
                                              mvFrequencyBuffer& dst) const {
    const mvi::PatchPlacement at(parameters_, response_);
    maskFrequencyBuffer(dst, false, 0, 0);
    mvi::applyPatch(at, response_, getFrequencyBufferData(src), getFrequencyBufferData(dst),
                    mvi::KeepOutside());
}
