// FFTW's pipelines that leave out what is known to be zero, or to be asked for by nobody: rows
// outside the image, columns that the filter does not reach.
#pragma once

#include "fftw_pels.h"

namespace bench {

/// Over one plane of the left half's columns, each step over the whole of it.
template <class T>
std::unique_ptr<PelPeer<T>> fftwPrunedPlane(const Pipeline& work, std::shared_ptr<const Fftw> build,
                                            Pipeline::Columns columns);

/// Rows in blocks, columns in panels that stay in a cache from one transform to the other: of
/// elements row by row, or column by column, or with real and imaginary parts apart.
template <class T>
void addFftwPrunedPanels(PelPeers<T>& peers, const Pipeline& work,
                         const std::shared_ptr<const Fftw>& build, Pipeline::Columns columns);

}  // namespace bench
