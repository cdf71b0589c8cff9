// The members of mvResponseFilter, for the sources that instantiate it.
#pragma once

#include <filt/fft/internal/integers.h>
#include <filt/fft/internal/same_values.h>
#include <filt/freqfilt/internal/support.h>
#include <filt/freqfilt/response_filter.h>

#include <utility>

template <class P>
mvResponseFilter<P>::mvResponseFilter() = default;

template <class P>
mvResponseFilter<P>::mvResponseFilter(const mvResponseFilter& other) : mvResponseFilter() {
    *this = other;
}

template <class P>
mvResponseFilter<P>::mvResponseFilter(mvResponseFilter&& other) noexcept : mvResponseFilter() {
    *this = std::move(other);
}

template <class P>
mvResponseFilter<P>::~mvResponseFilter() = default;

template <class P>
mvResponseFilter<P>& mvResponseFilter<P>::operator=(const mvResponseFilter& other) {
    if (this == &other) return *this;
    if (!other.response_.isSet()) {
        response_.drop();
        return *this;
    }
    mutating_();
    response_ = other.response_;
    mvFrequencyFilter::operator=(other);
    parameters_ = other.parameters_;
    return *this;
}

template <class P>
mvResponseFilter<P>& mvResponseFilter<P>::operator=(mvResponseFilter&& other) {
    if (this == &other) return *this;
    if (!other.response_.isSet()) {
        response_.drop();
        return *this;
    }
    mutating_();
    initialized_ = std::exchange(other.initialized_, false);
    parameters_ = other.parameters_;
    response_ = std::move(other.response_);
    return *this;
}

template <class P>
void mvResponseFilter<P>::requireRadius(const P& wanted) const {
    if (wanted.dcRadius >= 0) return;
    throw mvFrequencyDefs::InvalidArgument(rejects() ? "DC Protection Radius cannot be negative."
                                                     : "DC Removal Radius cannot be negative.");
}

template <class P>
void mvResponseFilter<P>::rebuild(const P& wanted, std::int32_t width, std::int32_t height) {
    mvi::requireAddressable(width, height);
    mutating_();
    response_.allocate(width, height);
    parameters_ = wanted;
    parameters_.size = {mvi::hold32(wanted.size.x), mvi::hold32(wanted.size.y)};
    parameters_.dcRadius = mvi::hold32(wanted.dcRadius);
    initialized_ = true;
}

template <class P>
bool mvResponseFilter<P>::hasResponse() const {
    return response_.isSet();
}

template <class P>
P mvResponseFilter<P>::parameters() const {
    response_.requireSet();
    return parameters_;
}

template <class P>
template <class Value>
void mvResponseFilter<P>::change(Value P::*parameter, const Value& value) {
    P wanted = parameters();
    if (mvi::sameValue(wanted.*parameter, value)) return;
    wanted.*parameter = value;
    create(wanted);
}

template <class P>
bool mvResponseFilter<P>::sameShape(const mvResponseFilter& other) const {
    return initialized_ == other.initialized_ && response_.isSet() == other.response_.isSet() &&
           (!response_.isSet() || (response_.width() == other.response_.width() &&
                                   response_.height() == other.response_.height()));
}
