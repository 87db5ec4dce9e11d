#pragma once

#include "model/modelReader.h"
#include "support/failureOf.h"
#include "support/recordingBuilder.h"
#include "support/testNetwork.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

/// An empty network, and a builder that writes down what it is told while texts are read into it.
class cReaderTest : public ::testing::Test {
protected:
    cModelReading readText(const std::string& text) {
        std::istringstream stream(text);
        return readModel(stream, builder);
    }
    /// Reads lines, each with a line feed behind it.
    cModelReading readLines(const std::vector<std::string>& lines) {
        std::string text;
        for (const std::string& line : lines) text += line + '\n';
        return readText(text);
    }
    /// What the builder was told by calls of these names, in order.
    std::vector<std::string> calls(std::initializer_list<std::string> names) const {
        std::vector<std::string> chosen;
        for (const std::string& call : builder.calls)
            for (const std::string& name : names)
                if (call == name || call.starts_with(name + ' ')) chosen.push_back(call);
        return chosen;
    }

    cNodeQueue& queue(const std::string& name) { return element<cNodeQueue>(name); }
    cNodeActCombi& combi(const std::string& name) { return element<cNodeActCombi>(name); }
    cLink& link(const std::string& name) { return element<cLink>(name); }
    std::string rule(const std::string& linkName, eLinkRule rule) { return link(linkName).getRuleText(rule); }

    cTestNetwork network;
    cRecordingBuilder builder{network};

private:
    template <typename cKind>
    cKind& element(const std::string& name) {
        auto* found = network.findElement<cKind>(name);
        if (found == nullptr) throw std::runtime_error("the model has no such element: " + name);
        return *found;
    }
};

/// "LINE: message" for each warning.
inline std::vector<std::string> warningTexts(const cModelReading& reading) {
    std::vector<std::string> texts;
    for (const cModelWarning& warning : reading.warnings)
        texts.push_back(std::to_string(warning.line) + ": " + warning.message);
    return texts;
}

using cTexts = std::vector<std::string>;
