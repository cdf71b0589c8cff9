// Filters one after the other: on the command line, in archives, on both sides of DC.
#include <filt/freqfilt.h>

#include <cmath>
#include <numbers>
#include <utility>

#include "support/archive_bytes.h"
#include "support/png_pels.h"
#include "support/program.h"

namespace {

using Byte = unsigned char;
using support::pelsOf;
using support::samplesOf;

constexpr double kPi = std::numbers::pi;

const Arguments kWave{"gaborreject", "--frequency", "0.2", "--angle", "30", "--sigma", "0.05"};
const Arguments kRing{"bandpass", "--frequency", "0.1", "--sigma", "0.05", "--dc-radius", "1"};

Arguments joined(Arguments words, const std::vector<Arguments>& more) {
    for (const Arguments& each : more) words.insert(words.end(), each.begin(), each.end());
    return words;
}

class Chain : public ProgramTest {
  protected:
    void SetUp() override { writePng(path("in.png"), picture_); }

    // What a command makes of the picture.
    std::vector<unsigned> of(const Arguments& command) const {
        succeed(joined(command, {{"in.png", "out.png"}}));
        return readPng(path("out.png")).samples;
    }

    std::vector<unsigned> filtered(std::initializer_list<const mvFrequencyFilter*> filters,
                                   const mvFilterImageOptions& options = {}) const {
        mvPelBuffer<Byte> result;
        mfFilterImage(pelsOf<Byte>(picture_), filters, result, options);
        return samplesOf(result);
    }

    // What is wrong with a command, without what tells more.
    std::string complaint(const Arguments& command) const {
        const Outcome outcome = run(command);
        EXPECT_EQ(outcome.exitCode, 2) << outcome.err;
        return outcome.err.substr(0, outcome.err.find(" (mvfreq --help"));
    }

    mvFrequencyFilterGaborReject lobe(double degrees) const {
        return {{0.05, 0.05}, {0, 0}, mvRadian(degrees * kPi / 180), 0.2, size_, 0};
    }

    const PngFile picture_ = noisePng(64, 32, 8);
    const mvPair<long> size_{128, 64};  // with room for both reaches
    const mvFrequencyFilterBandPass ring_{0.05, 0, 0.1, size_, 1};
};

TEST_F(Chain, IsTheLibrarysList) {
    const mvFrequencyFilterGaborReject wave = lobe(30);
    EXPECT_EQ(of(joined(kWave, {{"then"}, kRing})), filtered({&wave, &ring_}));
    EXPECT_EQ(of(joined(kWave, {{"then"}, kRing, {"then"}, kWave, {"--rescale"}})),
              filtered({&wave, &ring_, &wave}, {.rescale = true}));
}

TEST_F(Chain, IsNotOneCallAfterTheOther) {
    of(kWave);
    succeed(joined(kRing, {{"out.png", "second.png"}}));
    EXPECT_NE(readPng(path("second.png")).samples, of(joined(kWave, {{"then"}, kRing})));
}

TEST_F(Chain, HasRoomForTheSumOfTheReaches) {
    const Arguments narrow{"bandpass", "--frequency", "0.1", "--sigma", "0.03"};
    const mvFrequencyFilterBandPass one(0.03, 0, 0.1, {128, 128}, 0);
    // 22 pels each: 32 + 2 * 22 fit 64 only cut to a quarter, 32 + 4 * 22 need 128.
    EXPECT_EQ(of(joined(narrow, {{"then"}, narrow})), filtered({&one, &one}));
}

TEST_F(Chain, GoesThroughAFolder) {
    writePng(path("other.png"), noisePng(64, 32, 8));
    succeed(joined(kWave, {{"then"}, kRing, {"--out-dir", "results", "in.png", "other.png"}}));
    const mvFrequencyFilterGaborReject wave = lobe(30);
    EXPECT_EQ(readPng(path("results/in.png")).samples, filtered({&wave, &ring_}));
    EXPECT_EQ(readPng(path("results/other.png")).samples, filtered({&wave, &ring_}));
}

TEST_F(Chain, HasPhases) {
    mvFrequencyBuffer spectrum;
    mfForwardFFT(pelsOf<Byte>(picture_), spectrum);
    const mvFrequencyFilterGabor gabor({0.05, 0.05}, {0, 0}, mvRadian(0), 0.2, {64, 32}, 0);
    const mvFrequencyFilterBandReject reject(0.05, 0, 0.1, {64, 32}, 0);
    reject.apply(spectrum);
    gabor.apply(spectrum);
    mvPelBuffer<Byte> magnitude;
    mvPelBuffer<double> angle;
    mfInverseFFTAngle(spectrum, magnitude, angle, false, true);
    of({"bandreject", "--frequency", "0.1", "--sigma", "0.05", "then", "gabor", "--frequency",
        "0.2", "--sigma", "0.05", "--border", "zero", "--angle-image", "angle.png"});
    EXPECT_EQ(readPng(path("out.png")).samples, samplesOf(magnitude));
    EXPECT_EQ(readPng(path("angle.png")).samples,
              samplesOf(mfFrequencyMapImage(angle, mvFrequencyDefs::eMapAngle, 0, 0)));
}

TEST_F(Chain, IsSavedAsAWhole) {
    const std::vector<unsigned> direct =
        of(joined(kWave, {{"then"}, kRing, {"--save", "both.mva"}}));
    EXPECT_EQ(of({"apply", "both.mva"}), direct);
    const std::string report = succeed({"info", "both.mva"}).out;
    EXPECT_LT(report.find("mvFrequencyFilterGaborReject\n"),
              report.find("mvFrequencyFilterBandPass\n"));
    EXPECT_NE(report.find("mvFrequencyFilterBandPass\n"), std::string::npos);
}

TEST_F(Chain, IsMadeOfArchives) {
    const Arguments plane{"--tile", "128", "--margin", "0"};
    of(joined(kWave, {{"--save", "wave.mva"}, plane}));
    of(joined(kRing, {{"--save", "ring.mva"}, plane}));
    const std::vector<unsigned> direct = of(joined(kWave, {{"then"}, kRing, plane}));
    const Arguments margin{"--margin", "0"};
    EXPECT_EQ(of(joined({"apply", "wave.mva", "then", "apply", "ring.mva"}, {margin})), direct);
    EXPECT_EQ(of(joined({"apply", "wave.mva", "then"}, {kRing, margin})), direct);
    EXPECT_EQ(of(joined(kWave, {{"then", "apply", "ring.mva", "--save", "both.mva"}, margin})),
              direct);
    EXPECT_EQ(of(joined({"apply", "both.mva"}, {margin})), direct);
}

TEST_F(Chain, OfAnArchiveIsDrawnAsTheProductOfItsGains) {
    mvFrequencyFilterBandPass ring = ring_;
    mvFrequencyFilterBandReject hole(0.01, 0.5, 0.0, size_, 0);
    write("both.mva", support::storedByPointer({&ring, &hole}));
    write("ring.mva", support::storedByPointer({&ring}));
    succeed({"view", "both.mva", "both.png"});
    succeed({"view", "ring.mva", "ring.png"});
    EXPECT_NE(readPng(path("ring.png")).samples, std::vector<unsigned>(128 * 64, 0));
    EXPECT_EQ(readPng(path("both.png")).samples, std::vector<unsigned>(128 * 64, 0));
}

TEST_F(Chain, RefusesArchivesOfSeveralPlanes) {
    mvFrequencyFilterBandPass other(0.05, 0, 0.1, {64, 64}, 0), ring = ring_;
    write("a.mva", support::storedByPointer({&ring}));
    write("b.mva", support::storedByPointer({&other}));
    const std::string text =
        "mvfreq: the filters have planes of 128 x 64 and of 64 x 64: only those of one size work "
        "together\n";
    EXPECT_EQ(complaint({"apply", "a.mva", "then", "apply", "b.mva", "in.png", "out.png"}), text);
    write("ab.mva", support::storedByPointer({&ring, &other}));
    EXPECT_EQ(complaint({"apply", "ab.mva", "in.png", "out.png"}), text);
    EXPECT_EQ(complaint(joined({"apply", "a.mva", "then"},
                               {kRing, {"--tile", "512", "in.png", "out.png"}})),
              "mvfreq: --tile: a filter from an archive has its plane, of 128 x 64\n");
}

TEST_F(Chain, TakesNothingBesideFiltersFromAnArchive) {
    mvFrequencyFilterBandPass ring = ring_;
    mvFrequencyDefs::BadCoord error;
    write("more.mva", support::storedByPointer({&ring, &error}));
    write("torn.mva", support::storedByPointer({&ring}) + "x");
    for (const char* name : {"more.mva", "torn.mva"}) {
        const Outcome outcome = run({"apply", name, "in.png", "out.png"});
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.err.rfind(std::string("mvfreq: ") + name + ": holds no filter: ", 0), 0u)
            << outcome.err;
    }
}

TEST_F(Chain, SaysWhatStandsInAWrongPlace) {
    const Arguments files{"in.png", "out.png"};
    EXPECT_EQ(complaint(joined(kWave, {{"then"}})), "mvfreq: then: stands between two filters\n");
    EXPECT_EQ(complaint(joined({"then"}, {kWave, files})),
              "mvfreq: then: stands between two filters\n");
    EXPECT_EQ(complaint(joined(kWave, {{"--rescale", "then"}, kRing, files})),
              "mvfreq: --rescale: before `then` stand only a filter and its own options\n");
    EXPECT_EQ(complaint(joined(kWave, {files, {"then"}, kRing})),
              "mvfreq: in.png: before `then` stand only a filter and its own options\n");
    EXPECT_EQ(complaint(joined({"spectrum", "then"}, {kRing, files})),
              "mvfreq: spectrum: is no filter that `then` can follow\n");
    EXPECT_EQ(complaint(joined(kWave, {{"then", "spectrum"}, files})),
              "mvfreq: spectrum: there is no such filter");
    EXPECT_EQ(complaint(joined({"gaborreject", "--sigma", "0.1", "then"}, {kRing, files})),
              "mvfreq: --frequency is required");
    EXPECT_EQ(this->files(), (std::vector<std::string>{"in.png"}));
}

TEST_F(Chain, ChecksTheFirstFilterBeforeAnyPicture) {
    EXPECT_EQ(run(joined({"bandpass", "--frequency", "0.1", "--sigma", "-1", "then"},
                         {kRing, {"missing.png", "out.png"}}))
                  .err,
              run(joined({"bandpass", "--frequency", "0.1", "--sigma", "-1"},
                         {{"missing.png", "out.png"}}))
                  .err);
}

TEST_F(Chain, ShowsTheHelpOfItsFirstFilter) {
    const std::string help = succeed({"gaborreject", "--help", "then", "bandpass"}).out;
    EXPECT_NE(help.find("--both-sides"), std::string::npos);
    EXPECT_EQ(help.find("--out-dir"), std::string::npos);
}

// A picture may be called as the word is.
TEST_F(Chain, LeavesAPictureOfThatNameAlone) {
    writePng(path("then"), picture_);
    succeed(joined(kRing, {{"--", "then", "out.png"}}));
    EXPECT_EQ(readPng(path("out.png")).samples, filtered({&ring_}));
    succeed(joined(kRing, {{"./then", "out.png"}}));
}

TEST_F(Chain, OfBothSidesIsALobeAndItsMirror) {
    const mvFrequencyFilterGaborReject one = lobe(30), other = lobe(210);
    EXPECT_EQ(of(joined(kWave, {{"--both-sides"}})), filtered({&one, &other}));
    EXPECT_EQ(of(joined(kWave, {{"--both-sides", "then"}, kRing})),
              filtered({&one, &other, &ring_}));
    of(joined(kWave, {{"--both-sides", "--save", "both.mva"}}));
    EXPECT_EQ(of({"apply", "both.mva"}), filtered({&one, &other}));
}

TEST_F(Chain, OfBothSidesRemovesAWave) {
    writePng(path("in.png"), greyPng(200, 200, 8, [](long x, long y) {
                 const auto turn = static_cast<double>(2 * x + y) / 10;
                 return std::lround(128 + 60 * std::cos(2 * kPi * turn));
             }));
    of({"gaborreject", "--frequency", "0.2236", "--angle", "26.565", "--sigma", "0.03",
        "--both-sides"});
    const PngFile result = readPng(path("out.png"));
    for (long y = 40; y < 160; ++y) {
        for (long x = 40; x < 160; ++x) ASSERT_NEAR(result.at(x, y), 128, 2);
    }
}

}  // namespace
