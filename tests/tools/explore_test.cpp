// The explorer: a picture in a page, and the page in the browser.
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "support/program.h"

namespace {

constexpr const char* kPage = "<body>before<!--given-->after</body>";

// A variable of the environment, for the programs that a test starts.
class Variable {
  public:
    Variable(const char* name, const std::string& value) : name_(name) {
        const char* former = std::getenv(name);
        had_ = former != nullptr;
        if (had_) former_ = former;
        setenv(name, value.c_str(), 1);
    }
    ~Variable() { had_ ? setenv(name_, former_.c_str(), 1) : unsetenv(name_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    const char* name_;
    bool had_;
    std::string former_;
};

class Explore : public ProgramTest {
  protected:
    Explore() { write("page.html", kPage); }

    // The page that a run names, in this test's folder.
    std::string shown(const Arguments& arguments) {
        std::string path = succeed(arguments).out;
        EXPECT_TRUE(path.ends_with(".html\n")) << path;
        path.pop_back();
        return contents(std::filesystem::path(path).filename().string());
    }

    std::string given(const std::string& name, const std::string& bytes) {
        write(name, bytes);
        return shown({"explore", "--no-browser", "--page", "page.html", name});
    }

  private:
    Variable temporary_{"TMPDIR", path("")};
};

TEST_F(Explore, PutsThePictureIntoThePage) {
    EXPECT_EQ(given("in.png", "any"),
              "<body>before<script type=\"text/plain\" data-given=\"in.png\">YW55</script>"
              "after</body>");
}

TEST_F(Explore, KeepsEveryByteOfThePicture) {
    EXPECT_NE(given("1.png", "\xFF").find(">/w==<"), std::string::npos);
    EXPECT_NE(given("2.png", std::string("\0\xFE", 2)).find(">AP4=<"), std::string::npos);
    EXPECT_NE(given("4.png", "\xFB\xEF\xBE\x01").find(">++++AQ==<"), std::string::npos);
    EXPECT_NE(given("0.png", "").find("\"0.png\"></script>"), std::string::npos);
}

TEST_F(Explore, QuotesTheNameOfThePicture) {
    EXPECT_NE(given("a\"<b>&.png", "").find("=\"a&#34;&#60;b&#62;&#38;.png\">"), std::string::npos);
}

TEST_F(Explore, ShowsThePageItselfWithoutAPicture) {
    EXPECT_EQ(succeed({"explore", "--no-browser", "--page", "page.html"}).out, "page.html\n");
}

TEST_F(Explore, LetsOthersNotReadThePicture) {
    given("in.png", "any");
    for (const std::string& name : files()) {
        if (!name.starts_with("mvfreq-")) continue;
        EXPECT_EQ(std::filesystem::status(path(name)).permissions() & std::filesystem::perms::all,
                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    }
}

TEST_F(Explore, OpensTheBrowserOfADesktop) {
    const Variable display("DISPLAY", ":7");
    const Variable found("PATH", path("") + ":/usr/bin:/bin");
    write("xdg-open", "#!/bin/sh\nprintf '%s' \"$1\" >\"$1.seen\"\n");
    std::filesystem::permissions(path("xdg-open"), std::filesystem::perms::owner_all);
    EXPECT_EQ(succeed({"explore", "--page", "page.html"}).out, "page.html\n");
    const auto hasSeen = [&] { return contents("page.html.seen") == "page.html"; };
    for (int i = 0; i < 500 && !hasSeen(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_TRUE(hasSeen());
}

TEST_F(Explore, NeedsNoBrowser) {
    const Variable display("DISPLAY", ":7");
    const Variable found("PATH", path("nowhere"));
    EXPECT_EQ(succeed({"explore", "--page", "page.html"}).out, "page.html\n");
}

TEST_F(Explore, RefusesWhatIsNoPageOfTheExplorer) {
    write("other.html", "<body></body>");
    write("in.png", "any");
    const Outcome outcome = run({"explore", "--no-browser", "--page", "other.html", "in.png"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.err, "mvfreq: other.html: is not the page of the explorer\n");
}

TEST_F(Explore, NamesTheFileThatIsMissing) {
    Outcome outcome = run({"explore", "--no-browser", "--page", "none.html", "in.png"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.starts_with("mvfreq: none.html: ")) << outcome.err;
    outcome = run({"explore", "--no-browser", "--page", "page.html", "in.png"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.starts_with("mvfreq: in.png: ")) << outcome.err;
}

}  // namespace
