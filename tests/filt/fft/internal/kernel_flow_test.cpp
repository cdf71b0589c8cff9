// Rows written on demand, columns taken as they are finished, planes that are not kept: the bits of
// the transform of a whole plane, on every path.
#include <filt/fft/internal/kernel/transform.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "reference/fft/kernel.h"
#include "support/compare.h"
#include "support/kernel_paths.h"
#include "support/random_planes.h"

namespace {

using reference::Plane;
using support::onEveryPath;
using support::randomPlane;

struct Size {
    int width;
    int height;
};

// Narrower than a panel, a panel, a step and more; square, where a band has rules of its own, and
// oblong.
const std::vector<Size> kSizes = {{1, 1},    {1, 8},    {8, 1},    {2, 4},    {4, 4},   {8, 8},
                                  {16, 4},   {16, 64},  {64, 16},  {64, 64},  {128, 2}, {128, 128},
                                  {256, 32}, {32, 256}, {512, 64}, {256, 256}};

struct Band {
    int low;
    int high;
};

std::vector<Band> bandsOf(int height) {
    return {{0, height},
            {height / 2, height / 2 + height / 8},
            {height / 4, height / 2},
            {0, 0},
            {height - 1, height - 1},
            {3, 2},
            {-5, 1}};
}

std::vector<long> columnCountsOf(int width) {
    std::vector<long> counts;
    for (const long count : {1, 5, 16, 40, 65, 100, width - 1, width + 0}) {
        if (count >= 1 && count <= width) counts.push_back(count);
    }
    return counts;
}

bool isInBand(Band band, int height, int y) {
    const int shifted = y < height / 2 ? y + height / 2 : y - height / 2;
    return shifted >= band.low && shifted <= band.high;
}

Plane withZerosOutside(Plane plane, Band band) {
    for (int y = 0; y < plane.height; ++y) {
        for (int x = 0; x < plane.width && !isInBand(band, plane.height, y); ++x) {
            plane.at(x, y) = {0.0F, 0.0F};
        }
    }
    return plane;
}

Plane leftColumns(const Plane& plane, long count) {
    Plane left(static_cast<int>(count), plane.height);
    for (int y = 0; y < plane.height; ++y) {
        for (long x = 0; x < count; ++x) left.at(x, y) = plane.at(x, y);
    }
    return left;
}

// Collects the columns that it takes; each may come once.
class Collector : public mvi::ColumnSink {
  public:
    Collector(long columns, int height) : plane_(static_cast<int>(columns), height) {}

    void take(const mvi::FinishedColumns& columns) override {
        EXPECT_EQ(columns.x, next_);
        next_ += columns.count;
        for (int y = 0; y < plane_.height; ++y) {
            const float* const elements = columns.first + columns.pitch * y;
            for (long i = 0; i < columns.count && columns.x + i < plane_.width; ++i) {
                plane_.at(columns.x + i, y) = {elements[2 * i], elements[2 * i + 1]};
            }
        }
    }

    const Plane& plane() const {
        EXPECT_EQ(next_, plane_.width);
        return plane_;
    }

  private:
    Plane plane_;
    long next_ = 0;
};

class RowsOf : public mvi::RowSource {
  public:
    RowsOf(const Plane& plane, long rows, bool real) : plane_(plane), rows_(rows), real_(real) {}

    long rows() const override { return rows_; }

    void write(long y, float* row) const override {
        for (long x = 0; x < plane_.width; ++x) {
            if (real_) {
                row[x] = plane_.at(x, y).re;
                if (plane_.width == 1) row[1] = 0.0F;
            } else {
                row[2 * x] = plane_.at(x, y).re;
                row[2 * x + 1] = plane_.at(x, y).im;
            }
        }
    }

  private:
    const Plane& plane_;
    long rows_;
    bool real_;
};

// The plane that a source of `rows` rows stands for.
Plane writtenPlane(const Plane& plane, long rows, bool real) {
    Plane written(plane.width, plane.height);
    for (long y = 0; y < rows; ++y) {
        RowsOf(plane, rows, real).write(y, &written.at(0, y).re);
    }
    return written;
}

template <class Check>
void withEveryBand(Check check) {
    for (const Size& size : kSizes) {
        for (const Band& band : bandsOf(size.height)) {
            const Plane random = randomPlane(size.width, size.height, 7);
            for (const bool zeros : {true, false}) {
                SCOPED_TRACE(std::to_string(size.width) + " x " + std::to_string(size.height) +
                             ", band " + std::to_string(band.low) + " .. " +
                             std::to_string(band.high) + (zeros ? ", zero outside" : ""));
                check(zeros ? withZerosOutside(random, band) : random, band);
            }
        }
    }
}

mvPair<long> sizeOf(const Plane& plane) {
    return {plane.width, plane.height};
}

mvi::RowBand rowBand(const Plane& plane, Band band) {
    return {plane.height, band.low, band.high};
}

mvi::Direction directionOf(int sign) {
    return sign < 0 ? mvi::Direction::inverse : mvi::Direction::forward;
}

// Rows 1, 2, 5, 6 ... become zero, every other one of them with a negative zero.
Plane withRowsOfZeros(Plane plane) {
    for (int y = 0; y < plane.height; ++y) {
        if (y % 4 != 1 && y % 4 != 2) continue;
        float* const row = plane.floats() + 2 * plane.width * y;
        std::fill_n(row, 2 * plane.width, 0.0f);
        if (y % 8 > 3) row[y % (2 * plane.width)] = -0.0f;
    }
    return plane;
}

TEST(KernelFlow, TransformsRowsOfZerosAsAnyOther) {
    withEveryBand([](const Plane& random, Band band) {
        const Plane plane = withRowsOfZeros(random);
        for (const int direction : {1, -1}) {
            Plane expected = plane;
            reference::fft2D(expected, direction, band.low, band.high);
            onEveryPath([&](const mvi::KernelPath& path) {
                Plane source = plane, inPlace = plane, result = random;
                Collector sink(plane.width, plane.height);
                const auto transform = [&](float* src, float* dst, mvi::ColumnSink* taker) {
                    mvi::transformComplex(src, dst, sizeOf(plane), directionOf(direction),
                                          rowBand(plane, band), plane.width, taker, path);
                };
                transform(source.floats(), result.floats(), nullptr);
                transform(inPlace.floats(), inPlace.floats(), nullptr);
                transform(source.floats(), nullptr, &sink);
                EXPECT_TRUE(support::samePlane(expected, result, true));
                EXPECT_TRUE(support::samePlane(expected, inPlace, true));
                EXPECT_TRUE(support::samePlane(expected, sink.plane(), true));
                EXPECT_TRUE(support::samePlane(plane, source, true));
            });
        }
    });
}

TEST(KernelFlow, GivesASinkTheColumnsOfTheTransformAndKeepsTheSource) {
    withEveryBand([](const Plane& plane, Band band) {
        Plane expected = plane;
        reference::fft2D(expected, -1, band.low, band.high);
        onEveryPath([&](const mvi::KernelPath& path) {
            for (const long columns : columnCountsOf(plane.width)) {
                Plane source = plane;
                Collector sink(columns, plane.height);
                mvi::transformComplex(source.floats(), nullptr, sizeOf(plane),
                                      mvi::Direction::inverse, rowBand(plane, band), columns, &sink,
                                      path);
                EXPECT_TRUE(support::samePlane(leftColumns(expected, columns), sink.plane(), true));
                EXPECT_TRUE(support::samePlane(plane, source, true));
            }
        });
    });
}

TEST(KernelFlow, TransformsIntoAnotherPlane) {
    withEveryBand([](const Plane& plane, Band band) {
        for (const int direction : {1, -1}) {
            Plane expected = plane;
            reference::fft2D(expected, direction, band.low, band.high);
            onEveryPath([&](const mvi::KernelPath& path) {
                Plane source = plane, result = randomPlane(plane.width, plane.height, 9);
                mvi::transformComplex(source.floats(), result.floats(), sizeOf(plane),
                                      directionOf(direction), rowBand(plane, band), plane.width,
                                      nullptr, path);
                EXPECT_TRUE(support::samePlane(expected, result, true));
                EXPECT_TRUE(support::samePlane(plane, source, true));
            });
        }
    });
}

TEST(KernelFlow, ComputesAllColumnsOfAPlaneInPlace) {
    withEveryBand([](const Plane& plane, Band band) {
        Plane expected = plane;
        reference::fft2D(expected, -1, band.low, band.high);
        onEveryPath([&](const mvi::KernelPath& path) {
            const long columns = (plane.width + 1) / 2;
            Plane both = plane;
            Collector sink(columns, plane.height);
            mvi::transformComplex(both.floats(), both.floats(), sizeOf(plane),
                                  mvi::Direction::inverse, rowBand(plane, band), columns, &sink,
                                  path);
            EXPECT_TRUE(support::samePlane(expected, both, true));
            EXPECT_TRUE(support::samePlane(leftColumns(expected, columns), sink.plane(), true));
        });
    });
}

// Rows of zeros become rows of zeros of either sign, those that are not there as well.
void takesRowsThatAreNotThereAsZero(const Plane& plane) {
    for (const int rows :
         {1, plane.height / 2, plane.height / 2 + 1, plane.height - 1, plane.height}) {
        if (rows < 1 || rows > plane.height) continue;
        SCOPED_TRACE(std::to_string(rows) + " of " + std::to_string(plane.width) + " x " +
                     std::to_string(plane.height));
        Plane complex = writtenPlane(plane, rows, false);
        reference::fft2D(complex, 1, 0, plane.height);
        Plane real = writtenPlane(plane, rows, true);
        reference::realFFT2D(real);
        onEveryPath([&](const mvi::KernelPath& path) {
            Plane result = randomPlane(plane.width, plane.height, 13);
            mvi::transformComplex(RowsOf(plane, rows, false), result.floats(), sizeOf(plane), path);
            EXPECT_TRUE(support::samePlane(complex, result, true));
            result = randomPlane(plane.width, plane.height, 13);
            mvi::transformReal(RowsOf(plane, rows, true), result.floats(), sizeOf(plane), path);
            EXPECT_TRUE(support::samePlane(real, result, true));
        });
    }
}

TEST(KernelFlow, TakesRowsThatAreNotThereAsZero) {
    for (const Size& size : kSizes) {
        takesRowsThatAreNotThereAsZero(randomPlane(size.width, size.height, 11));
        takesRowsThatAreNotThereAsZero(Plane(size.width, size.height));
    }
}

}  // namespace
