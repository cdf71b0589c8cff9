// Stops running transforms by a button: cancel_button picture.png stopped.png
//
// Every long operation asks the handler of its thread whether it may go on, every 16 rows or so.
#include <filt/fft.h>

#include <atomic>
#include <chrono>
#include <iostream>
#include <thread>

#include "picture.h"

namespace {

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

/// Transforms without end, until the button is pressed.
void work(const Image& picture, Button& button) {
    const std::jthread user([&button] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        button.press();
    });
    mvFrequencyBuffer spectrum;
    for (;;) mfForwardFFT(picture, spectrum);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const Image picture = readPicture(argv[1]);
    mvFrequencyBuffer spectrum;
    try {
        Button button;
        work(picture, button);
    } catch (const mvStatusException& stop) {
        std::cout << "stopped with status " << stop.status() << '\n';
    }
    try {
        Button button;
        button.pressAfter(8);
        mfForwardFFT(picture, spectrum);
    } catch (const mvStatusException&) {
        // What a stopped call leaves is no spectrum: 128 of the rows, and no column, were done.
        writePicture(argv[2], mfFrequencyMapImage(spectrum.getMagnitudeImage(false),
                                                  mvFrequencyDefs::eMapClip, 0, 0));
    }
    mfForwardFFT(picture, spectrum);  // nothing is left over: the same buffer serves again
    Image again;
    mfInverseFFT(spectrum, again, false, true);
    std::cout << "pel in the middle: "
              << int{picture.pel(picture.width() / 2, picture.height() / 2)} << " before, "
              << int{again.pel(again.width() / 2, again.height() / 2)} << " after\n";
}
