// One picture, or many of them, several at once.
#include "picture_run.h"

#include <filt/fft.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <mutex>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include "attention.h"
#include "progress_line.h"

namespace {

std::string pictureCount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " picture" : " pictures");
}

class Batch {
  public:
    Batch(std::vector<PictureFiles> files, const PictureWork& work)
        : files_(std::move(files)), work_(work) {}

    ExitCode run(std::size_t jobs) {
        const std::size_t pictures = std::min(jobs, files_.size());
        threadsEach_ = static_cast<int>(jobs / pictures);
        workWith(pictures);
        if (hopeless_) std::rethrow_exception(hopeless_);
        return summary();
    }

  private:
    // This thread works as well; the others are joined before the function ends.
    void workWith(std::size_t threads) {
        std::vector<std::jthread> others;
        try {
            while (others.size() + 1 < threads) others.emplace_back(&Batch::workApart, this);
        } catch (const std::system_error&) {
            // There is no room for more threads; those that run do all the work.
        }
        const Attention attention(&line_);
        takePictures();
    }

    void workApart() {
        const Attention attention;
        takePictures();
    }

    void takePictures() {
        for (std::size_t at = next_++; at < files_.size() && !interrupted(); at = next_++) {
            take(files_[at]);
        }
    }

    void take(const PictureFiles& files) {
        try {
            work_(files, threadsEach_);
            ++done_;
        } catch (const mvFrequencyDefs::InvalidArgument&) {
            giveUp();
        } catch (const std::length_error&) {
            giveUp();
        } catch (...) {
            if (interrupted()) return;
            ++failed_;
            complain(files.input, reportOfException().text);
        }
    }

    void giveUp() {
        next_ = files_.size();
        const std::lock_guard lock(mutex_);
        hopeless_ = std::current_exception();
    }

    void complain(const std::string& input, const std::string& text) {
        line_.say("mvfreq: " + (text.starts_with(input) ? text : input + ": " + text));
    }

    ExitCode summary() {
        const std::string done = std::to_string(done_) + " of " + pictureCount(files_.size());
        if (done_ + failed_ < files_.size()) {
            line_.say("mvfreq: interrupted, " + done + " done");
            return exitStopped;
        }
        line_.hide();  // standard output may be the same terminal
        if (failed_ == 0) {
            std::printf("%s done\n", pictureCount(done_).c_str());
        } else {
            std::printf("%s done, %zu failed\n", done.c_str(), failed_.load());
        }
        if (std::fflush(stdout) != 0) throw Failure("standard output could not be written");
        return failed_ == 0 ? exitGood : exitFailed;
    }

    const std::vector<PictureFiles> files_;
    const PictureWork& work_;
    int threadsEach_ = 1;
    std::atomic<std::size_t> next_ = 0, done_ = 0, failed_ = 0;
    std::mutex mutex_;
    std::exception_ptr hopeless_;
    ProgressLine line_{
        [this] { return std::to_string(done_) + " of " + pictureCount(files_.size()) + " done"; }};
};

void makeFolder(const std::string& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error) throw Failure(path + ": " + error.message());
}

}  // namespace

ExitCode runPictures(const PictureArguments& pictures, const PictureWork& work) {
    std::vector<PictureFiles> files = pictures.files();
    const unsigned processors = std::max(std::thread::hardware_concurrency(), 1u);
    const unsigned jobs = pictures.jobs != 0 ? pictures.jobs : processors;
    if (!pictures.outDir) {
        work(files.front(), static_cast<int>(jobs));
        return exitGood;
    }
    makeFolder(*pictures.outDir);
    return Batch(std::move(files), work).run(jobs);
}
