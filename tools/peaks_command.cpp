// The strongest waves of a picture.
#include "peaks_command.h"

#include <CLI/CLI.hpp>
#include <suggest/peaks.h>
#include <suggest/rounding.h>
#include <suggest/windowed_spectrum.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "attention.h"
#include "call_files.h"
#include "numbers.h"
#include "printable.h"
#include "proposal_text.h"
#include "shell_words.h"

namespace {

struct PeaksCommand {
    std::string picture;
    long most = 12;
    bool json = false;

    ExitCode run() const {
        requireInputs({picture});
        const mvPelBuffer<double> image = readGrey(picture).pels;
        beginStage("transforming", windowedSpectrumPolls(image));
        const std::vector<mvPeak> peaks = mfPeaks(image, most);
        printOut(json ? asJson(peaks) : asTable(peaks));
        return exitGood;
    }

  private:
    std::string asTable(const std::vector<mvPeak>& peaks) const {
        if (peaks.empty()) return "No wave stands out of its surroundings.\n";
        std::string text = "  period  frequency    angle  strength  over surroundings  line\n";
        for (const mvPeak& peak : peaks) {
            text += inColumn(shortNumber(peak.period()), 8) + inColumn(frequencyText(peak), 11) +
                    inColumn(angleText(peak), 9) + inColumn(shortNumber(peak.amplitude), 10) +
                    inColumn(std::to_string(mfNearestLong(peak.decibels)) + " dB", 19) + "  " +
                    lineFor(peak.arguments, picture) + orderText(peak) + "\n";
        }
        return text;
    }

    static std::string frequencyText(const mvPeak& peak) {
        char text[32];
        std::snprintf(text, sizeof text, "%.4f", peak.frequency);
        return text;
    }

    static std::string angleText(const mvPeak& peak) {
        char text[32];
        std::snprintf(text, sizeof text, "%.1f", mfNearest(10 * peak.degrees) / 10 + 0.0);
        return text;
    }

    static std::string orderText(const mvPeak& peak) {
        return peak.order == 1 ? "" : "  # " + std::to_string(peak.order) + " times the wave above";
    }

    static std::string asJson(const std::vector<mvPeak>& peaks) {
        std::vector<std::string> objects;
        objects.reserve(peaks.size());
        for (const mvPeak& peak : peaks) {
            objects.push_back("{\"period\": " + shortNumber(peak.period(), 5) +
                              ", \"frequency\": " + frequencyText(peak) +
                              ", \"angle\": " + angleText(peak) +
                              ", \"strength\": " + shortNumber(peak.amplitude, 4) +
                              ", \"decibels\": " + shortNumber(peak.decibels) +
                              ", \"group\": " + std::to_string(peak.group) +
                              ", \"order\": " + std::to_string(peak.order) +
                              ", \"arguments\": " + jsonList(peak.arguments) + "}");
        }
        return jsonLines(objects);
    }
};

}  // namespace

void describePeaks(CLI::App& command, Work& work) {
    const auto run = std::make_shared<PeaksCommand>();
    command.add_option("picture", run->picture, "The picture; its grey counts")->required();
    addWhole(
        command, "--most", "How many waves at most; 12 if not given",
        [run = run.get()](long most) { run->most = most; }, 1, 1000);
    command.add_flag("--json", run->json, "Print a list of objects");
    command.footer(
        "Periods are in pels, frequencies in cycles per pixel, angles in degrees across the\n"
        "stripes, strengths in grey levels. A wave with overtones stands before them.\n"
        "Example:\n  mvfreq peaks examples/pictures/disturbed.png");
    command.callback([run, &work] { work = [run] { return run->run(); }; });
}
