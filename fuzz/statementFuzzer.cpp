// Statements, one a line: each split into its words and executed, whatever became of those before it.

#include "fuzzedYard.h"

#include "language/statement.h"
#include "language/words.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    cFuzzedYard yard;
    yard.simState = 1;  // a run is on, so that SIMULATE goes on behind the first turn
    for (const std::string& line : splitLines(std::string(data, data + size)))
        cFuzzedYard::attempt([&] { cStatement(line).execute(yard); });
    return 0;
}
