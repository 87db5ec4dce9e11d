#include "channel/resultJson.h"

#include "support/testNetwork.h"

#include <gtest/gtest.h>

namespace {

/// One truck that waits in a queue, and nobody to load it.
class cResultJsonTest : public ::testing::Test {
protected:
    cResultJsonTest() {
        queue.setResType(&network.addGenericType("Truck"));
        queue.setInitialContentText("1");
    }

    cTestNetwork network;
    cNodeQueue& queue = network.addQueue("Q", network.addGenericType("Soil"));
};

}  // namespace

TEST_F(cResultJsonTest, withoutAReplicationTheObjectIsEmpty) { EXPECT_EQ(buildResultsJson(network), "{}"); }

TEST_F(cResultJsonTest, keysAreSortedAndTheTextIsOneLine) {
    network.run("ADDTORESULTS Zero 0; \nADDTORESULTS Half 1/2;\n");

    EXPECT_EQ(buildResultsJson(network),
              "{\"Half\":0.5,\"Q.AveCont\":null,\"Q.AveWait\":0.0,\"Q.CurCount\":1.0,\"Q.MaxCont\":1.0,"
              "\"Q.MinCont\":0.0,\"Q.TotCount\":1.0,\"SimTime\":0.0,\"Zero\":0.0}");
}

TEST_F(cResultJsonTest, whatIsNoFiniteNumberIsNull) {
    network.run("ADDTORESULTS Above 10^400;\nADDTORESULTS Below 0-10^400;\nADDTORESULTS Unknown Q.AveCont;\n");

    EXPECT_TRUE(buildResultsJson(network).starts_with("{\"Above\":null,\"Below\":null,\"Q.AveCont\":null,"))
        << buildResultsJson(network);
    EXPECT_NE(buildResultsJson(network).find("\"Unknown\":null"), std::string::npos);
}

TEST_F(cResultJsonTest, countsHaveNoDecimalPoint) {
    cNodeActCombi& combi = network.addCombi("Load");
    network.addLink("L", queue, combi);
    network.run();

    EXPECT_NE(buildResultsJson(network).find("\"Load.CurInst\":0,"), std::string::npos);
}

TEST_F(cResultJsonTest, modelThatHasChangedSinceTheRunKeepsEachFigureWithItsElement) {
    network.addQueue("P", *queue.getResType());
    network.addQueue("R", *queue.getResType());
    network.run();
    network.elements.erase("P");
    network.addQueue("A", *queue.getResType());
    network.addQueue("Z", *queue.getResType());
    const std::string results = buildResultsJson(network);

    EXPECT_EQ(results.find("\"P."), std::string::npos);
    EXPECT_EQ(results.find("\"A."), std::string::npos);
    EXPECT_EQ(results.find("\"Z."), std::string::npos);
    EXPECT_NE(results.find("\"Q.CurCount\":1.0,"), std::string::npos);
    EXPECT_NE(results.find("\"R.CurCount\":0.0,"), std::string::npos);
}

TEST_F(cResultJsonTest, labelInAnotherEncodingDoesNotKeepTheFiguresBack) {
    network.run("ADDTORESULTS K\xfchn 2;\n");

    EXPECT_NE(buildResultsJson(network).find("\"K\xef\xbf\xbdhn\":2.0"), std::string::npos);
}
