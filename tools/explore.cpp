// The explorer: a page for the browser, with a picture in it.
#include "explore.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <vector>

#include "failure.h"
#include "input_file.h"
#include "printable.h"
#include "system.h"

namespace {

namespace fs = std::filesystem;

// Beside an installed program, beside one in its build tree, and where it was to be installed.
std::vector<fs::path> places() {
    const fs::path folder = programFolder();
    return {folder / "../share/mvfreq/explorer.html", folder / "../explorer/explorer.html",
            MVFREQ_EXPLORER_PAGE};
}

std::string findPage() {
    std::error_code ignored;
    for (const fs::path& place : places()) {
        if (fs::exists(place, ignored)) return nameOf(fs::weakly_canonical(place));
    }
    throw Failure("the explorer is not installed: there is no " MVFREQ_EXPLORER_PAGE
                  " (--page names another place)");
}

std::string contentsOf(const std::string& path) {
    InputFile file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string base64(const std::string& bytes) {
    constexpr std::string_view kLetters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const auto byteAt = [&](std::size_t at) {
        return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U;
    };
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const unsigned group = byteAt(at) << 16 | byteAt(at + 1) << 8 | byteAt(at + 2);
        for (std::size_t letter = 0; letter < 4; ++letter) {
            const bool isThere = at + letter <= bytes.size();
            text += isThere ? kLetters[group >> (18 - 6 * letter) & 63] : '=';
        }
    }
    return text;
}

// A name within quotation marks of HTML.
std::string quoted(const std::string& name) {
    std::string text;
    for (const char letter : name) {
        if (std::string_view("\"&<>").find(letter) == std::string_view::npos) {
            text += letter;
        } else {
            text += "&#" + std::to_string(static_cast<int>(letter)) + ";";
        }
    }
    return text;
}

std::string withPicture(std::string page, const std::string& pagePath, const std::string& picture) {
    constexpr std::string_view kMark = "<!--given-->";
    const std::size_t at = page.find(kMark);
    if (at == std::string::npos) throw Failure(pagePath + ": is not the page of the explorer");
    const std::string name =
        isStandard(picture) ? "picture.png" : nameOf(pathOf(picture).filename());
    return page.replace(at, kMark.size(),
                        "<script type=\"text/plain\" data-given=\"" + quoted(name) + "\">" +
                            base64(contentsOf(picture)) + "</script>");
}

// The browser reads it after the program has ended, so it stays; systems clear the folder.
std::string temporaryPage(const std::string& text) {
    std::string path = nameOf(fs::temp_directory_path() / "mvfreq-XXXXXX.html");
    std::FILE* const file = makeTemporary(path);
    if (!file) throw Failure(path + ": " + systemText(errno));
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    int error = isWritten ? 0 : errno;
    if (std::fclose(file) != 0 && error == 0) error = errno;
    if (error == 0) return path;
    std::error_code ignored;
    fs::remove(pathOf(path), ignored);
    throw Failure(path + ": " + systemText(error));
}

}  // namespace

void explore(const ExploreOptions& options) {
    const std::string page = options.page ? *options.page : findPage();
    std::string shown = page;
    if (options.picture) {
        shown = temporaryPage(withPicture(contentsOf(page), page, *options.picture));
    }
    // The path is printed in any case: what the browser does with it cannot be seen from here.
    if (options.opensBrowser) openInBrowser(shown);
    printOut(shown + "\n");
}
