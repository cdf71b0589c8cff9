// The base of all frequency filters.
#include <filt/fft/internal/archive_routines.h>
#include <filt/freqfilt/filter.h>

mvFrequencyFilter::mvFrequencyFilter() = default;
mvFrequencyFilter::mvFrequencyFilter(const mvFrequencyFilter& other)
    : mvPersistent(other), mvRepBase(other) {}
mvFrequencyFilter::~mvFrequencyFilter() = default;

mvFrequencyFilter& mvFrequencyFilter::operator=(const mvFrequencyFilter& other) {
    initialized_ = other.initialized_;
    return *this;
}

bool mvFrequencyFilter::isInitialized() {
    return initialized_;
}

bool mvFrequencyFilter::hasResponse() const {
    return initialized_;
}

void mvFrequencyFilter::dispatchSerialize(mvArchive& ar) {
    serializeOnce(ar, sizeof(mvFrequencyFilter),
                  [&](unsigned char version) { mvFrequencyFilter::serialize_(ar, version); });
}

void mvFrequencyFilter::serialize_(mvArchive& ar, unsigned char version) {
    // As with the filters' own versions, the number is contract: see filter_life_cycle.h.
    mvi::requireVersion(version, 0, "filt/freqfilt", 136);
    mvPersistent::dispatchSerialize(ar);
    ar || initialized_;
}

float* mvFrequencyFilter::getFrequencyBufferData(mvFrequencyBuffer& buf) {
    return buf.data();
}

const float* mvFrequencyFilter::getFrequencyBufferData(const mvFrequencyBuffer& buf) {
    return buf.data();
}

void mvFrequencyFilter::maskFrequencyBuffer(mvFrequencyBuffer& buf, bool masked, long maskedMiny,
                                            long maskedMaxy) {
    buf.masked(masked ? 1 : 0);
    buf.maskedMiny(maskedMiny);
    buf.maskedMaxy(maskedMaxy);
}

void mvFrequencyFilter::setAndAllocateFrequencyBuffer(mvFrequencyBuffer& buf, long width,
                                                      long height) {
    buf.setAndAllocate(width, height);
}
