// What the commands that propose filters read and print.
#include "proposal_text.h"

#include <algorithm>
#include <cstdio>

#include "picture_file.h"
#include "shell_words.h"

namespace {

template <class T>
mvPelBuffer<double> doubles(const mvPelBuffer<T>& picture) {
    mvPelBuffer<double> image(picture.width(), picture.height());
    for (long y = 0; y < picture.height(); ++y) {
        const T* row = picture.pointToRow(y);
        std::copy(row, row + picture.width(), image.pointToRow(y));
    }
    return image;
}

}  // namespace

GreyPicture readGrey(const std::string& path) {
    const Picture picture = readPicture(path, {});
    const bool hasBytes = std::holds_alternative<PictureOf<unsigned char>>(picture);
    return {std::visit([](const auto& read) { return doubles(read.first()); }, picture),
            hasBytes ? 255.0 : 65535.0};
}

std::string shortNumber(double value, int digits) {
    char text[32];
    const int whole = value >= 100 ? 3 : value >= 10 ? 2 : 1;
    std::snprintf(text, sizeof text, "%.*f", std::max(digits - whole, 0), value);
    return text;
}

std::string inColumn(const std::string& text, std::size_t width) {
    return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

std::string lineFor(const std::vector<std::string>& arguments, const std::string& input) {
    std::vector<std::string> words{"mvfreq"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    words.insert(words.end(), {input, "out.png"});
    return shellLine(words);
}

std::string jsonLines(const std::vector<std::string>& objects) {
    std::string text;
    for (const std::string& object : objects) {
        text += (text.empty() ? "[\n  " : ",\n  ") + object;
    }
    return text.empty() ? "[]\n" : text + "\n]\n";
}
