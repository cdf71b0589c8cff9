// The checks that filters share.
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/integers.h>
#include <filt/freqfilt/internal/filter_checks.h>

void mf_RequirePowersOfTwo(const mvPair<long>& size) {
    if (!mf_IsPowerOfTwo(size.x) || !mf_IsPowerOfTwo(size.y)) {
        throw mvFrequencyDefs::InvalidSize("Size must be a power of 2.");
    }
}

void mf_RequireApplicable(const mvFrequencyBuffer& buf, const mvFilterResponse& response,
                          const mvPair<long>& size) {
    mf_BufferAccess::requireData(buf);
    response.requireSet();
    mf_RequireFilterSize(buf, size);
}

void mf_RequireFilterSize(const mvFrequencyBuffer& buf, const mvPair<long>& size) {
    if (buf.width() != size.x || buf.height() != size.y) {
        throw mvFrequencyDefs::InvalidSize(
            "Size of frequency buffer does not match size of filter.");
    }
}
