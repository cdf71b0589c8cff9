// The base of all frequency filters.
#pragma once

#include <filt/export.h>
#include <filt/fft/frequency_buffer.h>
#include <filt/platform.h>

#include <cstddef>

namespace mvi {
struct FilterAccess;
}

/// A persistent filter of frequency images: built once for one padded size, applied to any number
/// of buffers of exactly that size.
///
/// Filters are values: a copy has its own response. A built filter may be applied from several
/// threads at once to distinct buffers; setters, assignment and loading must not run while another
/// thread uses the filter.
class MVFREQ_API mvFrequencyFilter : public virtual mvPersistent, public virtual mvRepBase {
  public:
    mvFrequencyFilter();
    ~mvFrequencyFilter() override;

    /// A copy on the heap, owned by the caller.
    [[nodiscard]] virtual mvFrequencyFilter* clone() const = 0;

    /// The flag that a filter carries through copies and archives: true once a response was
    /// computed, copied or loaded as such. `hasResponse()` says whether there is one now.
    virtual bool isInitialized();

    /// Makes `dst` the filtered `src`; both may be one object.
    ///
    /// Throws, in this order and before anything changes, mvFrequencyDefs::Uninitialized for a
    /// source without data, the same for a filter without response,
    /// mvFrequencyDefs::InvalidSize for a source of another padded size. Ring and lobe filters then
    /// refuse what only archives can bring: mvFrequencyDefs::InvalidSize for sides that are no
    /// powers of two, or above 2048. What else a filter throws, and when, its own description says.
    virtual void apply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const = 0;

    /// Filters in place. Throws as the other form does, but takes sides of any length, and leaves a
    /// plane without elements as it is.
    virtual void apply(mvFrequencyBuffer& buf) const = 0;

  protected:
    /// Exchanges the part of this class, whose record has the version `version`: the flag.
    virtual void serialize_(mvArchive& ar, unsigned char version);
    void dispatchSerialize(mvArchive& ar) override;

  public:
    /// True when the filter has a response and can be applied; its getters throw otherwise. Unless
    /// a filter says otherwise, its flag decides. (Stands below the others, whose places in the
    /// table of virtual functions are fixed.)
    [[nodiscard]] virtual bool hasResponse() const;

  protected:
    /// What every dispatchSerialize does: unless the part of `size` bytes of this object was
    /// handled in the archive before, exchanges its version and calls `serialize(version)`.
    template <class Serialize>
    void serializeOnce(mvArchive& ar, std::size_t size, Serialize serialize) {
        if (haveVisited(ar, this, size)) return;
        unsigned char version = 0;
        ar || version;
        serialize(version);
        setVisited(ar, this, size);
    }

    /// Does not copy the flag: a derived copy constructor starts empty and then assigns.
    mvFrequencyFilter(const mvFrequencyFilter& other);

    /// Copies only the flag.
    mvFrequencyFilter& operator=(const mvFrequencyFilter& other);

    /// @name A filter's way to the inside of a buffer
    /// @{

    /// The plane: interleaved pairs in storage order; null without data.
    static float* getFrequencyBufferData(mvFrequencyBuffer& buf);
    static const float* getFrequencyBufferData(const mvFrequencyBuffer& buf);

    /// Sets the flag and the band of the rows that hold data: inclusive limits in shifted
    /// coordinates.
    static void maskFrequencyBuffer(mvFrequencyBuffer& buf, bool masked, long maskedMiny,
                                    long maskedMaxy);

    /// Sizes the plane for an image of `width` x `height`; the floats that were there stay. Throws
    /// mvFrequencyDefs::InvalidSize for a side above 2048.
    static void setAndAllocateFrequencyBuffer(mvFrequencyBuffer& buf, long width, long height);
    /// @}

    /// True once a response was computed, copied or loaded as such.
    bool initialized_ = false;
};
