// Filters a frame that OpenCV holds and gives the result back to OpenCV, without a copy.
#include <filt/freqfilt.h>
#include <filt/opencv.h>

#include <iostream>

int main() {
    cv::Mat frame(30, 50, CV_8UC1, cv::Scalar(100));
    frame.at<unsigned char>(7, 11) = 200;

    mvFrequencyBuffer spectrum;
    mfForwardFFT(mfPelBufferFromMat<unsigned char>(frame), spectrum);
    const mvPair<long> size(spectrum.width(), spectrum.height());
    mvFrequencyFilterBandReject(0.001, 0.0, 0.0, size, 0).apply(spectrum);
    mvPelBuffer<double> result;
    mfInverseFFT(spectrum, result, false, true);

    const cv::Mat found = mfMatFromPelBuffer(result) > 90.0;
    const bool good = found.size() == frame.size() && found.at<unsigned char>(7, 11) == 255 &&
                      mfMatFromPelBuffer(result).ptr<double>() == result.pointToOffset();
    std::cout << (good ? "camera: good\n" : "camera: WRONG\n");
    return good ? 0 : 1;
}
