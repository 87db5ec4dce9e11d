// A model: read, run, cleared, and run again. And read, written, and read from what was written.

#include "fuzzedNetwork.h"
#include "model/modelWriter.h"
#include "support/keptModel.h"

#include <cstdlib>
#include <optional>

namespace {

/// What a model is written as once it has been read; nothing where not all of it was taken as it stands, or where not
/// all of it would come back.
std::optional<std::string> writtenAgain(const std::string& text) {
    cFuzzedNetwork network;
    cKeptModel model(network);
    const bool isTakenWhole = cFuzzedNetwork::read(text, model).warnings.empty();
    const cModelWriting writing = writeModel(model);
    if (!isTakenWhole || writing.hasIncompleteLink || !writing.warnings.empty()) return std::nullopt;
    return writing.text;
}

/// A model that was written once comes back as it is. The first writing alone brings it into that form.
void checkWriting(const std::string& text) {
    const std::optional<std::string> first = writtenAgain(text);
    if (!first) return;
    const std::optional<std::string> second = writtenAgain(*first);
    if (!second || writtenAgain(*second) != second) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    checkWriting(text);
    cFuzzedNetwork network;
    const std::string code = network.read(text);
    network.run(code);
    network.clearNetwork();
    network.run(code);
    return 0;
}
