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
#include "printable.h"
#include "progress_line.h"
#include "standard_names.h"
#include "system.h"

namespace {

std::string pictureCount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " picture" : " pictures");
}

class Batch {
  public:
    Batch(std::vector<PictureFiles> files, std::size_t skipped, const PictureWork& work)
        : files_(std::move(files)), skipped_(skipped), work_(work), lists_(files_.size()) {}

    ExitCode run(std::size_t jobs) {
        const std::size_t pictures = std::clamp<std::size_t>(files_.size(), 1, jobs);
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
            take(at);
        }
    }

    void take(std::size_t at) {
        const PictureFiles& files = files_[at];
        try {
            auto [remark, list] = work_(files, threadsEach_);
            lists_[at] = std::move(list);
            ++done_;
            if (!remark.empty() && !hasRemarked_.exchange(true)) line_.say("mvfreq: " + remark);
        } catch (const mvFrequencyDefs::InvalidArgument&) {
            giveUp();
        } catch (const std::length_error&) {
            giveUp();
        } catch (...) {
            if (interrupted()) return;
            ++failed_;
            complain(files, reportOfException().text);
        }
    }

    void giveUp() {
        next_ = files_.size();
        const std::lock_guard lock(mutex_);
        hopeless_ = std::current_exception();
    }

    void complain(const PictureFiles& files, const std::string& text) {
        const bool namesFile = text.starts_with(files.input) || text.starts_with(files.output);
        line_.say("mvfreq: " + (namesFile ? text : files.input + ": " + text));
    }

    // True when there is any.
    bool printLists() {
        std::string text;
        for (const std::string& list : lists_) text += list;
        line_.hide();  // standard output may be the same terminal
        printOut(text);
        return !text.empty();
    }

    ExitCode summary() {
        const bool hasLists = printLists();
        const std::string done = std::to_string(done_) + " of " + pictureCount(files_.size());
        if (done_ + failed_ < files_.size()) {
            line_.say("mvfreq: interrupted, " + done + " done");
            return exitStopped;
        }
        std::string text = failed_ == 0 ? pictureCount(done_) + " done" : done + " done";
        if (failed_ != 0) text += ", " + std::to_string(failed_) + " failed";
        if (skipped_ != 0) text += ", " + std::to_string(skipped_) + " skipped";
        if (hasLists) {
            line_.say("mvfreq: " + text);
        } else {
            printOut(text + "\n");
        }
        return failed_ == 0 ? exitGood : exitFailed;
    }

    const std::vector<PictureFiles> files_;
    const std::size_t skipped_;
    const PictureWork& work_;
    std::vector<std::string> lists_;  // in the order of the pictures
    int threadsEach_ = 1;
    std::atomic<std::size_t> next_ = 0, done_ = 0, failed_ = 0;
    std::atomic<bool> hasRemarked_ = false;
    std::mutex mutex_;
    std::exception_ptr hopeless_;
    ProgressLine line_{
        [this] { return std::to_string(done_) + " of " + pictureCount(files_.size()) + " done"; }};
};

void makeFolder(const std::string& path) {
    std::error_code error;
    std::filesystem::create_directories(pathOf(path), error);
    if (error) throw Failure(path + ": " + error.message());
}

// What --skip-existing leaves to be done.
std::vector<PictureFiles> unfinished(std::vector<PictureFiles> files) {
    std::erase_if(files, [](const PictureFiles& file) {
        std::error_code ignored;
        return !isStandard(file.output) && std::filesystem::exists(pathOf(file.output), ignored);
    });
    return files;
}

ExitCode runSingle(const std::vector<PictureFiles>& files, long jobs, const PictureWork& work) {
    if (files.empty()) return exitGood;
    const auto [remark, list] = work(files.front(), static_cast<int>(jobs));
    printOut(list);
    if (!remark.empty()) std::fprintf(stderr, "mvfreq: %s\n", printable(remark).c_str());
    return exitGood;
}

// The pictures of a run, and how many it leaves out.
struct Todo {
    std::vector<PictureFiles> files;
    std::size_t skipped;
};

Todo todo(const PictureArguments& pictures) {
    const std::vector<PictureFiles> all = pictures.files();
    if (!pictures.existing.skip) return {all, 0};
    std::vector<PictureFiles> files = unfinished(all);
    const std::size_t skipped = all.size() - files.size();
    return {std::move(files), skipped};
}

}  // namespace

void requireFiles(const PictureArguments& pictures, const OtherFiles& others) {
    std::vector<std::string> inputs = others.inputs;
    std::vector<Output> outputs = others.outputs;
    for (const PictureFiles& file : todo(pictures).files) {
        inputs.push_back(file.input);
        outputs.push_back({file.output, Role::picture, !pictures.outDir});
    }
    requireInputs(inputs);
    requireFreeOutputs(inputs, outputs, pictures.existing);
}

ExitCode runPictures(const PictureArguments& pictures, const PictureWork& work) {
    Todo run = todo(pictures);
    const auto processors = static_cast<long>(std::max(std::thread::hardware_concurrency(), 1u));
    const long jobs = pictures.jobs != 0 ? pictures.jobs : processors;
    if (!pictures.outDir) return runSingle(run.files, jobs, work);
    makeFolder(*pictures.outDir);
    return Batch(std::move(run.files), run.skipped, work).run(static_cast<std::size_t>(jobs));
}
