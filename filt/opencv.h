// Pel buffers and the matrices of OpenCV 4 as views of one another, without copying.
#pragma once

#include <filt/fft/errors.h>
#include <filt/platform.h>

#include <opencv2/core.hpp>

#include <cstdint>
#include <memory>
#include <type_traits>

/// @file
/// For programs that use OpenCV; nothing else of this library includes it or needs OpenCV.
///
///     cv::Mat frame = camera.read();                      // CV_8UC1
///     mvFrequencyBuffer spectrum;
///     mfForwardFFT(mfPelBufferFromMat<unsigned char>(frame), spectrum);
///     filter.apply(spectrum);
///     mvPelBuffer<unsigned char> result;
///     mfInverseFFT(spectrum, result, true, true);
///     cv::threshold(mfMatFromPelBuffer(result), defects, 40, 255, cv::THRESH_BINARY);
///
///     auto out = mfPelBufferFromMat<unsigned char>(frame);    // the picture call, in place
///     mfFilterImage(out, {&withoutWave, &band}, out);
///
///     cv::Mat magnitude = mfMatFromPelBuffer(spectrum.getMagnitudeImage(true));    // CV_64FC1

namespace mvi {

/// Lets a matrix keep the pels alive that it views. Only for mfMatFromPelBuffer.
class PelKeeper : public cv::MatAllocator {
  public:
    /// The counter of a matrix's references; the last one releases `owner`.
    static cv::UMatData* keep(void* pels, std::size_t size, std::shared_ptr<void> owner) {
        // Never destroyed, since a matrix may outlive everything else.
        static const PelKeeper& keeper = *new PelKeeper;
        auto kept = std::make_unique<std::shared_ptr<void>>(std::move(owner));
        auto* data = new cv::UMatData(&keeper);
        data->data = data->origdata = static_cast<unsigned char*>(pels);
        data->size = size;
        data->userdata = kept.release();
        return data;
    }

    /// Releases the owner.
    void deallocate(cv::UMatData* data) const override {
        delete static_cast<std::shared_ptr<void>*>(data->userdata);
        delete data;
    }

    /// New pels are OpenCV's own, as without this class.
    cv::UMatData* allocate(int dimensions, const int* sizes, int type, void* pels,
                           std::size_t* steps, cv::AccessFlag flags,
                           cv::UMatUsageFlags usage) const override {
        const cv::MatAllocator* standard = cv::Mat::getStdAllocator();
        return standard->allocate(dimensions, sizes, type, pels, steps, flags, usage);
    }
    bool allocate(cv::UMatData* data, cv::AccessFlag flags,
                  cv::UMatUsageFlags usage) const override {
        return cv::Mat::getStdAllocator()->allocate(data, flags, usage);
    }
};

/// The type of a matrix with pels of type T: unsigned char, unsigned short or double.
template <class T>
constexpr int matType() {
    static_assert(std::is_same_v<T, unsigned char> || std::is_same_v<T, unsigned short> ||
                  std::is_same_v<T, double>);
    return cv::DataType<T>::type;
}

}  // namespace mvi

/// A view of the matrix's pels; an unbound one for an empty matrix. T is unsigned char for CV_8UC1,
/// unsigned short for CV_16UC1, double for CV_64FC1.
///
/// The view keeps the pels alive as a copy of the matrix does: memory that the matrix was given by
/// the program remains the program's to keep. As with copies of a matrix, a const one does not
/// protect its pels. The view's offset is (0, 0), also for a part of a larger matrix.
///
/// Throws mvFrequencyDefs::InvalidArgument, in this order, for more than two dimensions, for more
/// than one channel, for pels that are no T, and for pels that do not lie where a T can.
template <class T>
mvPelBuffer<T> mfPelBufferFromMat(const cv::Mat& matrix) {
    using Refused = mvFrequencyDefs::InvalidArgument;
    if (matrix.empty()) return {};
    if (matrix.dims > 2) throw Refused("Matrix must have two dimensions.");
    if (matrix.channels() != 1) throw Refused("Matrix must have one channel.");
    if (matrix.type() != mvi::matType<T>()) throw Refused("Matrix has pels of another type.");
    const auto address = reinterpret_cast<std::uintptr_t>(matrix.data);
    if (address % alignof(T) != 0 || matrix.step[0] % sizeof(T) != 0) {
        throw Refused("Matrix has pels that are not aligned.");
    }
    return {reinterpret_cast<T*>(matrix.data), matrix.cols, matrix.rows,
            static_cast<long>(matrix.step[0] / sizeof(T)), std::make_shared<cv::Mat>(matrix)};
}

/// A matrix of the view's pels, of type CV_8UC1, CV_16UC1 or CV_64FC1; an empty one for a view that
/// is not bound.
///
/// The matrix, its copies and its parts keep the pels alive. Offset and client transform are lost.
/// There is no such function for mvPelBuffer_const, since a matrix cannot keep its pels from being
/// written.
template <class T>
cv::Mat mfMatFromPelBuffer(const mvPelBuffer<T>& image) {
    if (!image.isBound()) return {};
    const std::size_t step = static_cast<std::size_t>(image.rowUpdate()) * sizeof(T);
    cv::Mat matrix(static_cast<int>(image.height()), static_cast<int>(image.width()),
                   mvi::matType<T>(), image.pointToOffset(), step);
    matrix.u = mvi::PelKeeper::keep(matrix.data, step * static_cast<std::size_t>(image.height()),
                                    std::make_shared<mvPelBuffer<T>>(image));
    matrix.addref();
    return matrix;
}
