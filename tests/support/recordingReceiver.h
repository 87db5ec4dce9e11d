#pragma once

#include "kernel/receiver.h"

#include <string>
#include <vector>

/// A node that can receive, of a kind that activities may release to. Keeps what it gets, and writes down each call as
/// "flowBegin Sink", where Sink is its name. Several can write into one log.
class cRecordingReceiver : public cNodeReceiver {
public:
    cRecordingReceiver(const std::string& name, std::vector<std::string>& callLog) : log(callLog) { setName(name); }

    std::string getKind() const override { return "NORMAL"; }
    void flowBegin() override { note("flowBegin"); }
    void receive(cRes& resource) override {
        note("receive");
        received.push_back(keep(resource));
    }
    void flowEnd() override { note("flowEnd"); }
    void flowSettle() override { note("flowSettle"); }
    void resetElement() override { note("resetElement"); }

    cResList received;

private:
    void note(const std::string& call) { log.push_back(call + ' ' + getName()); }

    std::vector<std::string>& log;
};
