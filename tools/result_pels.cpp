// What a filter makes of a picture, as pels to be stored.
#include "result_pels.h"

#include "grey_levels.h"

namespace {

template <class U, class T>
mvPelBuffer<U> filtered(const mvPelBuffer_const<T>& picture, mvFilterList filters,
                        const mvFilterImageOptions& image) {
    mvPelBuffer<U> result;
    mfFilterImage(picture, filters, result, image);
    return result;
}

}  // namespace

template <class T>
mvPelBuffer<T> magnitudePels(const mvPelBuffer_const<T>& picture, mvFilterList filters,
                             const mvFilterImageOptions& image, std::optional<double> percent) {
    if (percent.value_or(100) < 100) {
        const mvPelBuffer<double> values = filtered<double>(picture, filters, image);
        return spreadMagnitudes<T>(values, magnitudeRange(values, *percent));
    }
    mvFilterImageOptions withRange = image;
    withRange.rescale = percent.has_value();
    return filtered<T>(picture, filters, withRange);
}

#define MAGNITUDES_OF(T)                                                             \
    template mvPelBuffer<T> magnitudePels(const mvPelBuffer_const<T>&, mvFilterList, \
                                          const mvFilterImageOptions&, std::optional<double>);
MAGNITUDES_OF(unsigned char)
MAGNITUDES_OF(unsigned short)
#undef MAGNITUDES_OF

mvPelBuffer<unsigned short> realPels(const mvPelBuffer_const<double>& real,
                                     std::optional<double> percent) {
    return percent ? spreadSigned(real, signedRange(real, *percent)) : signedPels(real);
}
