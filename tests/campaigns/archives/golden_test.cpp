// The golden files: what was once written is read, and written back the same, for ever.
//
// The name of a file says what becomes of it: `.good` loads and is stored as the same bytes, `.old`
// loads and is stored as the good file of the same name, `.unknown` has a version that is not
// known, `.truncated` ends early. Files named `buffer-...` hold buffers, all others pointers.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>

#include "support/content.h"
#include "support/filter_classes.h"
#include "support/loading.h"
#include "support/metered_steps.h"

namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in) << path;
    return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<fs::path> allFiles() {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(MVFREQ_GOLDEN_FILES)) {
        if (entry.path().extension() == ".mva") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string fateOf(const fs::path& path) {
    return path.stem().extension().string().substr(1);
}

std::unique_ptr<archive::Content> contentFor(const fs::path& path) {
    const bool isBuffer = path.filename().string().starts_with("buffer-");
    return archive::contentKind(isBuffer ? "buffer" : "pointers")->make();
}

const std::map<std::string, std::string> kUnknown = {
    {"buffer-version", archive::kUnknownBuffer},
    {"buffer-pair-version", archive::kUnknownRoutine},
    {"buffer-floats-version", archive::kUnknownRoutine},
    {"band-pass-version", archive::BandPass::kUnknown},
    {"band-reject-version", archive::BandReject::kUnknown},
    {"gabor-version", archive::Gabor::kUnknown},
    {"gabor-reject-version", archive::GaborReject::kUnknown},
    {"image-version", archive::kUnknownImageFilter},
    {"band-pass-base-version", archive::kUnknownBase},
    {"band-reject-base-version", archive::kUnknownBase},
    {"gabor-base-version", archive::kUnknownBase},
    {"gabor-reject-base-version", archive::kUnknownBase},
    {"image-base-version", archive::kUnknownBase},
    {"image-buffer-version", archive::kUnknownBuffer},
    {"band-pass-pair-version", archive::kUnknownRoutine},
    {"gabor-pair-version", archive::kUnknownRoutine},
    {"gabor-floats-version", archive::kUnknownRoutine},
    {"error-bad-coord-version", "UnknownVersion mvFrequencyDefs::BadCoord 0"},
    {"error-bad-coord-base-version", "UnknownVersion mvFrequencyDefs::Errors 0"},
};

std::string stored(archive::Content& content) {
    return support::storedBy([&](mvArchive& ar) { content.store(ar); });
}

void use(archive::Content& content, std::size_t bytes) {
    archive::MeteredSteps steps(bytes);
    content.use(steps);
}

struct Golden : testing::TestWithParam<fs::path> {};

std::string testName(const testing::TestParamInfo<fs::path>& test) {
    std::string name = test.param.stem().string();
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '-' || c == '.'; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Files, Golden, testing::ValuesIn(allFiles()), testName);

TEST_P(Golden, MeetsItsFate) {
    const std::string bytes = contentOf(GetParam());
    const std::string fate = fateOf(GetParam());
    const std::string name = GetParam().stem().stem().string();
    const auto content = contentFor(GetParam());
    const std::string thrown = archive::loadingThrows([&] { archive::load(*content, bytes); });
    if (fate == "unknown") {
        EXPECT_EQ(thrown, kUnknown.at(name));
    } else if (fate == "truncated") {
        EXPECT_EQ(thrown, "Truncated");
    } else {
        ASSERT_EQ(thrown, "nothing");
        const fs::path good = GetParam().parent_path() / (name + ".good.mva");
        EXPECT_EQ(archive::hex(stored(*content)), archive::hex(contentOf(good)));
    }
    use(*content, bytes.size());
}

TEST_P(Golden, TruncatedAnywhereItDoesNoHarm) {
    const std::string bytes = contentOf(GetParam());
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const auto content = contentFor(GetParam());
        const std::string thrown =
            archive::loadingThrows([&] { archive::load(*content, bytes.substr(0, length)); });
        if (fateOf(GetParam()) == "good" &&
            !GetParam().filename().string().starts_with("pointer")) {
            EXPECT_EQ(thrown, "Truncated") << length;
        }
        use(*content, length);
    }
}

TEST_P(Golden, WithAnyByteFlippedItDoesNoHarm) {
    const std::string bytes = contentOf(GetParam());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        for (const int mask : {0x01, 0x80, 0xFF}) {
            std::string flipped = bytes;
            flipped[i] = static_cast<char>(flipped[i] ^ mask);
            const auto content = contentFor(GetParam());
            archive::loadingThrows([&] { archive::load(*content, flipped); });
            use(*content, bytes.size());
        }
    }
}

TEST(GoldenFiles, AreAllThere) {
    const std::vector<fs::path> files = allFiles();
    EXPECT_GE(files.size(), 50U);
    for (const auto& [name, thrown] : kUnknown) {
        EXPECT_TRUE(fs::exists(fs::path(MVFREQ_GOLDEN_FILES) / (name + ".unknown.mva"))) << name;
    }
}

}  // namespace
