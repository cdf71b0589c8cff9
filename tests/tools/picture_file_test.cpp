// Which files the program reads, and what it makes of broken ones.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <optional>
#include <stdexcept>

#include "support/picture_bytes.h"
#include "tools/failure.h"
#include "tools/picture_file.h"

namespace {

using support::bmpBytes;
using support::jpegBytes;
using support::pnmBytes;
using support::Samples;
using support::someSamples;
using support::tiffBytes;

class PictureFiles : public ::testing::Test {
  protected:
    ~PictureFiles() override { std::remove(path_.c_str()); }

    void write(const std::string& bytes) const { std::ofstream(path_, std::ios::binary) << bytes; }

    Samples read(const std::string& bytes, const ReadOptions& options = {Channels::each}) const {
        write(bytes);
        return std::visit([](const auto& picture) { return samplesOf(picture); },
                          readPicture(path_, options));
    }

    std::string complaintOf(const std::string& bytes, long maxPixels = 1'000'000) const {
        try {
            read(bytes, {Channels::each, maxPixels});
        } catch (const Failure& failure) {
            return failure.what();
        }
        return "";
    }

    // The same pels as in another file, or a failure that names the file; nothing else.
    std::optional<Samples> readIfSound(const std::string& bytes) const {
        try {
            return read(bytes, {Channels::each, 1'000'000});
        } catch (const Failure& failure) {
            EXPECT_TRUE(std::string(failure.what()).starts_with(path_ + ": ")) << failure.what();
            return std::nullopt;
        }
    }

    const std::string path_ = ::testing::TempDir() + "picture-" + std::to_string(getpid());

  private:
    template <class T>
    static Samples samplesOf(const PictureOf<T>& picture) {
        const auto& first = picture.first();
        Samples samples{
            first.width(), first.height(), 8 * sizeof(T), std::ssize(picture.channels), {}};
        for (long y = 0; y < first.height(); ++y) {
            for (long x = 0; x < first.width(); ++x) {
                for (const auto& channel : picture.channels) {
                    samples.values.push_back(channel.pel(x, y));
                }
            }
        }
        return samples;
    }
};

void expectSame(const Samples& read, const Samples& expected, const std::string& what) {
    EXPECT_EQ(read.width, expected.width) << what;
    EXPECT_EQ(read.height, expected.height) << what;
    EXPECT_EQ(read.depth, expected.depth) << what;
    EXPECT_EQ(read.channels, expected.channels) << what;
    EXPECT_EQ(read.values, expected.values) << what;
}

// A file of each kind, small enough for each of its bytes to be tried.
std::vector<std::pair<std::string, std::string>> smallFiles() {
    const Samples grey = someSamples(9, 5, 8, 1), colour = someSamples(5, 3, 8, 3);
    const Samples deep = someSamples(5, 3, 16, 3);
    return {{"P2", pnmBytes(grey, true)},
            {"P3", pnmBytes(deep, true)},
            {"P5", pnmBytes(grey, false)},
            {"P6", pnmBytes(deep, false)},
            {"BMP", bmpBytes(colour)},
            {"JPEG", jpegBytes(colour, 6)},
            {"progressive JPEG", jpegBytes(grey, 0, true)},
            {"TIFF", tiffBytes(deep)},
            {"LZW TIFF", tiffBytes(colour, {.compression = 5})},
            {"tiles of TIFF", tiffBytes(grey, {.isTiled = true, .compression = 8})},
            {"TIFF with channels apart", tiffBytes(colour, {.isApart = true})}};
}

TEST_F(PictureFiles, OfPnmKeepEverySample) {
    for (const int depth : {8, 16}) {
        for (const long channels : {1l, 3l}) {
            const Samples samples = someSamples(7, 4, depth, channels);
            for (const bool isText : {true, false}) {
                expectSame(read(pnmBytes(samples, isText)), samples, "PNM");
            }
        }
    }
}

TEST_F(PictureFiles, OfPnmHaveTheirGreatestValueWhite) {
    EXPECT_EQ(read("P2 3 1 5 0 3 5").values, (std::vector<unsigned>{0, 153, 255}));
    const Samples deep = read("P2 3 1 1023 0 1 1023\n");
    EXPECT_EQ(deep.depth, 16);
    EXPECT_EQ(deep.values, (std::vector<unsigned>{0, 64, 65535}));
    EXPECT_EQ(complaintOf("P2 1 1 5 6\n"), path_ + ": A sample is above the greatest value");
}

TEST_F(PictureFiles, OfBmpKeepEverySample) {
    for (const long channels : {1l, 3l}) {
        const Samples samples = someSamples(7, 4, 8, channels);
        expectSame(read(bmpBytes(samples)), samples, "BMP");
    }
}

TEST_F(PictureFiles, OfTiffKeepEverySample) {
    for (const int depth : {8, 16}) {
        for (const long channels : {1l, 3l}) {
            for (int kind = 0; kind < 24; ++kind) {
                const Samples samples = someSamples(37, 19, depth, channels);
                const std::string bytes = tiffBytes(samples, {.isTiled = kind % 2 == 1,
                                                              .isApart = kind / 2 % 2 == 1,
                                                              .isBigEndian = kind / 4 % 2 == 1,
                                                              .compression = kind < 8    ? 1
                                                                             : kind < 16 ? 5
                                                                                         : 8});
                expectSame(read(bytes), samples, "TIFF of kind " + std::to_string(kind));
            }
        }
    }
}

TEST_F(PictureFiles, OfJpegAreNearTheirSamples) {
    Samples even = someSamples(16, 8, 8, 3);
    for (std::size_t i = 0; i < even.values.size(); ++i) even.values[i] = i % 3 == 0 ? 200 : 90;
    for (const bool isProgressive : {false, true}) {
        const Samples result = read(jpegBytes(even, 0, isProgressive));
        EXPECT_EQ(result.channels, 3);
        for (std::size_t i = 0; i < even.values.size(); ++i) {
            EXPECT_NEAR(result.values[i], even.values[i], 2) << i;
        }
    }
    EXPECT_EQ(read(jpegBytes(someSamples(16, 8, 8, 1), 0)).channels, 1);
}

// Where the pel (x, y) of a stored picture of w by h pels is shown.
using Place = std::pair<long, long>;
Place shown(int orientation, long x, long y, long w, long h) {
    const Place places[] = {{x, y}, {w - 1 - x, y}, {w - 1 - x, h - 1 - y}, {x, h - 1 - y},
                            {y, x}, {h - 1 - y, x}, {h - 1 - y, w - 1 - x}, {y, w - 1 - x}};
    return places[orientation - 1];
}

void expectTurned(const Samples& turned, const Samples& stored, int orientation) {
    ASSERT_EQ(turned.width, orientation < 5 ? stored.width : stored.height);
    ASSERT_EQ(turned.values.size(), stored.values.size());
    for (long y = 0; y < stored.height; ++y) {
        for (long x = 0; x < stored.width; ++x) {
            const auto [u, v] = shown(orientation, x, y, stored.width, stored.height);
            for (long c = 0; c < stored.channels; ++c) {
                EXPECT_EQ(turned.values[static_cast<std::size_t>((v * turned.width + u) * 3 + c)],
                          stored.values[static_cast<std::size_t>((y * stored.width + x) * 3 + c)])
                    << orientation << ": " << x << ", " << y;
            }
        }
    }
}

TEST_F(PictureFiles, AreShownUpright) {
    const Samples samples = someSamples(19, 18, 8, 3);
    const Samples decoded = read(jpegBytes(samples, 0));
    for (int orientation = 1; orientation <= 8; ++orientation) {
        expectTurned(read(jpegBytes(samples, orientation)), decoded, orientation);
        expectTurned(read(tiffBytes(samples, {.isTiled = true, .orientation = orientation})),
                     samples, orientation);
    }
    expectSame(read(jpegBytes(samples, 9)), decoded, "an orientation that is none");
}

TEST_F(PictureFiles, AreRefusedForTheirKindInASentence) {
    EXPECT_EQ(complaintOf("This is no picture."),
              path_ + ": Not a PNG, JPEG, TIFF, BMP or PNM file");
    EXPECT_EQ(complaintOf(""), path_ + ": The file ends early");
    std::string packed = bmpBytes(someSamples(4, 4, 8, 1));
    packed[30] = 1;
    EXPECT_EQ(complaintOf(packed), path_ + ": Compressed BMP is not read");
}

TEST_F(PictureFiles, AreRefusedWhenTheyHaveMorePelsThanAllowed) {
    for (const auto& [name, bytes] : smallFiles()) {
        EXPECT_EQ(complaintOf(bytes, 45), "") << name;
        const std::string text = complaintOf(bytes, 14);
        EXPECT_NE(text.find(" pels are more than --max-pixels 14"), std::string::npos)
            << name << text;
    }
}

// A picture that lost a byte is refused, or is the same: what a TIFF has at its end may be no pel.
TEST_F(PictureFiles, AreRefusedWhereverTheyAreCut) {
    for (const auto& [name, bytes] : smallFiles()) {
        const Samples whole = read(bytes);
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            const std::optional<Samples> cut = readIfSound(bytes.substr(0, length));
            if (!cut) continue;
            EXPECT_TRUE(name.find("TIFF") != std::string::npos || name == "P2" || name == "P3")
                << name << length;
            EXPECT_EQ(cut->values.size(), whole.values.size()) << name << length;
        }
    }
}

TEST_F(PictureFiles, AreAPictureOrRefusedWhateverByteIsWrong) {
    constexpr int kChanges[] = {0x01, 0x80, 0xff};
    for (const auto& [name, bytes] : smallFiles()) {
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            std::string wrong = bytes;
            wrong[at] = static_cast<char>(wrong[at] ^ kChanges[at % std::size(kChanges)]);
            readIfSound(wrong);
        }
    }
}

// 9000 x 9000 pels, which would take 81 MB; no file has a kilobyte.
TEST_F(PictureFiles, ThatPromiseMoreThanTheyHoldAreRefused) {
    EXPECT_EQ(complaintOf("P5 9000 9000 255\n12345", 100'000'000), path_ + ": The file ends early");
    EXPECT_EQ(complaintOf("P2 9000 9000 255\n1 2 3", 100'000'000), path_ + ": The file ends early");
    std::string bmp = bmpBytes(someSamples(4, 4, 8, 3));
    bmp[18] = bmp[22] = 0x28;
    bmp[19] = bmp[23] = 0x23;
    EXPECT_EQ(complaintOf(bmp, 100'000'000), path_ + ": The file ends early");
}

TEST_F(PictureFiles, AreDescribed) {
    write(tiffBytes(someSamples(7, 4, 16, 3), {.orientation = 6}));
    EXPECT_EQ(pictureReport(path_), "TIFF picture\n  size: 4 x 7\n  depth: 16 bits, colour\n");
    write(pnmBytes(someSamples(7, 4, 8, 1), false));
    EXPECT_EQ(pictureReport(path_), "PNM picture\n  size: 7 x 4\n  depth: 8 bits, grey\n");
}

}  // namespace
