#include "batch/commandLine.h"

#include "batch/exitStatus.h"
#include "batch/outputFile.h"
#include "batch/programName.h"
#include "language/numberText.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <limits>
#include <sstream>
#include <string_view>

namespace {

constexpr const char* description =
    "Runs a model of a construction operation and prints its results.\n"
    "FILE can be \"-\" for standard output, in one option at most; the tables are then not printed.";
constexpr const char* footer =
    "Exit status: 0 the run is done, 1 the model failed, 2 wrong usage, 3 a file can't be read or written,\n"
    "130 stopped by Ctrl-C. The man page tells more.";

constexpr const char* servingFlag = "--serve";
constexpr std::array<std::string_view, 3> servingOptions{"MODEL", "--seed", servingFlag};

/// The arguments as they were given, before their texts are understood.
struct cGiven {
    cRunOptions options;
    std::optional<std::string> replications;
    std::optional<std::string> seed;
    std::vector<std::string> answers;
};

/// The whole number that `text` is, in plain decimal digits.
template <typename cNumber>
std::optional<cNumber> parseDigits(const std::string& text, cNumber least) {
    cNumber number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc{} && end == text.data() + text.size();
    return isWhole && number >= least ? std::optional(number) : std::nullopt;
}

[[noreturn]] void refuse(const std::string& reason) { throw CLI::ValidationError(reason); }

std::int32_t replicationCount(const std::string& text) {
    const auto count = parseDigits<std::int32_t>(text, 1);
    if (!count) refuse("--replications: " + text + " is not a whole number from 1 to 2147483647");
    return *count;
}

std::uint32_t seedNumber(const std::string& text) {
    const auto seed = parseDigits<std::uint32_t>(text, 0);
    if (!seed) refuse("--seed: " + text + " is not a whole number from 0 to 4294967295");
    return *seed;
}

/// Of two answers to one key the later holds.
std::map<std::string, double> answerTable(const std::vector<std::string>& texts) {
    std::map<std::string, double> answers;
    for (const std::string& text : texts) {
        const std::size_t equals = text.find('=');
        if (equals == std::string::npos || equals == 0) refuse("--get: " + text + " is not of the form KEY=VALUE");
        const std::string value = text.substr(equals + 1);
        const auto number = parseNumber(value);
        if (!number) refuse("--get: the value in " + text + " is not a number");
        answers[text.substr(0, equals)] = *number;
    }
    return answers;
}

/// A statement can't hold a ";", so a second one would silently be lost.
void checkStatement(const std::string& text) {
    const std::size_t end = text.find(';');
    if (end != std::string::npos && end + 1 != text.size())
        refuse("-e: give one statement at a time, with \";\" at its end only: " + text);
    if (text.substr(0, end).find_first_not_of(" \t\r\n") == std::string::npos) refuse("-e: the statement is empty");
}

/// An option that names a file, and what it names.
struct cNamedFile {
    std::string option;
    std::string path;
};

std::vector<cNamedFile> outputsOf(const cRunOptions& options) {
    std::vector<cNamedFile> outputs;
    const auto add = [&](const char* option, const std::optional<std::string>& path) {
        if (path) outputs.push_back({option, *path});
    };
    add("--json", options.jsonPath);
    add("--csv", options.csvPath);
    add("--replications-csv", options.replicationsCsvPath);
    add("--trace", options.tracePath);
    return outputs;
}

std::vector<cNamedFile> inputsOf(const cRunOptions& options) {
    std::vector<cNamedFile> inputs;
    if (!options.modelPath.empty()) inputs.push_back({"MODEL", options.modelPath});
    for (const std::string& path : options.codePaths) inputs.push_back({"--code", path});
    return inputs;
}

void checkNames(const std::vector<cNamedFile>& files) {
    for (const cNamedFile& file : files)
        if (file.path.empty()) refuse(file.option + ": the name of the file is empty");
}

/// Where a path leads, links and steps back resolved as far as they exist.
std::filesystem::path placeOf(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::weakly_canonical(std::filesystem::absolute(path, ignored), ignored);
}

/// Whether both paths lead to one file that writing would replace.
bool isSameFile(const std::string& one, const std::string& other) {
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(one, ignored);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) return false;
    return placeOf(one) == placeOf(other);
}

/// Every output has a place of its own, and none is where the run is read from.
void checkPlaces(const cRunOptions& options) {
    const std::vector<cNamedFile> outputs = outputsOf(options);
    std::vector<cNamedFile> taken = inputsOf(options);
    checkNames(taken);
    checkNames(outputs);
    std::string streaming;
    for (const cNamedFile& output : outputs) {
        if (output.path == standardOutput) {
            if (!streaming.empty()) refuse(streaming + " and " + output.option + " can't both go to standard output");
            streaming = output.option;
            continue;
        }
        for (const cNamedFile& other : taken)
            if (isSameFile(output.path, other.path))
                refuse(output.option + " would overwrite " + output.path + ", which is the file of " + other.option);
        taken.push_back(output);
    }
    if (options.printsPath && (options.printsPath->empty() || *options.printsPath == standardOutput))
        refuse("--prints: needs the name of a folder");
}

/// Which words belong to an option that can be repeated depends on whether MODEL must follow.
void declareOptions(CLI::App& app, cGiven& given, bool needsModel) {
    cRunOptions& options = given.options;
    app.add_option("MODEL", options.modelPath, "The model, a .tbsmx file")->required(needsModel)->type_name("");

    const auto add = [&app](const char* names, auto& value, const char* type, const char* help) {
        return app.add_option(names, value, help)->type_name(type);
    };
    const auto addRepeated = [&add](const char* names, auto& values, const char* type, const char* help) {
        add(names, values, type, help)->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    };
    add("--replications", given.replications, "N", "Run N replications, whatever the model says");
    add("--seed", given.seed, "N", "The base seed, in place of the clock: the run can be repeated");
    addRepeated("--code", options.codePaths, "FILE", "Execute the statements in FILE ahead of the Global Code");
    addRepeated("-e", options.statements, "STATEMENT", "Execute one such statement, behind those of --code");
    addRepeated("--get", given.answers, "KEY=VALUE", "Answer GET(\"KEY\") with the number VALUE");
    add("--json", options.jsonPath, "FILE", "Write the results as one JSON object");
    add("--csv", options.csvPath, "FILE", "Write the results as comma-separated text");
    add("--replications-csv", options.replicationsCsvPath, "FILE", "Write one line of figures per replication");
    add("--prints", options.printsPath, "DIR", "Write each PRINT text to a file of its own in DIR");
    add("--trace", options.tracePath, "FILE", "Write the trace of every replication");
    app.add_flag("--quiet", options.isQuiet, "Show no progress line and no notes");
    app.add_flag(servingFlag, options.isServing, "Let another program drive this one, by lines of text");
    app.set_version_flag("--version", std::string(programName) + ' ' + TIMBERSIM_VERSION, "Show the version and end");
    app.set_help_flag("--help", "Show this help and end");
    app.get_formatter()->label("REQUIRED", "");
}

/// A controller gives itself what these options give to a single run.
void checkServing(const CLI::App& app) {
    for (const CLI::Option* option : app.get_options())
        if (option->count() > 0 && std::ranges::find(servingOptions, option->get_name()) == servingOptions.end())
            refuse(option->get_name() + " can't be given with --serve");
}

void understand(const CLI::App& app, cGiven& given) {
    cRunOptions& options = given.options;
    if (options.isServing) checkServing(app);
    if (app.count("MODEL") > 0 && options.modelPath.empty()) refuse("MODEL: the name of the file is empty");
    if (given.replications) options.replications = replicationCount(*given.replications);
    if (given.seed) options.seed = seedNumber(*given.seed);
    options.answers = answerTable(given.answers);
    for (const std::string& statement : options.statements) checkStatement(statement);
    checkPlaces(options);
}

}  // namespace

bool cRunOptions::usesStandardOutput() const {
    for (const auto* path : {&jsonPath, &csvPath, &replicationsCsvPath, &tracePath})
        if (*path == standardOutput) return true;
    return false;
}

std::variant<cRunOptions, cEarlyEnd> parseCommandLine(int argc, const char* const* argv) {
    CLI::App app(description, programName);
    app.footer(footer);
    cGiven given;
    const bool isServing = std::find(argv, argv + argc, std::string_view(servingFlag)) != argv + argc;
    declareOptions(app, given, !isServing);
    try {
        app.parse(argc, argv);
        understand(app, given);
    } catch (const CLI::Success& shown) {
        std::ostringstream text;
        app.exit(shown, text, text);
        return cEarlyEnd{exitStatus::done, text.str()};
    } catch (const CLI::Error& wrong) {
        return cEarlyEnd{exitStatus::wrongUsage, std::string(programName) + ": " + wrong.what() + "\nRun " +
                                                     programName + " --help for the options.\n"};
    }
    return given.options;
}
