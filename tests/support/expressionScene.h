#pragma once

#include "language/exception.h"
#include "language/expression.h"
#include "language/numberText.h"
#include "support/failureOf.h"
#include "support/streamStates.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

/// A model that knows numbers and the names it is given, and keeps a record of the names it is asked for.
class cFakeContext : public cEvaluationContext {
public:
    double resolve(const std::string& operand, const std::string& owner) override {
        if (const auto number = parseNumber(operand)) return *number;
        askedNames.push_back(operand);
        askedFor.insert(owner);
        if (badNames.contains(operand)) throw cException{failureCode::noKeywords, "bad " + operand, {}, {}};
        const auto name = names.find(operand);
        return name == names.end() ? 0.0 : name->second;
    }
    cRandomStreams& randomStreams() override { return streams; }
    double hostGet(const std::string& key) override {
        askedKeys.push_back(key);
        return 12.3456789;
    }
    void breathe() override {
        if (++breaths == 1000) throw cException{failureCode::userStop, "stopped", {}, {}};
    }

    std::map<std::string, double> names{{"a", 10.0}, {"b", 4.0}, {"c", 3.0}};
    std::set<std::string> badNames;
    std::vector<std::string> askedNames;
    std::set<std::string> askedFor;  ///< the owners on whose behalf
    std::vector<std::string> askedKeys;
    cRandomStreams streams{1};
    int breaths = 0;
};

/// A model in which a is 10, b is 4, c is 3 and every other name is 0. Stream 0 begins with state 1.
class cExpressionScene : public ::testing::Test {
protected:
    using eTrial = cExpression::eTrial;
    using cStrings = std::vector<std::string>;

    /// The value of a text that is set without a trial.
    double valueOf(const std::string& text) { return cExpression(context, text, eTrial::skip).evaluate(); }
    std::uint32_t state() { return context.streams.first().getState(); }

    cFakeContext context;
};

/// What the system says of brackets left open and of names that it doesn't serve.
inline constexpr const char* notRecognized = "Operator or Function not recognized.";
