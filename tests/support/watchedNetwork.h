#pragma once

#include "support/testNetwork.h"

#include <functional>
#include <string>

/// A test network at whose hooks a test can listen, in the middle of a run. What isn't set is as in the plain one.
class cWatchedNetwork : public cTestNetwork {
public:
    using cTestNetwork::cTestNetwork;

    double hostGet(const std::string& key) override {
        const double answer = cTestNetwork::hostGet(key);
        return onGet ? onGet(key) : answer;
    }
    void hostMessage(const std::string& text) override {
        cTestNetwork::hostMessage(text);
        if (onMessage) onMessage(text);
    }
    void eventPoint() override {
        cTestNetwork::eventPoint();
        if (onEventPoint) onEventPoint();
    }

    /// The resource that an expression runs for now, as an instance; null if there is none.
    const cResChar* resourceInHand() const {
        const auto& stack = symbols->getResourceStack();
        return stack.empty() ? nullptr : dynamic_cast<const cResChar*>(stack.back());
    }

    std::function<double(const std::string& key)> onGet;
    std::function<void(const std::string& text)> onMessage;
    std::function<void()> onEventPoint;
};
