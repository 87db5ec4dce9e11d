#include "batch/progressLine.h"

#include "language/numberText.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <string_view>

namespace {

constexpr double refreshInterval = 0.1;
constexpr std::string_view backAndClear = "\r\033[K";
constexpr double secondsPerMinute = 60.0;
constexpr double secondsPerHour = 3600.0;

std::string rateText(double perSecond) {
    if (perSecond >= 1.0) return fixedText(perSecond, 1) + " per second";
    if (perSecond * secondsPerMinute >= 1.0) return fixedText(perSecond * secondsPerMinute, 1) + " per minute";
    return fixedText(perSecond * secondsPerHour, 1) + " per hour";
}

std::string twoDigits(std::int64_t number) { return (number < 10 ? "0" : "") + std::to_string(number); }

/// Hours, minutes and seconds, as a clock shows them.
std::string durationText(double seconds) {
    const std::int64_t whole = std::llround(std::min(seconds, 1e15));
    return std::to_string(whole / 3600) + ':' + twoDigits(whole / 60 % 60) + ':' + twoDigits(whole % 60);
}

}  // namespace

std::string progressText(const cProgress& progress) {
    std::string text = std::to_string(progress.done) + " of " + std::to_string(progress.total) + " replications";
    if (progress.done == 0 || progress.secondsForDone <= 0.0) return text;

    const double rate = progress.done / progress.secondsForDone;
    const double left = (progress.total - progress.done) / rate - progress.secondsSinceThen;
    return text + ", " + rateText(rate) + ", " + durationText(std::max(left, 0.0)) + " left";
}

double cProgressLine::steadySeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

cProgressLine::cProgressLine(std::ostream& shownOn, bool isWanted, cSeconds secondsSource)
    : terminal(shownOn), isShown(isWanted), clock(std::move(secondsSource)) {}

void cProgressLine::begin() {
    if (!isShown) return;
    isRunning = true;
    start = clock();
}

void cProgressLine::advance(std::int32_t done, std::int32_t total) {
    if (!isRunning) return;
    progress.done = done;
    progress.total = total;
    progress.secondsForDone = clock() - start;
    refresh();
}

void cProgressLine::refresh() {
    if (!isRunning || progress.total == 0) return;
    const double now = clock();
    if (now < nextRefresh) return;

    nextRefresh = now + refreshInterval;
    progress.secondsSinceThen = now - start - progress.secondsForDone;
    terminal << backAndClear << progressText(progress) << std::flush;
    isOnScreen = true;
}

void cProgressLine::erase() {
    if (isOnScreen) terminal << backAndClear << std::flush;
    isOnScreen = false;
}
