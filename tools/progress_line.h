// A line about work that lasts.
#pragma once

#include <chrono>
#include <functional>
#include <mutex>
#include <string>

/// A line on standard error, when that is a terminal. It appears after a second of work and is gone
/// at the end. All members may be called from several threads.
class ProgressLine {
  public:
    /// `state` says what is being done; the line adds the time.
    explicit ProgressLine(std::function<std::string()> state);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// Draws the line anew, ten times a second at most.
    void show();

    /// Puts a line of text on standard error, above the progress line.
    void say(const std::string& text);

    /// Takes the line away until it is shown again.
    void hide();

  private:
    using Clock = std::chrono::steady_clock;

    void clear();

    const std::function<std::string()> state_;
    const bool onTerminal_;
    const Clock::time_point start_ = Clock::now();
    std::mutex mutex_;
    Clock::time_point nextLine_ = start_ + std::chrono::seconds(1);
    bool lineShown_ = false;
};
