// Plain C++: runs everywhere.
#include <filt/fft/internal/kernel/paths/path_of.h>

namespace mvi {

const KernelPath kPlainPath = pathOf<PlainVector<8>>("plain", plainIsSupported);

}  // namespace mvi
