// Stops running work by a button: cancel_button picture.png stopped.png
//
// Transforms ask the handler of their thread whether they may go on, every 16 rows or so.
#include <filt/freqfilt.h>

#include <atomic>
#include <chrono>
#include <iostream>
#include <thread>

#include "picture.h"
#include "program.h"

namespace {

constexpr long kSide = 32;
constexpr int kCancelled = 7;  // any status but 0 stops the operation

/// A button for the thread that makes it. `press` is for any thread.
class Button {
  public:
    Button() : former_(vsys_set_attention_handler(&ask, this)) {}
    ~Button() { vsys_set_attention_handler(former_.handler, former_.context); }
    Button(const Button&) = delete;
    Button& operator=(const Button&) = delete;

    void press() { pressed_ = true; }
    void pressAfter(long questions) { patience_ = questions; }

  private:
    static int ask(void* context) {
        auto* button = static_cast<Button*>(context);
        if (button->patience_-- == 0) button->press();
        return button->pressed_ ? kCancelled : 0;
    }

    std::atomic<bool> pressed_ = false;
    long patience_ = -1;
    vsys_attention_state former_;
};

/// Softens a picture tile by tile, in place.
void soften(Image& picture) {
    const mvFrequencyFilterBandPass filter(0.03, 0.0, 0.0, {kSide, kSide}, 0);  // a disc at DC
    mvFrequencyBuffer spectrum;
    for (long y = 0; y < picture.height(); y += kSide) {
        for (long x = 0; x < picture.width(); x += kSide) {
            Image tile = picture.window(x, y, kSide, kSide);  // a view of the picture's pels
            tile.offset(0, 0);
            mfForwardFFT(tile, spectrum);
            filter.apply(spectrum);
            mfInverseFFT(spectrum, tile, false, true);
        }
    }
}

void run(char** argv) {
    Image picture = readPicture(argv[1]);
    try {
        Button button;
        const std::jthread user([&button] {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            button.press();
        });
        for (Image copy = readPicture(argv[1]);;) soften(copy);  // without end
    } catch (const mvStatusException& stop) {
        std::cout << "stopped with status " << stop.status() << '\n';
    }
    try {
        Button button;
        button.pressAfter(400);
        soften(picture);
    } catch (const mvStatusException&) {
        writePicture(argv[2], picture);  // what was done is done, the rest is as it was
        std::cout << "stopped on the way\n";
    }
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "picture.png stopped.png", run);
}
