// OpenCV's matrices and pel buffers view the same pels.
#include <filt/freqfilt.h>
#include <filt/opencv.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "support/thrown.h"

namespace {

template <class T>
constexpr int kMatType = CV_8UC1;
template <>
constexpr int kMatType<unsigned short> = CV_16UC1;
template <>
constexpr int kMatType<double> = CV_64FC1;

template <class T>
class Bridge : public ::testing::Test {
  protected:
    // Another value in every pel.
    static cv::Mat frame(int rows, int columns) {
        cv::Mat matrix(rows, columns, kMatType<T>);
        for (int y = 0; y < rows; ++y) {
            for (int x = 0; x < columns; ++x) matrix.at<T>(y, x) = static_cast<T>(y * columns + x);
        }
        return matrix;
    }
};

using PelTypes = ::testing::Types<unsigned char, unsigned short, double>;
TYPED_TEST_SUITE(Bridge, PelTypes);

TYPED_TEST(Bridge, ViewsAMatrixWhereItIs) {
    cv::Mat matrix = this->frame(5, 7);
    const mvPelBuffer<TypeParam> view = mfPelBufferFromMat<TypeParam>(matrix);
    EXPECT_EQ(view.width(), 7);
    EXPECT_EQ(view.height(), 5);
    EXPECT_EQ(view.offset(), mvPair<long>(0, 0));
    for (int y = 0; y < 5; ++y) EXPECT_EQ(view.pointToRow(y), matrix.ptr<TypeParam>(y));
    view.pointToRow(3)[4] = 99;
    EXPECT_EQ(matrix.at<TypeParam>(3, 4), TypeParam(99));
}

TYPED_TEST(Bridge, ViewsAPartOfAMatrixWhereItIs) {
    const cv::Mat matrix = this->frame(9, 11);
    const auto view = mfPelBufferFromMat<TypeParam>(matrix(cv::Rect(2, 3, 6, 4)));
    EXPECT_EQ(view.width(), 6);
    EXPECT_EQ(view.height(), 4);
    EXPECT_EQ(view.rowUpdate(), 11);
    EXPECT_EQ(view.offset(), mvPair<long>(0, 0));
    EXPECT_EQ(view.pointToRow(1), matrix.ptr<TypeParam>(4) + 2);
}

TYPED_TEST(Bridge, KeepsAMatrixAliveAsLongAsItsViews) {
    cv::Mat matrix = this->frame(5, 7);
    const cv::Mat witness = matrix;
    mvPelBuffer<TypeParam> view = mfPelBufferFromMat<TypeParam>(matrix);
    mvPelBuffer<TypeParam> part = view.window(1, 1, 2, 2);
    matrix.release();
    EXPECT_EQ(witness.u->refcount, 2);
    view = {};
    EXPECT_EQ(part.pel(0, 0), TypeParam(8));
    EXPECT_EQ(witness.u->refcount, 2);
    part = {};
    EXPECT_EQ(witness.u->refcount, 1);
}

TYPED_TEST(Bridge, ViewsMemoryThatAMatrixWasGiven) {
    std::vector<TypeParam> memory(6 * 10);
    const cv::Mat matrix(6, 8, kMatType<TypeParam>, memory.data(), 10 * sizeof(TypeParam));
    const auto view = mfPelBufferFromMat<TypeParam>(matrix);
    EXPECT_EQ(view.pointToRow(5), &memory[50]);
    EXPECT_EQ(view.rowUpdate(), 10);
}

TYPED_TEST(Bridge, MakesAMatrixOfPelsWhereTheyAre) {
    const mvPelBuffer<TypeParam> image(21, 5);
    const cv::Mat matrix = mfMatFromPelBuffer(image);
    EXPECT_EQ(matrix.type(), kMatType<TypeParam>);
    EXPECT_EQ(matrix.size(), cv::Size(21, 5));
    for (int y = 0; y < 5; ++y) EXPECT_EQ(matrix.ptr<TypeParam>(y), image.pointToRow(y));
    image.pointToRow(2)[20] = 77;
    EXPECT_EQ(matrix.at<TypeParam>(2, 20), TypeParam(77));
}

TYPED_TEST(Bridge, MakesAMatrixOfAWindowWhereItIs) {
    const mvPelBuffer<TypeParam> image(21, 9);
    const cv::Mat matrix = mfMatFromPelBuffer(image.window(4, 3, 10, 5));
    EXPECT_EQ(matrix.size(), cv::Size(10, 5));
    EXPECT_EQ(matrix.ptr<TypeParam>(4), image.pointToRow(7) + 4);
    cv::Mat grown = matrix;
    grown.adjustROI(2, 2, 2, 2);
    EXPECT_EQ(grown.size(), cv::Size(10, 5)) << "a matrix sees no more than its window";
}

TYPED_TEST(Bridge, KeepsPelsAliveAsLongAsItsMatrices) {
    auto memory = std::make_shared<std::vector<TypeParam>>(6 * 8);
    const std::weak_ptr<std::vector<TypeParam>> witness = memory;
    cv::Mat matrix = mfMatFromPelBuffer(mvPelBuffer<TypeParam>(memory->data(), 8, 6, 8, memory));
    memory.reset();
    cv::Mat copy = matrix;
    cv::Mat part = matrix(cv::Rect(1, 1, 3, 3));
    matrix.release();
    copy.release();
    part.setTo(5);
    EXPECT_FALSE(witness.expired());
    part.release();
    EXPECT_TRUE(witness.expired());
}

TYPED_TEST(Bridge, ItsAllocatorMakesNewMatricesAsOpenCVDoes) {
    const cv::Mat matrix = mfMatFromPelBuffer(mvPelBuffer<TypeParam>(8, 6));
    const cv::MatAllocator* const allocator = matrix.u->currAllocator;
    cv::Mat fresh;
    fresh.allocator = const_cast<cv::MatAllocator*>(allocator);
    fresh.create(30, 40, kMatType<TypeParam>);
    fresh.setTo(9);
    EXPECT_EQ(fresh.template at<TypeParam>(29, 39), TypeParam(9));
    EXPECT_EQ(fresh.u->currAllocator, cv::Mat::getStdAllocator());
    EXPECT_TRUE(allocator->allocate(fresh.u, cv::ACCESS_RW, cv::USAGE_DEFAULT));
    EXPECT_FALSE(allocator->allocate(nullptr, cv::ACCESS_RW, cv::USAGE_DEFAULT));
}

TYPED_TEST(Bridge, LeavesThePelsAloneWhenTheMatrixTakesAnotherSize) {
    const mvPelBuffer<TypeParam> image(8, 6);
    cv::Mat matrix = mfMatFromPelBuffer(image);
    matrix.create(30, 40, kMatType<TypeParam>);
    matrix.setTo(9);
    EXPECT_EQ(image.pel(0, 0), TypeParam(0));
    EXPECT_NE(matrix.ptr<TypeParam>(), image.pointToOffset());
}

TYPED_TEST(Bridge, GivesAMatrixThatOpenCvWorksWith) {
    const mvPelBuffer<TypeParam> image(8, 6);
    const cv::Mat matrix = mfMatFromPelBuffer(image);
    cv::add(matrix, cv::Scalar(3), matrix);
    EXPECT_EQ(image.pel(7, 5), TypeParam(3)) << "the result went where the pels are";
    EXPECT_EQ(cv::sum(matrix.clone())[0], 8 * 6 * 3);
    EXPECT_EQ(cv::sum(matrix.getUMat(cv::ACCESS_READ))[0], 8 * 6 * 3);
}

TYPED_TEST(Bridge, ComesBackToTheSameAddress) {
    const cv::Mat matrix = this->frame(5, 7);
    const cv::Mat back = mfMatFromPelBuffer(mfPelBufferFromMat<TypeParam>(matrix));
    EXPECT_EQ(back.data, matrix.data);
    EXPECT_EQ(back.size(), matrix.size());
    EXPECT_EQ(back.step[0], matrix.step[0]);
}

TYPED_TEST(Bridge, HasNothingForNothing) {
    EXPECT_FALSE(mfPelBufferFromMat<TypeParam>(cv::Mat()).isBound());
    EXPECT_TRUE(mfMatFromPelBuffer(mvPelBuffer<TypeParam>()).empty());
}

TYPED_TEST(Bridge, TransformsAMatrixAsACopyOfIt) {
    const cv::Mat matrix = this->frame(13, 19);
    mvPelBuffer<TypeParam> copy(19, 13);
    for (int y = 0; y < 13; ++y) {
        for (int x = 0; x < 19; ++x) copy.pointToRow(y)[x] = matrix.at<TypeParam>(y, x);
    }
    mvFrequencyBuffer ofMatrix, ofCopy;
    mfForwardFFT(mfPelBufferFromMat<TypeParam>(matrix), ofMatrix);
    mfForwardFFT(copy, ofCopy);
    EXPECT_TRUE(ofMatrix == ofCopy);
}

TYPED_TEST(Bridge, TakesMatricesToThePictureCallAndBack) {
    const mvFrequencyFilterBandReject reject({.sigma = 0.1, .frequency = 0.2, .size = {16, 16}});
    const mvFrequencyFilterBandPass pass({.sigma = 0.1, .frequency = 0.1, .size = {16, 16}});
    cv::Mat matrix = this->frame(13, 19), filtered = cv::Mat::zeros(13, 19, kMatType<TypeParam>);
    auto out = mfPelBufferFromMat<TypeParam>(filtered);
    mfFilterImage(mfPelBufferFromMat<TypeParam>(matrix), {&reject, &pass}, out);
    mvPelBuffer<TypeParam> expected;
    mfFilterImage(mfPelClone(mfPelBufferFromMat<TypeParam>(matrix)), {&reject, &pass}, expected);
    EXPECT_EQ(cv::norm(filtered, mfMatFromPelBuffer(expected), cv::NORM_INF), 0);
    EXPECT_NE(cv::norm(filtered, cv::NORM_INF), 0);
}

TEST(BridgeOfBuffers, ShowsAComponentImageThatIsNoOnesElse) {
    mvFrequencyBuffer spectrum(16, 8);
    spectrum.put(3, -2, {3.0, 4.0}, true);
    const mvPelBuffer<double> magnitude = spectrum.getMagnitudeImage(true);
    const cv::Mat shown = mfMatFromPelBuffer(magnitude);
    EXPECT_EQ(shown.ptr<double>(), magnitude.pointToOffset());
    const cv::Mat alone = mfMatFromPelBuffer(spectrum.getMagnitudeImage(true));
    EXPECT_EQ(alone.size(), cv::Size(16, 8));
    EXPECT_EQ(alone.at<double>(4 - 2, 8 + 3), 5.0);
    EXPECT_EQ(cv::countNonZero(alone), 1);
}

template <class T>
std::string refusal(const cv::Mat& matrix) {
    return support::thrownBy([&] { static_cast<void>(mfPelBufferFromMat<T>(matrix)); });
}

TEST(BridgeRefuses, WhatIsNoImage) {
    const int sides[] = {2, 3, 4};
    EXPECT_EQ(refusal<unsigned char>(cv::Mat(3, sides, CV_8UC3)),
              "InvalidArgument: Matrix must have two dimensions.");
}

TEST(BridgeRefuses, SeveralChannels) {
    for (const int type : {CV_8UC3, CV_8UC2, CV_32FC4, CV_64FC3}) {
        EXPECT_EQ(refusal<unsigned char>(cv::Mat(2, 2, type)),
                  "InvalidArgument: Matrix must have one channel.");
    }
}

TEST(BridgeRefuses, PelsOfAnotherType) {
    const std::string text = "InvalidArgument: Matrix has pels of another type.";
    for (const int type : {CV_8S, CV_16S, CV_32S, CV_32F, CV_16F}) {
        EXPECT_EQ(refusal<unsigned char>(cv::Mat(2, 2, type)), text) << type;
        EXPECT_EQ(refusal<unsigned short>(cv::Mat(2, 2, type)), text) << type;
        EXPECT_EQ(refusal<double>(cv::Mat(2, 2, type)), text) << type;
    }
    EXPECT_EQ(refusal<unsigned short>(cv::Mat(2, 2, CV_8U)), text);
    EXPECT_EQ(refusal<double>(cv::Mat(2, 2, CV_16U)), text);
    EXPECT_EQ(refusal<unsigned char>(cv::Mat(2, 2, CV_64F)), text);
}

TEST(BridgeRefuses, PelsBetweenTwoPels) {
    alignas(8) unsigned char memory[64];
    EXPECT_EQ(refusal<unsigned short>(cv::Mat(2, 2, CV_16U, memory + 1, 8)),
              "InvalidArgument: Matrix has pels that are not aligned.");
    EXPECT_EQ(refusal<double>(cv::Mat(2, 2, CV_64F, memory + 4, 24)),
              "InvalidArgument: Matrix has pels that are not aligned.");
    cv::Mat uneven(2, 2, CV_16U, memory, 8);
    uneven.step[0] = 7;  // the second row begins within a pel
    EXPECT_EQ(refusal<unsigned short>(uneven),
              "InvalidArgument: Matrix has pels that are not aligned.");
}

}  // namespace
