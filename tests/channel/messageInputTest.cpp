#include "channel/messageInput.h"

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

class cMessageInputTest : public ::testing::Test {
protected:
    cMessageInputTest() {
        if (pipe(ends.data()) != 0) ADD_FAILURE() << "no pipe";
    }
    ~cMessageInputTest() override {
        close(ends[0]);
        closeWriter();
    }

    int reader() const { return ends[0]; }
    void write(const std::string& text) const {
        EXPECT_EQ(::write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void closeWriter() {
        if (ends[1] != -1) close(ends[1]);
        ends[1] = -1;
    }

private:
    std::array<int, 2> ends{-1, -1};
};

}  // namespace

TEST_F(cMessageInputTest, messagesComeAsLines) {
    cMessageInput input(reader());
    write("RUNMODEL;\nGETRESULTS;\n");

    EXPECT_TRUE(input.receive());
    EXPECT_EQ(input.next(), "RUNMODEL;");
    EXPECT_EQ(input.next(), "GETRESULTS;");
    EXPECT_EQ(input.next(), std::nullopt);
}

TEST_F(cMessageInputTest, lastMessageNeedsNoLineFeed) {
    cMessageInput input(reader());
    write("CLOSE;");
    closeWriter();

    EXPECT_TRUE(input.receive());
    EXPECT_FALSE(input.receive());
    EXPECT_EQ(input.next(), std::nullopt);
    EXPECT_EQ(input.rest(), "CLOSE;");
}

TEST_F(cMessageInputTest, fileThatDoesNotWaitIsNeitherWaitedForNorAtItsEnd) {
    EXPECT_EQ(fcntl(reader(), F_SETFL, O_NONBLOCK), 0);
    cMessageInput input(reader());

    EXPECT_TRUE(input.receive());
    EXPECT_EQ(input.next(), std::nullopt);
    write("late\n");
    EXPECT_TRUE(input.receive());
    EXPECT_EQ(input.next(), "late");
    closeWriter();
    EXPECT_FALSE(input.receive());
}

TEST(messageInputTest, closedFileIsAtItsEnd) {
    cMessageInput input(-1);

    EXPECT_FALSE(input.receive());
}
