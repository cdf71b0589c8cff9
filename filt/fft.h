// Frequency buffers, transforms, arithmetic and display mapping.
#pragma once

#include <filt/fft/arithmetic.h>
#include <filt/fft/errors.h>
#include <filt/fft/frequency_buffer.h>
#include <filt/fft/map_image.h>
#include <filt/fft/transforms.h>
#include <filt/platform.h>
