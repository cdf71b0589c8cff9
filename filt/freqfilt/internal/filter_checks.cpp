// The checks that filters share.
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/integers.h>
#include <filt/freqfilt/internal/filter_checks.h>

namespace mvi {

void requirePowersOfTwo(const mvPair<long>& size) {
    if (!isPowerOfTwo(size.x) || !isPowerOfTwo(size.y)) {
        throw mvFrequencyDefs::InvalidSize("Size must be a power of 2.");
    }
}

void requireApplicable(const mvFrequencyBuffer& buf, const mvFilterResponse& response,
                       const mvPair<long>& size) {
    BufferAccess::requireData(buf);
    response.requireSet();
    requireFilterSize(buf, size);
}

void requireFilterSize(const mvFrequencyBuffer& buf, const mvPair<long>& size) {
    if (buf.width() != size.x || buf.height() != size.y) {
        throw mvFrequencyDefs::InvalidSize(
            "Size of frequency buffer does not match size of filter.");
    }
}

}  // namespace mvi
