#pragma once

#include "language/breath.h"
#include "language/randomStreams.h"

#include <string>

/// What an expression asks of the model around it.
class cEvaluationContext : public cBreath {
public:
    /// The value of an operand: a number, a global name or a dotted path; 0 for a name that means nothing.
    /// @param owner the name of the element on whose behalf the expression runs; empty for global code.
    /// @throws cException if the operand names an attribute that its element doesn't know.
    virtual double resolve(const std::string& operand, const std::string& owner) = 0;

    virtual cRandomStreams& randomStreams() = 0;

    /// The host's answer to GET("key"). @throws cException if there is none.
    virtual double hostGet(const std::string& key) = 0;
};
