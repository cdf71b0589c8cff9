// A filter that is built from parameters and holds a stored response.
#pragma once

#include <filt/export.h>
#include <filt/freqfilt/filter.h>
#include <filt/freqfilt/response.h>

/// What ring and lobe filters have in common: parameters, a response built from them, and how both
/// are copied.
///
/// A copy has its own response. Assignment from a filter without response drops the target's
/// response and nothing else: its flag and parameters stay. Moving leaves the source without
/// response. A watcher is called before a response is built (by `set` or a setter) or assigned, not
/// before one is loaded, dropped or moved away.
///
/// *The DC square.* A radius R stands for the 2 R - 1 by 2 R - 1 coefficients around DC: none for
/// 0, only DC for 1. Pass filters clear them after they have filtered. Reject filters take their
/// values before they filter and put them back afterwards. Both go through element access: a square
/// that does not fit the plane ends in mvFrequencyDefs::BadCoord, a buffer that an inverse has
/// overwritten in mvFrequencyDefs::InvalidBuffer. A pass filter leaves the buffer filtered then, a
/// reject filter as it was.
///
/// *Between two buffers.* `apply(src, dst)` gives dst the padded size as its image size and keeps
/// its client transform and offset.
///
/// *Comparison.* `==` holds for equal flags, parameters and responses; lobe filters take a NaN for
/// equal to anything. Filters without response are equal when their flags are.
///
/// Internal but for what is public below: the ring and the lobe filters are what to derive from.
template <class Parameters>
class MVFREQ_API mvResponseFilter : public mvFrequencyFilter {
  public:
    // Not inline: a DLL does not export what is, and tables of classes that derive name it.
    /// True while there are gains.
    [[nodiscard]] bool hasResponse() const override;

    /// What the filter was built from. Throws mvFrequencyDefs::Uninitialized while there is no
    /// response.
    [[nodiscard]] Parameters parameters() const;

  protected:
    mvResponseFilter();
    mvResponseFilter(const mvResponseFilter& other);
    mvResponseFilter(mvResponseFilter&& other) noexcept;
    mvResponseFilter& operator=(const mvResponseFilter& other);
    mvResponseFilter& operator=(mvResponseFilter&& other);
    ~mvResponseFilter() override;

    /// Whether the response is 1 less the shape that the parameters describe, and the square around
    /// DC is protected, not removed.
    virtual bool rejects() const = 0;

    /// Checks the parameters and builds the response; nothing changes when a check fails.
    virtual void create(const Parameters& wanted) = 0;

    /// Throws mvFrequencyDefs::InvalidArgument for a radius below 0.
    void requireRadius(const Parameters& wanted) const;

    /// Announces the change, makes room for width x height gains and takes the parameters over;
    /// the caller writes the gains.
    void rebuild(const Parameters& wanted, std::int32_t width, std::int32_t height);

    /// What every setter does.
    template <class Value>
    void change(Value Parameters::*parameter, const Value& value);

    /// Equal flags, presence and sizes of the responses; true for two filters without response.
    bool sameShape(const mvResponseFilter& other) const;

    /// The stored response; null when there is none.
    float* data() const { return response_.data(); }

    friend struct mvi::FilterAccess;

    /// What the response was built from, and the response.
    Parameters parameters_;
    mvFilterResponse response_;
};
