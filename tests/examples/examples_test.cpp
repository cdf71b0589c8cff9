// Every example finds, removes or measures what its picture was made with.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "support/png_file.h"

namespace {

namespace fs = std::filesystem;

const std::string kPictures = MVFREQ_EXAMPLE_PICTURES "/";

// A test with an empty folder for the results.
class Examples : public ::testing::Test {
  protected:
    Examples()
        : folder_(fs::temp_directory_path() / ("mvfreq-example-" + std::to_string(::getpid()))) {
        fs::create_directory(folder_);
    }
    ~Examples() override { fs::remove_all(folder_); }

    std::string path(const std::string& name) const { return folder_ / name; }

    struct Outcome {
        std::string out;
        int exitCode;  // -1 for a program that a signal ended
    };

    static Outcome outcomeOf(const std::string& command) {
        std::FILE* pipe = ::popen(command.c_str(), "r");
        std::string out;
        for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) out += static_cast<char>(c);
        const int status = ::pclose(pipe);
        return {out, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
    }

    static std::string commandOf(const std::string& name,
                                 const std::vector<std::string>& arguments) {
        // No shell between: its exit code for a program that a signal ended looks like any other.
        std::string command = "exec '" MVFREQ_EXAMPLE_PROGRAMS "/" + name + "'";
        for (const std::string& argument : arguments) command += " '" + argument + "'";
        return command;
    }

    /// What the example writes; it must succeed.
    static std::string run(const std::string& name, const std::vector<std::string>& arguments) {
        const Outcome outcome = outcomeOf(commandOf(name, arguments));
        EXPECT_EQ(outcome.exitCode, 0) << name;
        return outcome.out;
    }

    /// What the example writes, errors included.
    static Outcome runWithErrors(const std::string& name,
                                 const std::vector<std::string>& arguments) {
        return outcomeOf(commandOf(name, arguments) + " 2>&1");
    }

  private:
    fs::path folder_;
};

/// The numbers in a text, in order.
std::vector<double> numbers(const std::string& text) {
    static const std::regex number("-?[0-9]+(\\.[0-9]+)?(e-?[0-9]+)?");
    std::vector<double> all;
    for (std::sregex_iterator it(text.begin(), text.end(), number), end; it != end; ++it) {
        all.push_back(std::stod(it->str()));
    }
    return all;
}

double mean(const PngFile& picture) {
    double sum = 0.0;
    for (const unsigned sample : picture.samples) sum += sample;
    return sum / static_cast<double>(picture.samples.size());
}

TEST_F(Examples, TextureRemovalFindsTheThreeDefectsOfTheCloth) {
    const std::string out = run("texture_removal", {kPictures + "woven.png", path("out.png")});
    const std::vector<double> found = numbers(out);  // pels, x, y of each
    ASSERT_EQ(found.size(), 9u) << out;
    const double slack[] = {236, 150}, stain[] = {452, 318}, rubbed[] = {170, 372};
    const double* defects[] = {slack, stain, rubbed};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(found[3 * i + 1], defects[i][0], 8) << out;
        EXPECT_NEAR(found[3 * i + 2], defects[i][1], 4) << out;
    }
}

TEST_F(Examples, OwnMemoryShowsTheDefectInTheFrameItself) {
    const std::vector<double> grey =
        numbers(run("own_memory", {kPictures + "woven.png", path("out.png")}));
    ASSERT_EQ(grey.size(), 2u);
    EXPECT_GT(grey[0], 100);
    EXPECT_LT(grey[1], 50);
}

TEST_F(Examples, ScreenRemovalTakesTheDotsAndLeavesTheTone) {
    const std::string print = kPictures + "printed.png", tone = path("out.png");
    const std::vector<double> waves = numbers(run("screen_removal", {print, tone}));
    ASSERT_GE(waves.size(), 2u);
    EXPECT_GT(waves[0], 10);
    EXPECT_LT(waves[1], 0.5);
    EXPECT_NEAR(mean(readPng(print)), mean(readPng(tone)), 1);
}

TEST_F(Examples, InterferenceRemovalRestoresTheLabel) {
    const std::string clean = path("out.png");
    const std::vector<double> wave =
        numbers(run("interference_removal", {kPictures + "disturbed.png", clean}));
    ASSERT_EQ(wave.size(), 2u);
    EXPECT_NEAR(wave[0], 0.11, 0.004);     // cycles per pixel
    EXPECT_NEAR(wave[1], 0.45 * 57.3, 3);  // degrees

    const PngFile before = readPng(kPictures + "disturbed.png"), after = readPng(clean);
    const auto spread = [](const PngFile& picture) {  // on blank paper
        unsigned least = 255, most = 0;
        for (long x = 176; x < 230; ++x) {
            least = std::min(least, picture.at(x, 60));
            most = std::max(most, picture.at(x, 60));
        }
        return most - least;
    };
    EXPECT_GT(spread(before), 60u);
    EXPECT_LT(spread(after), 20u);
}

TEST_F(Examples, OrientationMapColoursEachFieldByItsDirection) {
    const std::string out = run("orientation_map", {kPictures + "brushed.png", path("out.png")});
    const std::vector<double> table = numbers(out);  // degrees, pels of each direction
    ASSERT_EQ(table.size(), 24u) << out;
    double named = 0, all = 0;
    for (std::size_t i = 0; i < table.size(); i += 2) {
        const double degrees = table[i], pels = table[i + 1];
        const bool drawn =
            degrees == 0 || degrees == 45 || degrees == 90 || degrees == 120 || degrees == 150;
        EXPECT_EQ(pels > 5000, drawn) << degrees;
        named += drawn ? pels : 0;
        all += pels;
    }
    EXPECT_EQ(all, 256 * 256);
    EXPECT_GT(named / all, 0.9);
}

TEST_F(Examples, CorrelationSearchFindsTheThreeMarksToThePel) {
    const std::string out = run("correlation_search",
                                {kPictures + "board.png", kPictures + "mark.png", path("out.png")});
    const std::vector<double> found = numbers(out);  // x, y, score of each
    ASSERT_EQ(found.size(), 9u) << out;
    const double marks[] = {38, 52, 181, 44, 112, 187};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(found[3 * i], marks[2 * i]) << out;
        EXPECT_EQ(found[3 * i + 1], marks[2 * i + 1]) << out;
    }
}

TEST_F(Examples, SharpeningMakesEdgesSteeperAndKeepsTheMean) {
    const std::string blurred = kPictures + "blurred.png", sharp = path("out.png");
    const std::vector<double> steps = numbers(run("sharpening", {blurred, sharp}));
    ASSERT_EQ(steps.size(), 2u);
    EXPECT_GT(steps[1], 1.4 * steps[0]);
    EXPECT_NEAR(mean(readPng(blurred)), mean(readPng(sharp)), 1);
}

TEST_F(Examples, DownscalingBySpectrumCropInventsNoRings) {
    const std::vector<double> contrast =
        numbers(run("downscaling", {kPictures + "zone.png", path("out.png")}));
    ASSERT_EQ(contrast.size(), 2u);
    EXPECT_GT(contrast[0], 50);
    EXPECT_LT(contrast[1], 5);

    const PngFile both = readPng(path("out.png"));
    EXPECT_EQ(both.width, 64 + 4 + 64);
    EXPECT_NEAR(both.at(68 + 60, 60), 128, 12);  // level grey, as bright as the mean of the picture
}

TEST_F(Examples, PhaseImagesMeasureTheDome) {
    const std::string out =
        run("phase_images", {kPictures + "fringes.png", path("phase.png"), path("quadrants.png")});
    const std::vector<double> heights = numbers(out);  // x, height of each
    ASSERT_EQ(heights.size(), 16u) << out;
    for (std::size_t i = 0; i < heights.size(); i += 2) {
        const double from = (heights[i] - 128) / 36;
        EXPECT_NEAR(heights[i + 1], 2.5 * std::exp(-from * from / 2), 0.06) << heights[i];
    }
    const PngFile quadrants = readPng(path("quadrants.png"));
    const std::set<unsigned> greys(quadrants.samples.begin(), quadrants.samples.end());
    EXPECT_EQ(greys, (std::set<unsigned>{0, 85, 170, 255}));
}

TEST_F(Examples, CancelButtonStopsBetweenTheFirstTileAndTheLast) {
    const std::string out = run("cancel_button", {kPictures + "disturbed.png", path("out.png")});
    EXPECT_EQ(out, "stopped with status 7\nstopped on the way\n");

    const PngFile before = readPng(kPictures + "disturbed.png"), after = readPng(path("out.png"));
    const auto changed = [&](long left, long top) {
        for (long y = top; y < top + 32; ++y) {
            for (long x = left; x < left + 32; ++x) {
                if (before.at(x, y) != after.at(x, y)) return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(changed(0, 0));
    EXPECT_FALSE(changed(224, 224));
}

TEST_F(Examples, ArchiveRecipeLoadsWhatItSaved) {
    const std::string out = run("archive_recipe", {path("recipe.mva"), path("out.png")});
    EXPECT_EQ(out, "filter 0 is the same\nfilter 1 is the same\nfilter 2 is the same\n");

    const PngFile sheet = readPng(path("out.png"));
    EXPECT_EQ(sheet.at(64 + 32, 64), 255u);             // on the ring
    EXPECT_EQ(sheet.at(64, 64), 0u);                    // inside it
    EXPECT_GT(sheet.at(128 + 64 + 27, 64 + 16), 240u);  // in the lobe
    EXPECT_EQ(sheet.at(128 + 64 - 27, 64 - 16), 0u);    // it has no mirror lobe
    EXPECT_LT(sheet.at(256 + 64 + 27, 64 + 16), 15u);   // cut out
    EXPECT_EQ(sheet.at(256 + 64 - 27, 64 - 16), 255u);
}

TEST_F(Examples, SignedDefectsTellBrightFromDark) {
    const std::string out = run("signed_defects", {kPictures + "woven.png", path("out.png")});
    EXPECT_EQ(out, "bright defect at 240 150\nbright defect at 170 372\ndark defect at 452 318\n");
}

TEST_F(Examples, LineScanWebInPiecesHasTheBitsOfOneCall) {
    const std::string out = run("line_scan_web", {kPictures + "web.png", path("out.png")});
    EXPECT_NE(out.find("720 rows came, 592 are done\n"), std::string::npos) << out;
    EXPECT_NE(out.find("in pieces and in one call: the same bits\n"), std::string::npos) << out;

    const PngFile result = readPng(path("out.png"));
    EXPECT_EQ(result.height, 592);
    const long faults[][2] = {{70, 90}, {170, 205}, {95, 330}, {190, 455}, {60, 560}};
    for (const auto& [x, y] : faults) EXPECT_GT(result.at(x, y), 150u) << x << ", " << y;
    EXPECT_LT(result.at(120, 270), 20u);
}

TEST_F(Examples, PhotographShowsItsFourFaults) {
    const std::string photo = path("photo.png");
    const Outcome made = outcomeOf(
        "exec " MVFREQ_PYTHON " " MVFREQ_SCRIPTS "/make_photograph.py '" + photo + "' 2>&1");
    if (made.exitCode != 0) GTEST_SKIP() << "the photograph needs numpy: " << made.out;
    const std::vector<double> found = numbers(run("photograph", {photo, path("out.png")}));
    const double faults[][2] = {{620, 410}, {2910, 760}, {1480, 1930}, {3420, 2540}};
    ASSERT_EQ(found.size(), 12u);  // pels, x, y of each
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(found[3 * i + 1], faults[i][0], 4);
        EXPECT_NEAR(found[3 * i + 2], faults[i][1], 4);
    }
}

TEST_F(Examples, ManyThreadsGiveTheBitsOfOne) {
    const std::string tones = path("out.png");
    EXPECT_EQ(run("many_threads", {kPictures + "printed.png", tones}),
              "four threads and one: the same bits\n");
    EXPECT_NEAR(mean(readPng(kPictures + "printed.png")), mean(readPng(tones)), 2);
}

struct Usage {
    const char* name;
    std::size_t arguments;
};

const std::vector<Usage> kAll = {
    {"archive_recipe", 2}, {"cancel_button", 2},        {"correlation_search", 3},
    {"downscaling", 2},    {"interference_removal", 2}, {"line_scan_web", 2},
    {"many_threads", 2},   {"orientation_map", 2},      {"own_memory", 2},
    {"phase_images", 3},   {"photograph", 2},           {"screen_removal", 2},
    {"sharpening", 2},     {"signed_defects", 2},       {"texture_removal", 2},
};

TEST_F(Examples, SayWhatIsWrongAndEndWithOne) {
    for (const auto& [name, arguments] : kAll) {
        const std::vector<std::string> missing(arguments, path("missing/file"));
        const Outcome outcome = runWithErrors(name, missing);
        EXPECT_EQ(outcome.exitCode, 1) << name;
        EXPECT_NE(outcome.out.find(std::string(name) + ": "), std::string::npos) << outcome.out;
        EXPECT_EQ(outcome.out.find("terminate"), std::string::npos) << outcome.out;
    }
}

TEST_F(Examples, SayHowTheyAreUsedAndEndWithTwo) {
    for (const auto& [name, arguments] : kAll) {
        const Outcome outcome = runWithErrors(name, {});
        EXPECT_EQ(outcome.exitCode, 2) << name;
        EXPECT_EQ(outcome.out.substr(0, 7), "usage: ") << outcome.out;
        EXPECT_EQ(std::ranges::count(outcome.out, ' '), 1 + static_cast<long>(arguments));
    }
}

}  // namespace
