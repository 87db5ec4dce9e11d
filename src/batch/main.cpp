#include "batch/commandLine.h"
#include "batch/exitStatus.h"
#include "batch/fileError.h"
#include "batch/outputFile.h"
#include "batch/programName.h"
#include "batch/runJob.h"
#include "batch/serving.h"
#include "batch/stopSignal.h"

#include <csignal>
#include <fcntl.h>
#include <iostream>
#include <unistd.h>

namespace {

/// A standard stream that the caller closed must not become the number of a file that the run writes, where messages
/// would then go. What stands in for it can't be written to, so its loss is noticed.
void occupyStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) == -1) open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

int show(const cEarlyEnd& end) {
    if (end.status != exitStatus::done) {
        std::cerr << end.text;
        return end.status;
    }
    try {
        cOutputFile shown{std::string(standardOutput)};
        shown.write(end.text);
        shown.commit();
    } catch (const cFileError& error) {
        tell(std::cerr, error.message);
        return exitStatus::fileTrouble;
    }
    return end.status;
}

}  // namespace

int main(int argc, char** argv) {
    occupyStandardStreams();
    std::signal(SIGPIPE, SIG_IGN);  // a reader that goes away is a failed write, and no reason to leave files behind
    installStopSignal();

    const auto parsed = parseCommandLine(argc, argv);
    if (const auto* end = std::get_if<cEarlyEnd>(&parsed)) return show(*end);
    const auto& options = std::get<cRunOptions>(parsed);
    if (options.isServing) return serveController(options, std::cerr);
    return runJob(options, std::cerr, isatty(STDERR_FILENO) == 1);
}
