#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/// What the user asked for. An output without a path isn't wanted; the path "-" is standard output.
struct cRunOptions {
    std::string modelPath;   ///< empty only where a controller is to load one
    bool isServing = false;  ///< a controller drives the program over standard input and output
    std::optional<std::int32_t> replications;
    std::optional<std::uint32_t> seed;
    std::vector<std::string> codePaths;
    std::vector<std::string> statements;    ///< of -e, in the order given
    std::map<std::string, double> answers;  ///< to GET, by key
    std::optional<std::string> jsonPath;
    std::optional<std::string> csvPath;
    std::optional<std::string> replicationsCsvPath;
    std::optional<std::string> printsPath;
    std::optional<std::string> tracePath;
    bool isQuiet = false;

    /// Whether an output goes to standard output, in place of the tables.
    bool usesStandardOutput() const;
};

/// The program has nothing to run: it shows a text and ends. Texts of status 0 belong on standard output.
struct cEarlyEnd {
    int status = 0;
    std::string text;
};

/// Reads the arguments of main, and refuses what can't be meant: outputs that would overwrite each other or what the
/// run is read from, and a statement that holds several.
std::variant<cRunOptions, cEarlyEnd> parseCommandLine(int argc, const char* const* argv);
