// Enters the persistent classes of the library with the registry, in a fixed order: the objects of
// one source are made from top to bottom.
#include <filt/fft/errors.h>
#include <filt/freqfilt.h>
#include <filt/internal/registration.h>

#define MVFREQ_REGISTER(Class) mv_Instantiator Class::sExemplar(typeid(Class), &Class::make);

MVFREQ_REGISTER(mvFrequencyDefs::InvalidArgument)
MVFREQ_REGISTER(mvFrequencyDefs::Uninitialized)
MVFREQ_REGISTER(mvFrequencyDefs::InvalidSize)
MVFREQ_REGISTER(mvFrequencyDefs::UnboundWindow)
MVFREQ_REGISTER(mvFrequencyDefs::InvalidBuffer)
MVFREQ_REGISTER(mvFrequencyDefs::BadCoord)
MVFREQ_REGISTER(mvFrequencyFilterGabor)
MVFREQ_REGISTER(mvFrequencyFilterGaborReject)
MVFREQ_REGISTER(mvFrequencyFilterBandPass)
MVFREQ_REGISTER(mvFrequencyFilterBandReject)
MVFREQ_REGISTER(mvFrequencyFilterImage)

#undef MVFREQ_REGISTER

void mvi::keepRegistration() {}
