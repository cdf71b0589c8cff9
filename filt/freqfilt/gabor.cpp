// The Gabor filter.
#include <filt/fft/internal/integers.h>
#include <filt/freqfilt/gabor.h>
#include <filt/freqfilt/internal/dc_square.h>
#include <filt/freqfilt/internal/filter_checks.h>
#include <filt/freqfilt/internal/filter_life_cycle.h>
#include <filt/freqfilt/internal/patch.h>

MVFREQ_FILTER_LIFE_CYCLE(mvFrequencyFilterGabor, 371)

mvFrequencyFilterGabor::mvFrequencyFilterGabor(const mvPair<double>& sigma,
                                               const mvPair<double>& plateau, mvRadian angle,
                                               double frequency, const mvPair<long>& size,
                                               long dcRemovalRadius) {
    set(sigma, plateau, angle, frequency, size, dcRemovalRadius);
}

mvFrequencyFilterGabor::mvFrequencyFilterGabor(const mvLobeParameters& wanted) {
    set(wanted);
}

void mvFrequencyFilterGabor::apply(mvFrequencyBuffer& buf) const {
    mvi::requireApplicable(buf, response_, parameters_.size);
    keepLobe(buf, buf);
}

void mvFrequencyFilterGabor::apply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const {
    mvi::requireApplicable(src, response_, parameters_.size);
    mvi::requirePowersOfTwo(parameters_.size);
    setAndAllocateFrequencyBuffer(dst, src.width(), src.height());
    keepLobe(src, dst);
}

void mvFrequencyFilterGabor::keepLobe(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const {
    const mvi::PatchPlacement at(parameters_, response_);
    maskFrequencyBuffer(dst, true, mvi::hold32(at.rowMin), mvi::hold32(at.rowMax));
    mvi::applyPatch(at, response_, getFrequencyBufferData(src), getFrequencyBufferData(dst),
                    mvi::ClearOutside());
    mvi::clearDcSquare(dst, parameters_.dcRadius);
}
