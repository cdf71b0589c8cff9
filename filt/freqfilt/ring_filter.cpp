// What the band-pass and the band-reject filter have in common.
#include <filt/fft/internal/archive_routines.h>
#include <filt/freqfilt/internal/filter_checks.h>
#include <filt/freqfilt/internal/response_filter.h>
#include <filt/freqfilt/internal/ring.h>
#include <filt/freqfilt/ring_filter.h>

#include <algorithm>

template class mvResponseFilter<mvRingParameters>;

void mvRingFilter::set(double sigma, double plateau, double frequency, const mvPair<long>& size,
                       long dcRadius) {
    create({sigma, plateau, frequency, size, dcRadius});
}

void mvRingFilter::create(const mvRingParameters& wanted) {
    using InvalidArgument = mvFrequencyDefs::InvalidArgument;
    if (!(wanted.frequency >= 0.0 && wanted.frequency <= 0.5)) {
        throw InvalidArgument("Frequency must be between 0.0 and 0.5.");
    }
    if (!(wanted.sigma > 0.0)) throw InvalidArgument("Sigma must be positive.");
    if (!(wanted.plateau >= 0.0)) throw InvalidArgument("Plateau cannot be negative.");
    requireRadius(wanted);
    mvi::requirePowersOfTwo(wanted.size);
    rebuild(wanted, mvi::ringSupport(wanted), mvi::kSamplesPerBin);
    mvi::fillRingProfile(wanted, rejects(), response_);
}

long mvRingFilter::supportWidth() const {
    response_.requireSet();
    return response_.width();
}

void mvRingFilter::frequency(double value) {
    change(&mvRingParameters::frequency, value);
}
void mvRingFilter::sigma(double value) {
    change(&mvRingParameters::sigma, value);
}
void mvRingFilter::plateau(double value) {
    change(&mvRingParameters::plateau, value);
}
void mvRingFilter::size(const mvPair<long>& value) {
    change(&mvRingParameters::size, value);
}
void mvRingFilter::dcRadius(long value) {
    change(&mvRingParameters::dcRadius, value);
}

bool mvRingFilter::sameAs(const mvRingFilter& other) const {
    if (!sameShape(other)) return false;
    if (!response_.isSet()) return true;
    const mvRingParameters &a = parameters_, &b = other.parameters_;
    return a.frequency == b.frequency && a.sigma == b.sigma && a.plateau == b.plateau &&
           a.size == b.size && a.dcRadius == b.dcRadius &&
           std::equal(data(), data() + response_.size(), other.data());
}

void mvRingFilter::exchange(mvArchive& ar) {
    response_.exchangeSize(ar);
    ar || parameters_.frequency || parameters_.sigma || parameters_.plateau;
    mvi::exchangePair(ar, parameters_.size);
    ar || parameters_.dcRadius;
    response_.exchangeGains(ar);
}
