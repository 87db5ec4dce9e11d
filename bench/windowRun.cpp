// What a run costs in the window, unanimated, or, with the argument "plain", in a network that nobody draws: a Combi
// that works off a queue and refills it. A process measures one of them, since what the first leaves in memory slows
// the second. Prints milliseconds; fails nothing.

#include "support/drawnModel.h"
#include "support/testNetwork.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTextEdit>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <string_view>

namespace {

constexpr const char* code = "SIMULATECONDITION Load.TotInst>=500000;";
constexpr int repetitions = 5;

double bestOf(const std::function<void()>& run) {
    double best = 1e9;
    for (int i = 0; i < repetitions; ++i) {
        QElapsedTimer timer;
        timer.start();
        run();
        best = std::min(best, static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    return best;
}

double timeOfPlainRun() {
    cTestNetwork network;
    cResType& type = network.addGenericType("Default");
    cNodeQueue& soil = network.addQueue("Soil", type);
    cNodeActCombi& load = network.addCombi("Load");
    soil.setInitialContentText("5");
    load.setDurationText("Exponential(10)");
    network.addLink("Draws", soil, load);
    network.addLink("Releases", load, soil);
    return bestOf([&] {
        network.run(code);
        network.clearNetwork();
    });
}

double timeOfRunInTheWindow() {
    cDrawnModel model;
    model.window.resize(1400, 1000);
    model.window.show();
    model.load->setDurationText("Exponential(10)");
    model.releases->dropHandle(false, model.soil->cpByIndex(0));
    model.window.findChild<QTextEdit*>("globalCodeEdit")->setPlainText(code);
    return bestOf([&] {
        model.window.runReplications();
        model.window.clearNetwork();
    });
}

}  // namespace

int main(int argc, char* argv[]) {
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    const QApplication application(argc, argv);
    const bool isPlain = argc > 1 && std::string_view(argv[1]) == "plain";
    std::printf("%s %.1f\n", isPlain ? "plain" : "window", isPlain ? timeOfPlainRun() : timeOfRunInTheWindow());
}
