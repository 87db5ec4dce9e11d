#pragma once

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>

/// How far a run of many replications is. Times are in seconds of the wall clock.
struct cProgress {
    std::int32_t done = 0;          ///< replications that ended
    std::int32_t total = 0;         ///< replications to come to
    double secondsForDone = 0.0;    ///< from the start to the end of the last of those done
    double secondsSinceThen = 0.0;  ///< since that end
};

/// "12 of 1000 replications, 45.6 per second, 0:00:22 left", without rate and time while they aren't known. A slow rate
/// is told per minute or per hour.
std::string progressText(const cProgress& progress);

/// The line on a terminal that shows how far a run is: rewritten in its place ten times a second at most, and gone at
/// the end.
class cProgressLine {
public:
    using cSeconds = std::function<double()>;
    static double steadySeconds();

    /// @param isWanted without it nothing is ever shown.
    cProgressLine(std::ostream& shownOn, bool isWanted, cSeconds secondsSource = steadySeconds);
    ~cProgressLine() { erase(); }
    cProgressLine(const cProgressLine&) = delete;
    cProgressLine& operator=(const cProgressLine&) = delete;

    /// The first replication begins.
    void begin();
    /// `done` of `total` replications have ended.
    void advance(std::int32_t done, std::int32_t total);
    /// Shows the line anew if it is time to.
    void refresh();
    /// Takes the line away, so that something else can be written; the next `refresh` brings it back.
    void erase();

private:
    std::ostream& terminal;
    const bool isShown;
    const cSeconds clock;
    cProgress progress;
    bool isRunning = false;
    bool isOnScreen = false;
    double start = 0.0;
    double nextRefresh = 0.0;
};
