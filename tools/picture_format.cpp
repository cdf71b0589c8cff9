// The kinds of files that pictures are written to, by their names.
#include "picture_format.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <optional>
#include <string_view>

#include "failure.h"
#include "system.h"

namespace fs = std::filesystem;

namespace {

struct Ending {
    std::string_view text;
    PictureFormat format;
};

constexpr Ending kWritten[] = {{".png", PictureFormat::png},
                               {".tif", PictureFormat::tiff},
                               {".tiff", PictureFormat::tiff},
                               {".pgm", PictureFormat::pgm},
                               {".ppm", PictureFormat::ppm}};

std::string endingOf(const std::string& path) {
    std::string ending = nameOf(pathOf(path).extension());
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ending;
}

std::optional<PictureFormat> writtenFormat(const std::string& path) {
    const std::string ending = endingOf(path);
    for (const Ending& known : kWritten) {
        if (known.text == ending) return known.format;
    }
    return std::nullopt;
}

}  // namespace

PictureFormat formatOf(const std::string& path) {
    return writtenFormat(path).value_or(PictureFormat::png);
}

bool namesOtherPicture(const std::string& path) {
    constexpr std::array<std::string_view, 9> kEndings = {".jpg",  ".jpeg", ".jpe",  ".bmp", ".gif",
                                                          ".webp", ".pnm",  ".heic", ".avif"};
    return std::find(kEndings.begin(), kEndings.end(), endingOf(path)) != kEndings.end();
}

bool namesPicture(const std::string& path) {
    return writtenFormat(path) || namesOtherPicture(path);
}

std::string writableName(const std::string& path) {
    if (!namesOtherPicture(path)) return path;
    return nameOf(pathOf(path).replace_extension(".png"));
}

void requireRoomForColour(const std::string& path) {
    if (formatOf(path) != PictureFormat::pgm) return;
    throw BadArgument(path + ": PGM has no colours; call it " +
                      nameOf(pathOf(path).replace_extension(".ppm")) + ", or say --channels grey");
}
