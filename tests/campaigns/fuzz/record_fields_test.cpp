// The archive mutator knows the records: it sees every byte of a golden file and changes each
// field.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "archive_mutator.h"
#include "record_fields.h"

namespace {

namespace fs = std::filesystem;

struct Archive {
    std::string name;
    std::string kind;
    std::string bytes;
};

std::vector<Archive> goodArchives() {
    std::vector<Archive> archives;
    for (const auto& entry : fs::directory_iterator(MVFREQ_GOLDEN_FILES)) {
        const std::string name = entry.path().filename().string();
        if (!name.ends_with(".good.mva") && !name.ends_with(".old.mva")) continue;
        std::ifstream in(entry.path(), std::ios::binary);
        archives.push_back({name, name.starts_with("buffer-") ? "buffer" : "pointers",
                            std::string(std::istreambuf_iterator<char>(in), {})});
    }
    return archives;
}

TEST(RecordFields, CoverEveryByteOfTheGoldenFiles) {
    ASSERT_GE(goodArchives().size(), 20U);
    for (const Archive& archive : goodArchives()) {
        std::size_t end = 0;
        for (const fuzz::Field& field : fuzz::recordFields(archive.kind, archive.bytes)) {
            EXPECT_EQ(field.at, end) << archive.name;
            end = field.at + field.size;
        }
        EXPECT_EQ(end, archive.bytes.size()) << archive.name;
    }
}

TEST(RecordFields, EndWithTheLastWholeField) {
    for (const Archive& archive : goodArchives()) {
        const auto all = fuzz::recordFields(archive.kind, archive.bytes);
        for (std::size_t size = 0; size < archive.bytes.size(); ++size) {
            const auto fields = fuzz::recordFields(archive.kind, archive.bytes.substr(0, size));
            ASSERT_LE(fields.size(), all.size());
            const std::size_t end = fields.empty() ? 0 : fields.back().at + fields.back().size;
            EXPECT_LE(end, size) << archive.name;
        }
    }
}

TEST(ArchiveMutator, ChangesEachFieldOfTheGoldenFiles) {
    support::Random random(1);
    for (const Archive& archive : goodArchives()) {
        const auto fields = fuzz::recordFields(archive.kind, archive.bytes);
        std::set<std::size_t> changed;
        for (int i = 0; i < 3000; ++i) {
            std::string kind = archive.kind;
            std::string bytes = archive.bytes;
            fuzz::mutateArchive(kind, bytes, random);
            const auto [before, after] = std::mismatch(archive.bytes.begin(), archive.bytes.end(),
                                                       bytes.begin(), bytes.end());
            const auto at = static_cast<std::size_t>(before - archive.bytes.begin());
            for (const fuzz::Field& field : fields) {
                if (at >= field.at && at < field.at + field.size) changed.insert(field.at);
            }
        }
        EXPECT_EQ(changed.size(), fields.size()) << archive.name;
    }
}

}  // namespace
