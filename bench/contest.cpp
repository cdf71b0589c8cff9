// Peers side by side on the same work.
#include "contest.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>
#include <numeric>
#include <optional>
#include <random>
#include <stdexcept>

#include "machine.h"

namespace bench {
namespace {

constexpr std::size_t kFewestRuns = 7;
constexpr int kMostRounds = 300;

// A short run is repeated within its turn, so that the clock's own time does not matter.
constexpr double kTurn = 1e6;
constexpr int kMostRunsPerTurn = 20;

double quantile(const std::vector<double>& sorted, double q) {
    return sorted[static_cast<std::size_t>(q * static_cast<double>(sorted.size() - 1) + 0.5)];
}

// Nothing where somebody else had the core meanwhile.
std::optional<double> timedRun(Peer& peer, const Values& input) {
    peer.load(input);
    const long before = interruptions();
    const auto begin = Clock::now();
    peer.run();
    const double time = nanosecondsSince(begin);
    if (interruptions() != before) return std::nullopt;
    return time;
}

// The answer's error; 0 where there is none to compare.
double errorOf(Peer& peer, const Contest& contest) {
    peer.load(contest.input);
    peer.run();
    const Values answer = peer.result();
    if (answer.empty()) return 0;
    const double error = answer.size() == contest.expected.size()
                             ? contest.judge.error(answer, contest.expected)
                             : std::numeric_limits<double>::infinity();
    if (!(error <= contest.judge.limit)) {
        throw std::runtime_error(contest.work + ": wrong answer of " + peer.name() + ", error " +
                                 std::to_string(error));
    }
    return error;
}

// The first run of a turn finds the caches full of another peer's data and is not counted.
void turn(Peer& peer, const Values& input, std::vector<double>& times) {
    const double first = timedRun(peer, input).value_or(kTurn);
    const int runs = static_cast<int>(std::clamp(kTurn / first, 1.0, double{kMostRunsPerTurn}));
    for (int i = 0; i < runs; ++i) {
        if (const auto time = timedRun(peer, input)) times.push_back(*time);
    }
}

bool areEnough(const std::vector<std::vector<double>>& times) {
    return std::ranges::all_of(times, [](const auto& t) { return t.size() >= kFewestRuns; });
}

void expectEnough(const Contest& contest, const std::vector<std::vector<double>>& times) {
    if (!areEnough(times)) {
        throw std::runtime_error(contest.work +
                                 ": others had the core in nearly every run; "
                                 "measure at real-time priority or when the machine is calm");
    }
}

std::vector<std::vector<double>> timesOf(Contest& contest, const Settings& settings) {
    std::vector<std::vector<double>> times(contest.peers.size());
    std::vector<std::size_t> order(contest.peers.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::mt19937 generator(1);
    const RealTime realTime(settings.realTime);
    const auto begin = Clock::now();
    for (int round = 0; round < kMostRounds; ++round) {
        const bool isTimeUp = nanosecondsSince(begin) > settings.secondsPerContest * 1e9;
        if (isTimeUp && areEnough(times)) break;
        std::shuffle(order.begin(), order.end(), generator);
        for (const std::size_t i : order) turn(*contest.peers[i], contest.input, times[i]);
    }
    expectEnough(contest, times);
    return times;
}

}  // namespace

Judge relativeError(double limit) {
    return {[](const Values& answer, const Values& expected) {
                double difference = 0, size = 0;
                for (std::size_t i = 0; i < expected.size(); ++i) {
                    const double d = double{answer[i]} - double{expected[i]};
                    difference += d * d;
                    size += double{expected[i]} * double{expected[i]};
                }
                return std::sqrt(difference / size);
            },
            limit};
}

Judge largestDifference(double limit) {
    return {[](const Values& answer, const Values& expected) {
                double largest = 0;
                for (std::size_t i = 0; i < expected.size(); ++i) {
                    largest = std::max(largest, std::abs(double{answer[i]} - double{expected[i]}));
                }
                return largest;
            },
            limit};
}

void record(const Settings& settings, const std::string& group, const std::string& work, Size size,
            const std::string& peer, std::vector<double> nanoseconds, double error) {
    std::sort(nanoseconds.begin(), nanoseconds.end());
    if (settings.csv.empty()) return;
    std::ofstream csv(settings.csv, std::ios::app);
    csv << group << ',' << work << ',' << size.width << ',' << size.height << ',' << peer << ','
        << nanoseconds.size() << ',' << quantile(nanoseconds, 0.5) << ','
        << quantile(nanoseconds, 0.1) << ',' << quantile(nanoseconds, 0.9) << ',' << error << '\n';
    if (!csv.flush()) throw std::runtime_error("cannot write " + settings.csv);
}

void hold(Contest& contest, const Settings& settings) {
    std::vector<double> errors;
    for (const auto& peer : contest.peers) errors.push_back(errorOf(*peer, contest));
    const auto times = timesOf(contest, settings);
    std::printf("%s %s %ldx%ld\n", contest.group.c_str(), contest.work.c_str(), contest.size.width,
                contest.size.height);
    double first = 0;
    for (std::size_t i = 0; i < times.size(); ++i) {
        auto sorted = times[i];
        std::sort(sorted.begin(), sorted.end());
        const double median = quantile(sorted, 0.5);
        if (i == 0) first = median;
        std::printf("  %-42s %10.1f us %8.3f   error %.1e\n", contest.peers[i]->name().c_str(),
                    median / 1e3, median / first, errors[i]);
        record(settings, contest.group, contest.work, contest.size, contest.peers[i]->name(),
               sorted, errors[i]);
    }
    std::fflush(stdout);
}

}  // namespace bench
