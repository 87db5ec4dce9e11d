#include "flow/linkRules.h"

#include <algorithm>

static_assert(std::ranges::is_sorted(linkRules, {}, &cLinkRule::rule));

cExpression newRuleExpression(cEvaluationContext& model, eLinkRule rule) {
    const std::string_view text = linkRules[static_cast<std::size_t>(rule)].initialText;
    return {model, std::string(text), cExpression::eTrial::skip};
}
