#pragma once

#include "language/breath.h"
#include "language/randomStreams.h"

#include <cstdint>
#include <string>

/// What an operand means: a number, or where or how to read one. Unless it is lasting it holds for this moment alone.
struct cMeaning {
    double number = 0.0;
    const double* place = nullptr;                                      ///< where the number stands
    double (*read)(const void* subject, const void* detail) = nullptr;  ///< how to work it out
    const void* subject = nullptr;
    const void* detail = nullptr;
    bool isLasting = false;  ///< holds until `namesVersion` of the context moves
    bool isOfOwner = false;  ///< lasts for expressions of the same owner only
    bool isFormula = false;  ///< reading it is an evaluation, with all that one can do

    double value() const {
        if (place != nullptr) return *place;
        return read == nullptr ? number : read(subject, detail);
    }
};

/// What an expression asks of the model around it.
class cEvaluationContext : public cBreath {
public:
    /// The value of an operand: a number, a global name or a dotted path; 0 for a name that means nothing.
    /// @param owner the name of the element on whose behalf the expression runs; empty for global code.
    /// @throws cException if the operand names an attribute that its element doesn't know.
    virtual double resolve(const std::string& operand, const std::string& owner) = 0;

    /// What an operand means, so that an expression can keep it. Has the effects of looking it up, no others.
    /// @throws cException as `resolve`.
    virtual cMeaning meaningOf(const std::string& operand, const std::string& owner) {
        return {.number = resolve(operand, owner)};
    }

    virtual cRandomStreams& randomStreams() = 0;

    /// The host's answer to GET("key"). @throws cException if there is none.
    virtual double hostGet(const std::string& key) = 0;

    /// Moves with every change of what names mean: an element, a type or a declared name came, went or was renamed, or
    /// a link got another end.
    std::uint64_t namesVersion = 1;
    void namesChanged() { ++namesVersion; }
};
