// What the statements of the table are made of.
#pragma once

#include <filt/freqfilt.h>

extern mvPelBuffer<float> floats;
extern mvPelBuffer<unsigned char> bytes;
extern mvPelBuffer<double> doubles;
extern mvFrequencyBuffer spectrum;
extern const mvFrequencyBuffer constant;
extern const mvFrequencyFilterGabor filter;
extern mvRadian angle;

template <class T>
void use(const T&);
