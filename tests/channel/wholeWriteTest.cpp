#include "channel/wholeWrite.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

/// A pipe whose ends can be closed one by one.
class cWholeWriteTest : public ::testing::Test {
protected:
    cWholeWriteTest() {
        std::signal(SIGPIPE, SIG_IGN);
        if (pipe(ends.data()) != 0) ADD_FAILURE() << "no pipe";
    }
    ~cWholeWriteTest() override {
        closeReader();
        close(ends[1]);
    }

    int writer() const { return ends[1]; }
    void closeReader() {
        if (ends[0] != -1) close(ends[0]);
        ends[0] = -1;
    }
    /// Whether a text is written whole while it is read; what is read stands in `got`.
    bool isWrittenWhole(const std::string& text, std::string& got) const {
        bool isWritten = false;
        std::thread writing([&] { isWritten = writeWhole(writer(), text); });
        got = read(text.size());
        writing.join();
        return isWritten;
    }
    /// What comes out of the pipe, until `count` bytes have.
    std::string read(std::size_t count) const {
        std::string text;
        std::array<char, 4096> piece{};
        while (text.size() < count) {
            const ssize_t got = ::read(ends[0], piece.data(), piece.size());
            if (got <= 0) break;
            text.append(piece.data(), static_cast<std::size_t>(got));
        }
        return text;
    }

private:
    std::array<int, 2> ends{-1, -1};
};

}  // namespace

TEST_F(cWholeWriteTest, moreThanAPipeHoldsIsWrittenWhole) {
    const std::string text(1'000'000, 'x');
    std::string got;

    EXPECT_TRUE(isWrittenWhole(text, got));
    EXPECT_EQ(got, text);
}

TEST_F(cWholeWriteTest, fileThatDoesNotWaitIsWaitedFor) {
    EXPECT_EQ(fcntl(writer(), F_SETFL, O_NONBLOCK), 0);
    const std::string text(1'000'000, 'x');
    std::string got;

    EXPECT_TRUE(isWrittenWhole(text, got));
    EXPECT_EQ(got, text);
}

TEST_F(cWholeWriteTest, fileThatDoesNotWaitIsLeftWhenItsReaderGoes) {
    EXPECT_EQ(fcntl(writer(), F_SETFL, O_NONBLOCK), 0);
    bool isWritten = true;
    std::thread writing([&] { isWritten = writeWhole(writer(), std::string(1'000'000, 'x')); });
    EXPECT_EQ(read(4096).front(), 'x');
    closeReader();
    writing.join();

    EXPECT_FALSE(isWritten);
}

TEST_F(cWholeWriteTest, withoutAReaderNothingIsWritten) {
    EXPECT_FALSE(isReaderGone(writer()));
    closeReader();

    EXPECT_TRUE(isReaderGone(writer()));
    EXPECT_FALSE(writeWhole(writer(), "lost"));
}
