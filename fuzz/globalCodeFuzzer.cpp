// Global Code: its declarations alone, as a reader of models takes them, then all of it in a run, and in another one
// after the model has been cleared.

#include "fuzzedYard.h"

#include "language/compilation.h"
#include "language/words.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    cFuzzedYard yard;
    cFuzzedYard::attempt([&] { compileCode(yard, splitLines(text), eCompiled::declarations); });
    cFuzzedYard::attempt([&] { yard.runStatements(); });
    yard.statements.clear();
    yard.run(text);
    yard.clearNetwork();
    yard.run(text);
    return 0;
}
