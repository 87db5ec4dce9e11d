// What a compiled expression keeps of the meaning of its names, and when it looks them up again.

#include "language/rounding.h"
#include "support/failureOf.h"
#include "support/watchedNetwork.h"

#include <gtest/gtest.h>

namespace {

/// A queue of soil and a Combi behind it, and an expression that has been evaluated once before something changes.
class cMeaningTest : public ::testing::Test {
protected:
    cExpression evaluated(const std::string& text, const std::string& owner = {}) {
        cExpression expression(*network.symbols, text, cExpression::eTrial::skip);
        expression.evaluate(owner);
        return expression;
    }

    cWatchedNetwork network;
    cResTypeGen& soil = network.addGenericType("Soil");
    cNodeQueue& pit = network.addQueue("Pit", soil);
    cNodeActCombi& dig = network.addCombi("Dig");
    cLink& fromPit = network.addLink("FromPit", pit, dig);
};

TEST_F(cMeaningTest, aFigureIsReadAnewEachTime) {
    const cExpression content = evaluated("Pit.CurCount+0");

    pit.receive(*makeCounted<cResGen>(&soil, 3.0));

    EXPECT_EQ(content.evaluate(), 3.0);
}

TEST_F(cMeaningTest, aNameThatIsDeclaredLaterIsSeen) {
    const cExpression level = evaluated("level+1");

    network.execute("SAVEVALUE level 4");

    EXPECT_EQ(level.evaluate(), 5.0);
}

TEST_F(cMeaningTest, aValueThatIsAssignedIsSeenWithoutALookUp) {
    network.execute("SAVEVALUE level 4");
    const cExpression level = evaluated("level+1");
    const std::uint64_t version = network.symbols->namesVersion;

    network.execute("ASSIGN level 6");

    EXPECT_EQ(level.evaluate(), 7.0);
    EXPECT_EQ(network.symbols->namesVersion, version);
}

TEST_F(cMeaningTest, aVariableThatIsReplacedIsSeen) {
    network.execute("VARIABLE pace 2");
    const cExpression pace = evaluated("pace*10");

    network.execute("VARIABLE pace 3");

    EXPECT_EQ(pace.evaluate(), 30.0);
}

TEST_F(cMeaningTest, forgottenNamesMeanNothingAgain) {
    network.execute("SAVEVALUE level 4");
    network.execute("VARIABLE pace 2");
    const cExpression sum = evaluated("level+pace");

    network.clearNetwork();

    EXPECT_EQ(sum.evaluate(), 0.0);
}

TEST_F(cMeaningTest, aDeclaredNameHidesTheClock) {
    network.simTime = 9.0;
    const cExpression time = evaluated("SimTime+0");

    network.execute("SAVEVALUE SimTime 2");

    EXPECT_EQ(time.evaluate(), 2.0);
}

TEST_F(cMeaningTest, anElementThatIsMadeLaterIsSeen) {
    const cExpression content = evaluated("Pile.TotCount+0");

    network.addQueue("Pile", soil).receive(*makeCounted<cResGen>(&soil, 3.0));

    EXPECT_EQ(content.evaluate(), 3.0);
}

TEST_F(cMeaningTest, anElementThatIsGoneMeansNothing) {
    pit.receive(*makeCounted<cResGen>(&soil, 3.0));
    const cExpression content = evaluated("Pit.CurCount+0");

    network.elements.erase("Pit");

    EXPECT_EQ(content.evaluate(), 0.0);
}

TEST_F(cMeaningTest, anElementThatIsRenamedIsFoundUnderItsNewNameAlone) {
    pit.receive(*makeCounted<cResGen>(&soil, 3.0));
    const cExpression before = evaluated("Pit.CurCount+0");
    const cExpression after = evaluated("Quarry.CurCount+0");

    pit.setName("Quarry");

    EXPECT_EQ(before.evaluate(), 0.0);
    EXPECT_EQ(after.evaluate(), 3.0);
}

TEST_F(cMeaningTest, anotherPredecessorOfALinkIsSeen) {
    const cExpression content = evaluated("PredNode.CurCount+0", "FromPit");
    cNodeQueue& pile = network.addQueue("Pile", soil);
    pile.receive(*makeCounted<cResGen>(&soil, 3.0));
    EXPECT_EQ(content.evaluate("FromPit"), 0.0);

    fromPit.setPredNode(&pile);

    EXPECT_EQ(content.evaluate("FromPit"), 3.0);
}

TEST_F(cMeaningTest, eachOwnerHasItsOwnPredecessor) {
    cNodeQueue& pile = network.addQueue("Pile", soil);
    pile.receive(*makeCounted<cResGen>(&soil, 3.0));
    network.addLink("FromPile", pile, dig);
    const cExpression content = evaluated("PredNode.CurCount+0", "FromPit");

    EXPECT_EQ(content.evaluate("FromPile"), 3.0);
    EXPECT_EQ(content.evaluate("FromPit"), 0.0);
    EXPECT_EQ(content.evaluate(), 0.0);
}

TEST_F(cMeaningTest, aTypeThatComesLaterIsSeenInWhatAPredecessorHolds) {
    cNodeQueue& pile = network.addQueue("Pile", soil);
    network.addLink("ToPile", dig, pile);
    const cExpression count = evaluated("PredNode.Rock.Count+0", "ToPile");

    dig.addHolding(*makeCounted<cResGen>(&network.addGenericType("Rock"), 3.0));

    EXPECT_EQ(count.evaluate("ToPile"), 3.0);
}

TEST_F(cMeaningTest, anUnknownKeywordOfAPredecessorFailsEachTime) {
    const cExpression weight(*network.symbols, "PredNode.Weight+0", cExpression::eTrial::skip);

    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(failureOf([&] { weight.evaluate("FromPit"); }).message, "Invalid keyword Weight");
}

TEST_F(cMeaningTest, anOwnerThatDoesNotExistIsLeftInTheRegistryAsAnEmptyEntry) {
    evaluated("nDraws+0", "Nobody");

    EXPECT_TRUE(network.elements.contains("Nobody"));
    EXPECT_EQ(network.findElement("Nobody"), nullptr);
}

// ---- what needs no evaluation

struct cConstantCase {
    const char* text;
    bool isConstant;
};

class cConstantTest : public ::testing::TestWithParam<cConstantCase> {};

TEST_P(cConstantTest, isWhatOnlyNumbersMake) {
    const cTestNetwork network;
    const cExpression expression(*network.symbols, GetParam().text, cExpression::eTrial::skip);

    EXPECT_EQ(expression.constant().has_value(), GetParam().isConstant);
}

INSTANTIATE_TEST_SUITE_P(texts, cConstantTest,
                         ::testing::Values(cConstantCase{"1", true}, cConstantCase{"0.5", true},
                                           cConstantCase{"1+2*3", true}, cConstantCase{"(0-5)^2", true},
                                           cConstantCase{"", false}, cConstantCase{"1/0", false},
                                           cConstantCase{"1 2", false}, cConstantCase{"(1", false},
                                           cConstantCase{"SimTime", false}, cConstantCase{"TimeIn", false},
                                           cConstantCase{"Rnd()", false}, cConstantCase{"Rnd()*0", false},
                                           cConstantCase{"GET(\"x\")", false}, cConstantCase{"1+", false}));

// ---- what does nothing but read

struct cQuietCase {
    const char* text;
    bool isQuiet;
};

class cQuietTest : public cMeaningTest, public ::testing::WithParamInterface<cQuietCase> {};

TEST_P(cQuietTest, isWhatOnlyReadsFiguresAndCombinesThem) {
    network.execute("SAVEVALUE level 4");
    network.execute("VARIABLE pace 2");
    const cExpression expression = evaluated(GetParam().text, "FromPit");

    EXPECT_EQ(expression.isQuiet("FromPit"), GetParam().isQuiet);
}

INSTANTIATE_TEST_SUITE_P(texts, cQuietTest,
                         ::testing::Values(cQuietCase{"1", true}, cQuietCase{"SimTime+1", true},
                                           cQuietCase{"level", true}, cQuietCase{"PredNode.CurCount<3", true},
                                           cQuietCase{"nDraws", true}, cQuietCase{"Pit.AveWait", true},
                                           cQuietCase{"Nothing", true}, cQuietCase{"pace", false},
                                           cQuietCase{"level+pace", false}, cQuietCase{"Rnd()", false},
                                           cQuietCase{"0*Rnd()", false}, cQuietCase{"GET(\"Rock\")", false},
                                           cQuietCase{"PredNode.MaxCont", false}, cQuietCase{"Dig.Soil.Count", false}));

TEST_F(cMeaningTest, nothingIsKnownOfNamesBeforeTheyWereLookedUp) {
    cExpression time(*network.symbols, "SimTime+1", cExpression::eTrial::skip);
    EXPECT_FALSE(time.isQuiet());

    time.evaluate();

    EXPECT_TRUE(time.isQuiet());
    network.symbols->namesChanged();
    EXPECT_FALSE(time.isQuiet());
}

TEST_F(cMeaningTest, whatIsKnownForOneOwnerIsNotKnownForAnother) {
    const cExpression count = evaluated("nDraws+1", "FromPit");

    EXPECT_FALSE(count.isQuiet("Other"));
}

TEST(constantTest, isRoundedStepByStep) {
    const cTestNetwork network;

    EXPECT_EQ(cExpression(*network.symbols, "1/3*3").constant(), 0.999999);
}

TEST_F(cMeaningTest, whatIsQuietForAllOwnersStaysSoOnlyUntilANameChanges) {
    network.execute("SAVEVALUE level 4");
    const cExpression sum = evaluated("level+1");
    EXPECT_TRUE(sum.isQuiet());
    EXPECT_TRUE(sum.isQuiet("FromPit"));

    network.symbols->forgetNames();
    EXPECT_FALSE(sum.isQuiet());
    network.execute("VARIABLE level Rnd()");
    sum.evaluate();

    EXPECT_FALSE(sum.isQuiet());
}

// ---- what nobody but the random numbers can notice

class cSelfContainedTest : public cMeaningTest, public ::testing::WithParamInterface<cQuietCase> {};

TEST_P(cSelfContainedTest, isWhatReachesNeitherTheHostNorAVariable) {
    network.execute("SAVEVALUE level 4");
    network.execute("VARIABLE pace 2");
    const cExpression expression = evaluated(GetParam().text, "FromPit");

    EXPECT_EQ(expression.isSelfContained("FromPit"), GetParam().isQuiet);
}

INSTANTIATE_TEST_SUITE_P(texts, cSelfContainedTest,
                         ::testing::Values(cQuietCase{"1", true}, cQuietCase{"level", true}, cQuietCase{"Rnd()", true},
                                           cQuietCase{"Rnd()*level", true}, cQuietCase{"Normal(9,level)", true},
                                           cQuietCase{"sUniform(0,nDraws,1)", true}, cQuietCase{"pace", false},
                                           cQuietCase{"Rnd()+pace", false}, cQuietCase{"Gamma(2.5,1)", false},
                                           cQuietCase{"Pert(1,2,3)", false}, cQuietCase{"sPert(1,2,3,1)", false},
                                           cQuietCase{"GET(\"Rock\")", false},
                                           cQuietCase{"PredNode.MaxCont+Rnd()", false}));

// ---- a draw and nothing else

class cUniformDrawTest : public cMeaningTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(cUniformDrawTest, isARoundedNumberOfStreamZero) {
    const cExpression draw(*network.symbols, GetParam(), cExpression::eTrial::skip);
    cRandomGenerator twin = network.symbols->randomStreams().first();

    for (int i = 0; i < 100; ++i) EXPECT_EQ(draw.evaluate(), roundThroughText(twin.uniform()));

    EXPECT_EQ(network.symbols->randomStreams().first().getState(), twin.getState());
}

INSTANTIATE_TEST_SUITE_P(texts, cUniformDrawTest,
                         ::testing::Values("Rnd()", "Rnd", "(Rnd())", "[Rnd()]", "sRnd(0)", "Rnd()+0", "0+Rnd()*1"));

// ---- formulas that change while they run

TEST_F(cMeaningTest, aFormulaThatTheHostReplacesIsFinishedFirst) {
    network.execute("SAVEVALUE level 1000");
    network.execute("VARIABLE ask GET(\"x\")");
    cExpression sum(*network.symbols, "ask*100+ask*10+level", cExpression::eTrial::skip);
    int asked = 0;
    network.onGet = [&](const std::string&) {
        sum.compile(std::to_string(++asked) + "+ask", cExpression::eTrial::skip, {});
        return 1.0 * asked;
    };

    EXPECT_EQ(sum.evaluate(), 100.0 + 20.0 + 1000.0);
    EXPECT_EQ(sum.getText(), "2+ask");
}

TEST_F(cMeaningTest, aFormulaThatReplacesItselfInItsOwnVariableIsFinishedFirst) {
    network.execute("VARIABLE ask GET(\"x\")");
    cExpression& end = network.endCondition;
    end.compile("1000+ask", cExpression::eTrial::skip, {});
    int depth = 0;
    network.onGet = [&](const std::string&) {
        if (++depth > 3) return 1.0;
        end.compile("1000+ask", cExpression::eTrial::skip, {});
        return end.evaluate();
    };

    EXPECT_EQ(end.evaluate(), 4.0 * 1000.0 + 1.0);
}

}  // namespace
