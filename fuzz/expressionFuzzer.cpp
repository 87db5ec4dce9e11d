// A formula: compiled, evaluated at every event of a run on behalf of nobody and of two links, then made the rules of
// these links in another run.

#include "fuzzedYard.h"

#include "flow/link.h"
#include "language/symbols.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    cFuzzedYard yard;
    cFuzzedYard::attempt([&] {
        const cExpression formula(*yard.symbols, text);
        yard.onEventPoint = [&] {
            for (const char* owner : {"", cFuzzedYard::drawLink, cFuzzedYard::releaseLink}) formula.evaluate(owner);
        };
        yard.runAsItStands();
        yard.onEventPoint = {};
        yard.clearNetwork();
        for (const char* owner : {cFuzzedYard::drawLink, cFuzzedYard::releaseLink})
            for (const cLinkRule& row : linkRules) yard.findElement<cLink>(owner)->setRuleText(row.rule, text);
        yard.runAsItStands();
    });
    return 0;
}
