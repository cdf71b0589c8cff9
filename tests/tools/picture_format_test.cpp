// The kinds of files that the program writes.
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "support/picture_bytes.h"
#include "support/png_file.h"
#include "support/program.h"
#include "tools/picture_file.h"
#include "tools/picture_format.h"

namespace {

namespace fs = std::filesystem;

class PictureFormats : public ProgramTest {
  protected:
    void SetUp() override {
        writePng(path("one.png"), greyPng(1, 1, 8, [](long, long) { return 255; }));
        for (const int depth : {8, 16}) {
            for (const long channels : {1l, 3l}) {
                write(nameOf(depth, channels),
                      support::pnmBytes(support::someSamples(90, 300, depth, channels), false));
            }
        }
    }

    static std::string nameOf(int depth, long channels) {
        return "in" + std::to_string(depth) + (channels == 3 ? ".ppm" : ".pgm");
    }

    static Arguments identity(const Arguments& more) {
        Arguments all{"convolve", "--kernel", "one.png"};
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }

    Picture pels(const std::string& name) const {
        return readPicture(path(name), {Channels::each});
    }

    bool areSame(const std::string& name, const std::string& other) const {
        return std::visit([](const auto& a, const auto& b) { return samePels(a, b); }, pels(name),
                          pels(other));
    }

    std::string complaint(const Arguments& arguments) const {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.exitCode, 2);
        return outcome.err;
    }

  private:
    template <class T, class U>
    static bool samePels(const PictureOf<T>& a, const PictureOf<U>& b) {
        if (sizeof(T) != sizeof(U) || a.channels.size() != b.channels.size()) return false;
        for (std::size_t c = 0; c < a.channels.size(); ++c) {
            for (long y = 0; y < a.first().height(); ++y) {
                for (long x = 0; x < a.first().width(); ++x) {
                    if (a.channels[c].pel(x, y) != b.channels[c].pel(x, y)) return false;
                }
            }
        }
        return true;
    }
};

TEST_F(PictureFormats, HoldTheSamePels) {
    for (const int depth : {8, 16}) {
        for (const long channels : {1l, 3l}) {
            const std::string in = nameOf(depth, channels);
            succeed(identity({in, "out.png"}));
            for (const char* out : {"out.tif", "out.TIFF", channels == 1 ? "out.pgm" : "out.ppm"}) {
                succeed(identity({in, out}));
                EXPECT_TRUE(areSame(out, "out.png")) << in << ' ' << out;
            }
        }
    }
}

TEST_F(PictureFormats, FollowTheEndingOfTheName) {
    const std::pair<const char*, const char*> names[] = {
        {"out.png", "\x89PNG"}, {"out.dat", "\x89PNG"}, {"out", "\x89PNG"},
        {"out.tif", "II*"},     {"out.pgm", "P5\n"},    {"out.ppm", "P6\n"}};
    for (const auto& [name, head] : names) {
        succeed(identity({"in8.pgm", name}));
        EXPECT_TRUE(contents(name).starts_with(head)) << name;
        succeed({"spectrum", "in8.ppm", name});
        EXPECT_TRUE(contents(name).starts_with(head)) << name;
    }
}

TEST_F(PictureFormats, OfOneNameMayFollowEachOther) {
    for (const char* name : {"out.tif", "out.pgm", "out.ppm"}) {
        for (int time = 0; time < 2; ++time) succeed(identity({"in16.pgm", name}));
        EXPECT_NE(succeed({"info", name}).out.find("  written by: mvfreq\n"), std::string::npos);
    }
    write("foreign.tif", support::tiffBytes(support::someSamples(4, 4, 8, 1)));
    for (const char* name : {"foreign.tif", "in8.pgm", "in8.ppm"}) {
        EXPECT_NE(complaint(identity({"one.png", name})).find("is no picture that mvfreq wrote"),
                  std::string::npos)
            << name;
    }
}

TEST_F(PictureFormats, ThatHaveNoColourRefuseIt) {
    EXPECT_EQ(complaint(identity({"in8.ppm", "out.pgm"})),
              "mvfreq: out.pgm: PGM has no colours; call it out.ppm, or say --channels grey\n");
    EXPECT_FALSE(fs::exists(path("out.pgm")));
    succeed(identity({"in8.ppm", "out.pgm", "--channels", "grey"}));
}

TEST_F(PictureFormats, ThatAreNotWrittenAreRefusedWithThoseThatAre) {
    EXPECT_EQ(complaint(identity({"in8.ppm", "x.jpg"})),
              "mvfreq: x.jpg: pictures are written as PNG, TIFF, PGM and PPM; call it x.png\n");
    EXPECT_EQ(complaint(identity({"in8.ppm", "out.png", "--save", "filter.tif"})),
              "mvfreq: filter.tif: a filter is written as an archive, not as a picture\n");
}

TEST_F(PictureFormats, OfResultsInAFolderAreThoseOfTheInputsOrPng) {
    const auto even = support::someSamples(9, 9, 8, 3);
    write("a.jpg", support::jpegBytes(even, 0));
    write("b.bmp", support::bmpBytes(even));
    write("c.tif", support::tiffBytes(even));
    succeed(identity({"a.jpg", "b.bmp", "c.tif", "in8.pgm", "in8.ppm", "--out-dir", "results"}));
    for (const char* name : {"a.png", "b.png", "c.tif", "in8.pgm", "in8.ppm"}) {
        EXPECT_TRUE(isOwnPicture(path(std::string("results/") + name))) << name;
    }
    write("c.bmp", support::bmpBytes(even));
    write("c.jpg", support::jpegBytes(even, 0));
    EXPECT_EQ(complaint(identity({"c.bmp", "c.jpg", "--out-dir", "results"})),
              "mvfreq: results/c.png: the results of c.bmp and c.jpg have this name\n");
}

TEST_F(PictureFormats, AreWrittenWholeOrNotAtAll) {
    for (const char* name : {"out.tif", "out.pgm"}) {
        const std::string command = "cd '" + path("") + "' && trap '' XFSZ && ulimit -f 8 && '" +
                                    MVFREQ_PROGRAM "' convolve --kernel one.png in8.pgm " + name +
                                    " 2>err";
        EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
        EXPECT_EQ(contents("err"), "mvfreq: " + std::string(name) + ": File too large\n");
        EXPECT_FALSE(fs::exists(path(name)));
    }
}

TEST_F(PictureFormats, AreReadFromAPipe) {
    const auto even = support::someSamples(9, 9, 8, 3);
    const std::string files[] = {support::tiffBytes(even), support::bmpBytes(even),
                                 support::jpegBytes(even, 0), support::pnmBytes(even, true)};
    for (const std::string& bytes : files) {
        write("in", bytes);
        succeed(identity({"--force", "in", "out.tif"}));
        const std::string command = "cd '" + path("") + "' && cat in | '" + MVFREQ_PROGRAM +
                                    "' convolve --kernel one.png - piped.tif";
        EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 0);
        EXPECT_EQ(contents("piped.tif"), contents("out.tif"));
    }
}

TEST_F(PictureFormats, OfTooManyPelsAreRefusedByName) {
    const Outcome outcome = run(identity({"in8.pgm", "out.png", "--max-pixels", "26999"}));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.err, "mvfreq: in8.pgm: 90 x 300 pels are more than --max-pixels 26999\n");
    succeed(identity({"in8.pgm", "out.png", "--max-pixels", "27000"}));
    EXPECT_EQ(run({"convolve", "--kernel", "in8.pgm", "one.png", "x.png", "--max-pixels", "9"}).err,
              "mvfreq: in8.pgm: 90 x 300 pels are more than --max-pixels 9\n");
}

}  // namespace
