#include "channel/resultJson.h"

#include "kernel/resultText.h"

#include <nlohmann/json.hpp>

std::string buildResultsJson(const cNetwork& network) {
    nlohmann::json results = nlohmann::json::object();
    for (const cResultEntry& entry : resultEntries(network)) {
        if (entry.isCount)
            results[entry.key] = static_cast<std::int64_t>(entry.value);
        else
            results[entry.key] = entry.value;
    }
    // A label of a model in another encoding than UTF-8 must not keep the figures from being written.
    return results.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}
