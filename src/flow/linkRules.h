#pragma once

#include "language/expression.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// The expressions by which a link says how resources go.
enum class eLinkRule : std::uint8_t {
    enough,  ///< whether a Combi may start, as far as this link is concerned; "Draw Condition" to the user
    drawUntil,
    drawAmt,
    drawOrder,
    drawWhere,
    releaseAmt,
    releaseUntil,
    releaseOrder,
    releaseWhere,
    strength,
};

struct cLinkRule {
    eLinkRule rule;
    std::string_view modelKey;     ///< its keyword in model files
    std::string_view initialText;  ///< what a new link has
};

/// All rules, in the order of the enumerators, which is that of model files.
inline constexpr std::array linkRules{
    cLinkRule{eLinkRule::enough, "ENOUGH", "1"},
    cLinkRule{eLinkRule::drawUntil, "DRAWUNTIL", "nDraws"},
    cLinkRule{eLinkRule::drawAmt, "DRAWAMT", "1"},
    cLinkRule{eLinkRule::drawOrder, "DRAWORDER", "1"},
    cLinkRule{eLinkRule::drawWhere, "DRAWWHERE", "1"},
    cLinkRule{eLinkRule::releaseAmt, "RELEASEAMT", "1"},
    cLinkRule{eLinkRule::releaseUntil, "RELEASEUNTIL", "0"},
    cLinkRule{eLinkRule::releaseOrder, "RELEASEORDER", "1"},
    cLinkRule{eLinkRule::releaseWhere, "RELEASEWHERE", "1"},
    cLinkRule{eLinkRule::strength, "STRENGTH", "1"},
};

/// The keyword of a rule in model files.
constexpr std::string_view modelKeyOf(eLinkRule rule) { return linkRules[static_cast<std::size_t>(rule)].modelKey; }

/// The expression of a new link for `rule`.
cExpression newRuleExpression(cEvaluationContext& model, eLinkRule rule);
