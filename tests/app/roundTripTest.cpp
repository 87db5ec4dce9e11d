#include "app/globalCodeDialog.h"
#include "app/tsApp.h"
#include "kernel/resultText.h"
#include "model/modelReader.h"
#include "model/modelWriter.h"
#include "support/keptModel.h"
#include "support/messageBox.h"
#include "support/randomModel.h"
#include "support/testNetwork.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>
#include <sstream>

namespace {

constexpr std::uint32_t randomModelCount = 300;

QByteArray contentOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) qFatal("can't read %s", qPrintable(path));
    return file.readAll();
}

/// A failure of a model is a result as well.
std::string outcomeOf(cNetwork& network, const std::function<void()>& run) {
    try {
        run();
    } catch (const cException& failure) {
        return "failed: " + failure.message + failure.location;
    }
    return resultCsv(network);
}

/// A network whose host answers as a window without a controller does.
class cWindowlessNetwork : public cTestNetwork {
public:
    double hostGet(const std::string& key) override {
        const std::string message = "No answer to GET(\"" + key + "\"): no controller is connected.";
        throw cException{failureCode::expression, message, {}, {}};
    }
};

/// Puts replacement characters where the window does.
class cDecodedModel : public cKeptModel {
public:
    using cKeptModel::cKeptModel;

    std::string decoded(const std::string& line) override { return QString::fromStdString(line).toStdString(); }
};

/// What a process has of its own begins as in a new one.
void beginAsANewProcess() {
    cNetworkElement::setElementCounter(0);
    std::srand(1);
}

/// The text without what depends on points of nodes: those of engine elements are none.
std::string withoutPoints(const std::string& text) {
    std::istringstream lines(text);
    std::string rest;
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with("POSLINK ")) rest += line + '\n';
    return rest;
}

}  // namespace

/// Whatever the window reads it writes again, and it reads and runs it as the batch runner does.
class cRoundTripTest : public QObject {
    Q_OBJECT

private:
    QString put(const QByteArray& text) {
        const QString path = home.filePath("model.tbsmx");
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) qFatal("can't write");
        return path;
    }
    static QByteArray loadAndSave(tsApp& window, const QString& from, const QString& to) {
        beginAsANewProcess();
        window.loadModel(from.toStdString());
        window.writeModelFile(to);
        return contentOf(to);
    }
    static QStringList modelsIn(const char* folder) {
        const QDir dir(QStringLiteral(TIMBERSIM_SOURCE "/") + QLatin1String(folder));
        QStringList paths;
        for (const QString& name : dir.entryList({"*.tbsmx"})) paths.append(dir.filePath(name));
        return paths;
    }
    static void addModels(const QStringList& folders) {
        QTest::addColumn<QByteArray>("text");
        for (const QString& folder : folders)
            for (const QString& path : modelsIn(folder.toLatin1().constData()))
                QTest::newRow(qPrintable(QFileInfo(path).fileName())) << contentOf(path);
    }
    static void addRandomModels() {
        for (std::uint32_t seed = 1; seed <= randomModelCount; ++seed)
            QTest::newRow(qPrintable(QString("random %1").arg(seed))) << QByteArray::fromStdString(randomModel(seed));
    }
    /// What the engine's own elements are written as after the same reading.
    static std::string plainWriting(const QByteArray& text, std::vector<cModelWarning>& warnings) {
        beginAsANewProcess();
        cWindowlessNetwork network;
        cDecodedModel model(network);
        std::istringstream stream(text.toStdString());
        warnings = readModel(stream, model).warnings;
        return writeModel(model).text;
    }

    QTemporaryDir home;

private Q_SLOTS:
    void initTestCase() { qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit()); }

    void bothSavesHaveTheSameBytes_data() {
        addModels({"examples", "tests/conformance/models"});
        addRandomModels();
        QVERIFY(modelsIn("examples").size() >= 6 && modelsIn("tests/conformance/models").size() >= 139);
    }
    void bothSavesHaveTheSameBytes() {
        QFETCH(QByteArray, text);
        tsApp window;
        const QString first = home.filePath("first.tbsmx");
        const QStringList boxes = boxesDuring([&] {
            const QByteArray saved = loadAndSave(window, put(text), first);
            QVERIFY(saved.contains("RANKCOUNT "));
            QCOMPARE(loadAndSave(window, first, home.filePath("second.tbsmx")), saved);
        });
        Q_UNUSED(boxes);  // incomplete links are told of
    }

    void examplesAreAsTheWindowSavesThem_data() { addModels({"examples"}); }
    void examplesAreAsTheWindowSavesThem() {
        QFETCH(QByteArray, text);
        tsApp window;
        QCOMPARE(loadAndSave(window, put(text), home.filePath("saved.tbsmx")), text);
    }

    void readsAsTheBatchRunnerDoes_data() {
        addModels({"examples", "tests/conformance/models", "tests/models/malformed"});
        addRandomModels();
    }
    void readsAsTheBatchRunnerDoes() {
        QFETCH(QByteArray, text);
        std::vector<cModelWarning> warnings;
        const std::string plain = plainWriting(text, warnings);
        tsApp window;
        beginAsANewProcess();
        window.loadModel(put(text).toStdString());

        const auto* box = window.findChild<QMessageBox*>("remarkBox");
        QCOMPARE(box != nullptr, !warnings.empty());
        if (box != nullptr) {
            QStringList told;
            for (const cModelWarning& warning : warnings)
                told.append(QString("Line %1: %2").arg(warning.line).arg(QString::fromStdString(warning.message)));
            QCOMPARE(told.size() > 5 ? box->detailedText() : box->informativeText(), told.join('\n'));
        }
        const QString saved = home.filePath("saved.tbsmx");
        boxesDuring([&] { QVERIFY(window.writeModelFile(saved)); });
        QCOMPARE(QString::fromStdString(withoutPoints(contentOf(saved).toStdString())),
                 QString::fromStdString(withoutPoints(plain)));
    }

    void runsAsTheBatchRunnerDoes_data() {
        addModels({"examples", "tests/conformance/models"});
        addRandomModels();
    }
    void runsAsTheBatchRunnerDoes() {
        QFETCH(QByteArray, text);
        // Many replications begin with what the clock says, and the two are not run in the same second.
        text = QString::fromUtf8(text).replace(QRegularExpression("MULTISIM [^;\\n]*"), "MULTISIM 1").toUtf8();
        std::string plain;
        {
            beginAsANewProcess();
            cWindowlessNetwork network;
            cKeptModel model(network);
            std::istringstream stream(text.toStdString());
            const std::string code = "SEED 77;\n" + readModel(stream, model).globalCode;
            plain = outcomeOf(network, [&] { network.run(code); });
        }
        tsApp window;
        beginAsANewProcess();
        window.loadModel(put(text).toStdString());
        window.findChild<cGlobalCodeDialog*>()->setText("SEED 77;\n" + window.findChild<cGlobalCodeDialog*>()->text());
        std::string drawn;
        boxesDuring([&] { drawn = outcomeOf(window, [&] { window.runReplications(); }); });

        QCOMPARE(window.replications, 1);
        QCOMPARE(QString::fromStdString(drawn), QString::fromStdString(plain));
    }
};

QTEST_MAIN(cRoundTripTest)
#include "roundTripTest.moc"
