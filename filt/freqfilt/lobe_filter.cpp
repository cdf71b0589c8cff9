// What the Gabor and the Gabor-reject filter have in common.
#include <filt/fft/internal/archive_routines.h>
#include <filt/freqfilt/internal/filter_checks.h>
#include <filt/freqfilt/internal/patch.h>
#include <filt/freqfilt/internal/response_filter.h>
#include <filt/freqfilt/lobe_filter.h>

template class mvResponseFilter<mvLobeParameters>;

void mvLobeFilter::set(const mvPair<double>& sigma, const mvPair<double>& plateau, mvRadian angle,
                       double frequency, const mvPair<long>& size, long dcRadius) {
    create({sigma, plateau, angle, frequency, size, dcRadius});
}

void mvLobeFilter::create(const mvLobeParameters& wanted) {
    using InvalidArgument = mvFrequencyDefs::InvalidArgument;
    if (!(wanted.frequency >= 0.0 && wanted.frequency <= 0.5)) {
        throw InvalidArgument("Frequency must be between 0.0 and 0.5.");
    }
    if (wanted.sigma.x <= 0.0 || wanted.sigma.y <= 0.0) {
        throw InvalidArgument("Sigma values must be positive.");
    }
    if (wanted.plateau.x < 0.0 || wanted.plateau.y < 0.0) {
        throw InvalidArgument("Plateau values cannot be negative.");
    }
    requireRadius(wanted);
    mvi::requirePowersOfTwo(wanted.size);
    const mvPair<std::int32_t> support = mvi::lobeSupport(wanted);
    rebuild(wanted, support.x, support.y);
    mvi::fillLobePatch(wanted, rejects(), response_);
}

long mvLobeFilter::supportWidth() const {
    response_.requireSet();
    return response_.width();
}

long mvLobeFilter::supportHeight() const {
    response_.requireSet();
    return response_.height();
}

void mvLobeFilter::sigma(const mvPair<double>& value) {
    change(&mvLobeParameters::sigma, value);
}
void mvLobeFilter::plateau(const mvPair<double>& value) {
    change(&mvLobeParameters::plateau, value);
}
void mvLobeFilter::angle(mvRadian value) {
    change(&mvLobeParameters::angle, value);
}
void mvLobeFilter::frequency(double value) {
    change(&mvLobeParameters::frequency, value);
}
void mvLobeFilter::size(const mvPair<long>& value) {
    change(&mvLobeParameters::size, value);
}
void mvLobeFilter::dcRadius(long value) {
    change(&mvLobeParameters::dcRadius, value);
}

bool mvLobeFilter::sameAs(const mvLobeFilter& other) const {
    if (!sameShape(other)) return false;
    if (!response_.isSet()) return true;
    const mvLobeParameters &a = parameters_, &b = other.parameters_;
    return mvi::sameValue(a.angle, b.angle) && mvi::sameValue(a.frequency, b.frequency) &&
           mvi::sameValue(a.sigma, b.sigma) && mvi::sameValue(a.plateau, b.plateau) &&
           a.size == b.size && a.dcRadius == b.dcRadius &&
           mvi::sameFloats(data(), other.data(), response_.size());
}

void mvLobeFilter::exchange(mvArchive& ar) {
    double angle = parameters_.angle.toDouble();
    response_.exchangeSize(ar);
    ar || angle || parameters_.frequency;
    if (!ar.isStoring()) parameters_.angle = mvRadian(angle);
    mvi::exchangePair(ar, parameters_.sigma);
    mvi::exchangePair(ar, parameters_.plateau);
    mvi::exchangePair(ar, parameters_.size);
    ar || parameters_.dcRadius;
    response_.exchangeGains(ar);
}
