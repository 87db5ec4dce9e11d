#include "batch/commandLine.h"
#include "batch/exitStatus.h"
#include "batch/fileError.h"
#include "batch/outputFile.h"
#include "batch/programName.h"
#include "batch/runJob.h"
#include "batch/serving.h"
#include "batch/stopSignal.h"
#include "channel/standardStreams.h"

#include <csignal>
#include <iostream>
#include <unistd.h>

namespace {

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
