// A filtered picture with its signs.
#pragma once

#include <suggest/filter_chain.h>

/// The real part of what mfFilterImage makes of a picture.
template <class T>
mvPelBuffer<double> realPart(const mvPelBuffer_const<T>& picture, mvFilterList filters,
                             mvFilterImageOptions options);

/// The imaginary part, which is all but zero for filters that treat both sides of DC alike.
template <class T>
mvPelBuffer<double> imaginaryPart(const mvPelBuffer_const<T>& picture, mvFilterList filters,
                                  mvFilterImageOptions options);

/// The angles of complex pels as bytes: 0 to 255 for a full turn.
mvPelBuffer<unsigned char> anglePels(const mvPelBuffer_const<double>& real,
                                     const mvPelBuffer_const<double>& imaginary);

/// 0, 85, 170 and 255 for the signs ++, -+, +- and -- of real and imaginary part.
mvPelBuffer<unsigned char> quadrantPels(const mvPelBuffer_const<double>& real,
                                        const mvPelBuffer_const<double>& imaginary);
