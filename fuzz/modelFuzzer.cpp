// A model: read, run, cleared, and run again.

#include "fuzzedNetwork.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    cFuzzedNetwork network;
    const std::string code = network.read(std::string(data, data + size));
    network.run(code);
    network.clearNetwork();
    network.run(code);
    return 0;
}
