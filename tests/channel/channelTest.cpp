#include "channel/channel.h"

#include "channel/channelHost.h"
#include "channel/resultJson.h"
#include "support/failureOf.h"
#include "support/testNetwork.h"

#include <deque>
#include <functional>
#include <gtest/gtest.h>

namespace {

using cTexts = std::vector<std::string>;

/// Records what the channel asks of it. A run lasts as long as `whileRunning` does.
class cRecordingHost : public cChannelHost {
public:
    bool isRunning() const override { return runOfAnother; }
    void load(const std::string& path) override {
        done.push_back("load " + path);
        if (whileLoading) whileLoading();
    }
    void run() override {
        done.push_back("run");
        if (whileRunning) whileRunning();
    }
    void animate(bool isWanted) override { done.push_back(isWanted ? "animate" : "don't animate"); }
    void keepStatement(const std::string& line) override { done.push_back("keep " + line); }
    void quit() override { done.push_back("quit"); }
    void send(const std::string& line) override { sent += line; }
    void awaitMessages() override {
        if (coming.empty()) throw cException{failureCode::userStop, "stopped", {}, {}};
        const std::string message = coming.front();
        coming.pop_front();
        channel->handle(message);
    }
    void log(const std::string& line) override { logged.push_back(line); }

    cChannel* channel = nullptr;
    bool runOfAnother = false;
    std::function<void()> whileRunning;
    std::function<void()> whileLoading;
    std::deque<std::string> coming;  // while an answer is awaited
    cTexts done;
    cTexts logged;
    std::string sent;
};

class cChannelTest : public ::testing::Test {
protected:
    cChannelTest() { host.channel = &channel; }

    /// What the host is asked to do for these messages.
    cTexts doneFor(const cTexts& messages) {
        host.done.clear();
        for (const std::string& message : messages) channel.handle(message);
        return host.done;
    }
    /// The value of a GET that a run asks for while these messages come.
    double askDuringRun(const std::deque<std::string>& messages) {
        double value = -1.0;
        host.coming = messages;
        host.whileRunning = [&] { value = channel.get("key"); };
        channel.handle("RUNMODEL;");
        host.whileRunning = nullptr;
        return value;
    }

    cTestNetwork network;
    cRecordingHost host;
    cChannel channel{network, host};
};

}  // namespace

// ---- messages to the program

TEST_F(cChannelTest, resetModelClearsTheNetwork) {
    network.execute("MULTISIM 3;");
    network.simState = 1;
    channel.handle("RESETMODEL;");

    EXPECT_EQ(network.simState, 0);
    EXPECT_EQ(network.replications, 1);
    EXPECT_EQ(host.sent, "");
}

TEST_F(cChannelTest, loadTakesAllBehindTheFirstBlankLessOneSemicolon) {
    EXPECT_EQ(doneFor({"LOAD a.tbsmx", "load a.tbsmx;", "Load a.tbsmx;;", "LOAD ", "LOAD"}),
              (cTexts{"load a.tbsmx", "load a.tbsmx", "load a.tbsmx;", "load ", "load "}));
    EXPECT_EQ(host.sent, "");
}

TEST_F(cChannelTest, loadPathKeepsItsBlanksAndLosesOnlyItsLastSemicolon) {
    EXPECT_EQ(doneFor({"LOAD my  models/a;b .tbsmx;"}), cTexts{"load my  models/a;b .tbsmx"});
}

TEST_F(cChannelTest, loadLeavesResultsAndTracesOfTheLastRun) {
    network.run("PRINT notes \"done\";\nADDTORESULTS Half 1/2;");
    channel.handle("LOAD other.tbsmx;");
    channel.handle("GETRESULTS;");
    channel.handle("GETTRACE notes;");

    EXPECT_EQ(host.sent, "RESULTS {\"Half\":0.5,\"SimTime\":0.0}\nTRACE done|\n");
}

TEST_F(cChannelTest, setAnimateTicksForTheExactValueAlone) {
    EXPECT_EQ(
        doneFor({"SETANIMATE true;", "setanimate true;", "SETANIMATE true", "SETANIMATE false;", "SETANIMATE  true;",
                 "SETANIMATE true; false;", "SETANIMATE "}),
        (cTexts{"animate", "animate", "don't animate", "don't animate", "don't animate", "animate", "don't animate"}));
}

TEST_F(cChannelTest, setAnimateWithTheValueInUpperCaseUnchecks) {
    EXPECT_EQ(doneFor({"SETANIMATE TRUE;"}), cTexts{"don't animate"});
}

TEST_F(cChannelTest, setAnimateAloneDoesNothing) { EXPECT_EQ(doneFor({"SETANIMATE"}), cTexts{}); }

TEST_F(cChannelTest, runModelIsAnsweredWhenTheRunIsOver) {
    host.whileRunning = [&] { EXPECT_EQ(host.sent, ""); };

    EXPECT_EQ(doneFor({"RUNMODEL;"}), cTexts{"run"});
    EXPECT_EQ(host.sent, "FINISHED_RUN\n");
}

TEST_F(cChannelTest, runModelInLowerCaseRuns) {
    EXPECT_EQ(doneFor({"runmodel;", "RunModel;"}), (cTexts{"run", "run"}));
}

TEST_F(cChannelTest, runModelWithABlankOrWithoutItsSemicolonIsKeptAsAStatement) {
    EXPECT_EQ(doneFor({"RUNMODEL", "RUNMODEL ;", " RUNMODEL;", "RUNMODEL; ", "RUNMODEL;\r"}),
              (cTexts{"keep RUNMODEL", "keep RUNMODEL ;", "keep  RUNMODEL;", "keep RUNMODEL; ", "keep RUNMODEL;\r"}));
    EXPECT_EQ(host.sent, "");
}

TEST_F(cChannelTest, wholeMessageCommandsNeedTheirSemicolon) {
    EXPECT_EQ(doneFor({"RESETMODEL", "GETRESULTS", "CLOSE"}),
              (cTexts{"keep RESETMODEL", "keep GETRESULTS", "keep CLOSE"}));
}

TEST_F(cChannelTest, resultsAreTheJsonOfTheModel) {
    network.addQueue("Q", network.addGenericType("Soil"));
    network.run("ADDTORESULTS Half 1/2;");
    channel.handle("getresults;");

    EXPECT_EQ(host.sent, "RESULTS " + buildResultsJson(network) + '\n');
    EXPECT_NE(host.sent.find("\"Half\":0.5"), std::string::npos);
}

TEST_F(cChannelTest, resultsBeforeACompletedReplicationAreAnEmptyObject) {
    network.addQueue("Q", network.addGenericType("Soil"));
    channel.handle("GETRESULTS;");

    EXPECT_EQ(host.sent, "RESULTS {}\n");
}

TEST_F(cChannelTest, traceIsSentOnOneLine) {
    network.runStatistics->printTexts["log"] = "one\ntwo\n";
    channel.handle("GETTRACE log");
    channel.handle("gettrace log;");

    EXPECT_EQ(host.sent, "TRACE one|two|\nTRACE one|two|\n");
    EXPECT_EQ(host.logged.front(), "Sending TRACE response to Python for: log one\ntwo\n");
    EXPECT_EQ(host.logged.back(), "Flushed TRACE response to Python");
}

TEST_F(cChannelTest, traceNameKeepsItsBlanksAndLosesOneSemicolon) {
    network.runStatistics->printTexts["my  log;"] = "text";
    channel.handle("GETTRACE my  log;;");

    EXPECT_EQ(host.sent, "TRACE text\n");
}

TEST_F(cChannelTest, unknownTraceGivesNoReply) {
    channel.handle("GETTRACE none;");
    channel.handle("GETTRACE");

    EXPECT_EQ(host.sent, "");
    EXPECT_EQ(host.logged, (cTexts{"TRACE not found for: none", "TRACE not found for: "}));
}

TEST_F(cChannelTest, barInATraceCannotBeToldFromALineEnd) {
    network.runStatistics->printTexts["bar"] = "one|two\n";
    network.runStatistics->printTexts["lines"] = "one\ntwo\n";
    channel.handle("GETTRACE bar");
    channel.handle("GETTRACE lines");

    EXPECT_EQ(host.sent, "TRACE one|two|\nTRACE one|two|\n");
}

TEST_F(cChannelTest, closeIsAnsweredBeforeTheProgramEnds) {
    channel.handle("close;");

    EXPECT_EQ(host.sent, "CLOSED_TIMBERSIM\n");
    EXPECT_EQ(host.done, cTexts{"quit"});
    EXPECT_TRUE(channel.isClosed());
}

TEST_F(cChannelTest, nothingIsServedBehindClose) {
    EXPECT_EQ(doneFor({"CLOSE;", "CLOSE;", "RUNMODEL;", "SEED 1;"}), cTexts{"quit"});
    EXPECT_EQ(host.sent, "CLOSED_TIMBERSIM\n");
}

TEST_F(cChannelTest, anyOtherLineIsKeptForTheNextRun) {
    const std::string bytes("\0\xff", 2);

    EXPECT_EQ(doneFor({"SEED 5;", "", " LOAD a", "GETTRACES x", "LOADS x", "response_to_get 5", bytes}),
              (cTexts{"keep SEED 5;", "keep ", "keep  LOAD a", "keep GETTRACES x", "keep LOADS x",
                      "keep response_to_get 5", "keep " + bytes}));
}

TEST_F(cChannelTest, wordOfAnAnswerIsTestedBeforeAllOthersAndByItsBeginning) {
    EXPECT_EQ(doneFor({"RESPONSE_TO_GETRUNMODEL;", "RESPONSE_TO_GET", "RESPONSE_TO_GETS 4"}), cTexts{});
}

// ---- questions and messages of the model

TEST_F(cChannelTest, getAsksAndTakesTheAnswer) {
    EXPECT_EQ(askDuringRun({"RESPONSE_TO_GET 12.5"}), 12.5);
    EXPECT_EQ(host.sent, "GET key\nFINISHED_RUN\n");
}

TEST_F(cChannelTest, answerIsADecimalNumberWithAnExponentAtMost) {
    const std::vector<std::pair<std::string, double>> answers{
        {"5", 5.0},        {"-5", -5.0},    {"+5", 5.0},    {"5.", 5.0},     {".5", 0.5},      {"1e3", 1000.0},
        {"1E-3", 0.001},   {"5\r", 5.0},    {"\t5", 5.0},   {"1e-999", 0.0}, {"1e308", 1e308}, {"0x10", 0.0},
        {"0x1p4", 0.0},    {"inf", 0.0},    {"-inf", 0.0},  {"Inf", 0.0},    {"nan", 0.0},     {"NaN", 0.0},
        {"infinity", 0.0}, {"nan(1)", 0.0}, {"1e999", 0.0}, {"-1e999", 0.0}, {"1e", 0.0},      {"e5", 0.0},
        {"--5", 0.0},      {"5-", 0.0},     {"1.2.3", 0.0}, {".", 0.0},      {"\t", 0.0},      {"5\t5", 0.0},
    };
    for (const auto& [answer, value] : answers) EXPECT_EQ(askDuringRun({"RESPONSE_TO_GET " + answer}), value) << answer;
}

TEST_F(cChannelTest, answerIsTheSecondFieldAndNothingElse) {
    EXPECT_EQ(askDuringRun({"RESPONSE_TO_GET 7 8"}), 7.0);
    EXPECT_EQ(askDuringRun({"RESPONSE_TO_GETS 9"}), 9.0);
    EXPECT_EQ(askDuringRun({"RESPONSE_TO_GET 1e3"}), 1000.0);
}

TEST_F(cChannelTest, answerThatIsNoNumberIsZero) {
    for (const char* answer :
         {"RESPONSE_TO_GET", "RESPONSE_TO_GET ", "RESPONSE_TO_GET  5", "RESPONSE_TO_GET five", "RESPONSE_TO_GET 5,0"})
        EXPECT_EQ(askDuringRun({answer}), 0.0) << answer;
}

TEST_F(cChannelTest, answerWithASemicolonStuckToItIsZero) { EXPECT_EQ(askDuringRun({"RESPONSE_TO_GET 5;"}), 0.0); }

TEST_F(cChannelTest, answerThatNobodyAskedForChangesNothing) {
    channel.handle("RESPONSE_TO_GET 5");

    EXPECT_EQ(host.done, cTexts{});
    EXPECT_EQ(host.sent, "");
    EXPECT_EQ(askDuringRun({"RESPONSE_TO_GET 6"}), 6.0);  // and isn't taken for the next question's
}

TEST_F(cChannelTest, brokenOffQuestionIsNoLongerOpen) {
    host.whileRunning = [&] { EXPECT_EQ(failureOf([&] { channel.get("key"); }).code, failureCode::userStop); };
    channel.handle("RUNMODEL;");

    EXPECT_EQ(askDuringRun({"RESPONSE_TO_GET 3"}), 3.0);
}

TEST_F(cChannelTest, modelThatIsLoadedMayAsk) {
    double value = 0.0;
    host.coming = {"RESPONSE_TO_GET 4"};
    host.whileLoading = [&] { value = channel.get("rate"); };
    channel.handle("LOAD a");

    EXPECT_EQ(value, 4.0);
}

TEST_F(cChannelTest, nobodyIsAskedWhileNothingIsAtWork) {
    const cException failure = failureOf([&] { channel.get("rate"); });

    EXPECT_EQ(failure.code, failureCode::expression);
    EXPECT_EQ(failure.message, "No answer to GET(\"rate\"): the controller is asked during a run alone.");
    EXPECT_EQ(host.sent, "");
}

TEST_F(cChannelTest, oneQuestionIsOpenAtATime) {
    class cAskingHost : public cRecordingHost {
    public:
        void animate(bool) override {
            inner = failureOf([&] { channel->get("inner"); });
        }
        cException inner;
    } asking;
    cChannel asked{network, asking};
    asking.channel = &asked;
    asking.coming = {"SETANIMATE true;", "RESPONSE_TO_GET 1"};
    asking.whileRunning = [&] { EXPECT_EQ(asked.get("outer"), 1.0); };
    asked.handle("RUNMODEL;");

    EXPECT_EQ(asking.inner.code, failureCode::expression);
    EXPECT_EQ(asking.sent, "GET outer\nFINISHED_RUN\n");
}

TEST_F(cChannelTest, postedTextIsAMessage) {
    channel.post("half done ");

    EXPECT_EQ(host.sent, "MESSAGE half done \n");
}

TEST_F(cChannelTest, lineFeedInATextDoesNotEndTheReply) {
    channel.post("one\nFINISHED_RUN");

    EXPECT_EQ(host.sent, "MESSAGE one|FINISHED_RUN\n");
}

// ---- messages inside a run

TEST_F(cChannelTest, resultsAndTracesAreReadDuringARun) {
    network.run("PRINT log \"text\";");
    askDuringRun({"GETRESULTS;", "GETTRACE log", "SETANIMATE true;", "SEED 1;", "RESPONSE_TO_GET 1"});

    EXPECT_EQ(host.sent, "GET key\nRESULTS {\"SimTime\":0.0}\nTRACE text|\nFINISHED_RUN\n");
    EXPECT_EQ(host.done, (cTexts{"run", "animate", "keep SEED 1;"}));
}

TEST_F(cChannelTest, whatWouldChangeTheModelWaitsForTheEndOfTheRun) {
    network.simState = 1;
    host.coming = {"RESETMODEL;", "LOAD b", "RUNMODEL;", "RESPONSE_TO_GET 2"};
    host.whileRunning = [&] {
        host.whileRunning = nullptr;
        EXPECT_EQ(channel.get("key"), 2.0);
        EXPECT_EQ(network.simState, 1);
    };
    channel.handle("RUNMODEL;");

    EXPECT_EQ(host.done, (cTexts{"run", "load b", "run"}));
    EXPECT_EQ(host.sent, "GET key\nFINISHED_RUN\nFINISHED_RUN\n");
    EXPECT_EQ(network.simState, 0);
}

TEST_F(cChannelTest, whatComesBehindAHeldMessageKeepsItsOrder) {
    askDuringRun({"LOAD b", "SEED 1;", "GETRESULTS;", "SETANIMATE true;", "RESPONSE_TO_GET 2"});

    EXPECT_EQ(host.done, (cTexts{"run", "load b", "keep SEED 1;", "animate"}));
    EXPECT_EQ(host.sent, "GET key\nFINISHED_RUN\nRESULTS {}\n");
}

TEST_F(cChannelTest, closeDuringARunIsTheLastReply) {
    host.coming = {"RUNMODEL;", "CLOSE;"};
    host.whileRunning = [&] { failureOf([&] { channel.get("key"); }); };  // the host breaks off what is at work
    channel.handle("RUNMODEL;");
    channel.serveHeld();

    EXPECT_EQ(host.done, (cTexts{"run", "quit"}));
    EXPECT_EQ(host.sent, "GET key\nCLOSED_TIMBERSIM\n");
}

TEST_F(cChannelTest, runOfTheUserHoldsMessagesUntilItIsOver) {
    host.runOfAnother = true;
    EXPECT_EQ(doneFor({"LOAD b", "SEED 1;"}), cTexts{});
    channel.serveHeld();
    EXPECT_EQ(host.done, cTexts{});

    host.runOfAnother = false;
    channel.serveHeld();

    EXPECT_EQ(host.done, (cTexts{"load b", "keep SEED 1;"}));
}

TEST_F(cChannelTest, runOfTheUserMayAsk) {
    host.runOfAnother = true;
    host.coming = {"RESPONSE_TO_GET 8"};

    EXPECT_EQ(channel.get("key"), 8.0);
}
