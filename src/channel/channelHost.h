#pragma once

#include <string>

/// What a channel drives: the window, or the batch program, which has none. Nothing here throws, except where it says
/// so: a failure of the model is told where the host tells failures.
class cChannelHost {
public:
    virtual ~cChannelHost() = default;

    /// Whether a run is on that somebody else than the channel began.
    virtual bool isRunning() const = 0;
    /// Clears the model and reads another. If that fails, the model is empty.
    virtual void load(const std::string& path) = 0;
    /// One run, to its end.
    virtual void run() = 0;
    /// Switches the animation of runs.
    virtual void animate(bool isWanted) = 0;
    /// Keeps a line of code for the next run.
    virtual void keepStatement(const std::string& line) = 0;
    /// Ends the program; what is at work is broken off.
    virtual void quit() = 0;
    /// Gives `line`, which ends in a line feed, to the controller, and keeps nothing back.
    virtual void send(const std::string& line) = 0;
    /// Waits a while for further messages and gives each to `cChannel::handle`.
    /// @throws cException to break off what is at work.
    virtual void awaitMessages() = 0;
    /// Takes a line for the debug log. Ignored here.
    virtual void log(const std::string&) {}
};
