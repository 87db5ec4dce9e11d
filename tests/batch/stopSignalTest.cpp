// The signal ends or marks the whole process, so each test has one of its own.

#include "batch/stopSignal.h"

#include "language/exception.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

TEST(stopSignalDeathTest, firstInterruptOnlyRaisesTheFlag) {
    const auto interruptOnce = [] {
        installStopSignal();
        const bool before = isStopRaised();
        std::raise(SIGINT);
        std::exit(!before && isStopRaised() ? EXIT_SUCCESS : EXIT_FAILURE);
    };

    EXPECT_EXIT(interruptOnce(), ::testing::ExitedWithCode(EXIT_SUCCESS), "");
}

TEST(stopSignalDeathTest, secondInterruptEndsTheProcess) {
    const auto interruptTwice = [] {
        installStopSignal();
        std::raise(SIGINT);
        std::raise(SIGINT);
    };

    EXPECT_EXIT(interruptTwice(), ::testing::KilledBySignal(SIGINT), "");
}

TEST(stopSignalDeathTest, raisedFlagIsTheUsersStop) {
    const auto stop = [] {
        installStopSignal();
        std::raise(SIGINT);
        try {
            throwIfStopped();
        } catch (const cException& failure) {
            std::fprintf(stderr, "%d %s", failure.code, failure.message.c_str());
            std::exit(EXIT_SUCCESS);
        }
    };

    EXPECT_EXIT(stop(), ::testing::ExitedWithCode(EXIT_SUCCESS),
                "^5 Simulation stopped.\nSimulation was stopped by user.\n$");
}

TEST(stopSignalDeathTest, interruptEndsAWaitForInput) {
    const auto waitInVain = [] {
        installStopSignal();
        std::array<int, 2> silent{};
        if (pipe(silent.data()) != 0) std::exit(EXIT_FAILURE);
        const std::jthread interrupting([waiting = pthread_self()] { pthread_kill(waiting, SIGINT); });
        try {
            awaitInput(silent[0]);
        } catch (const cException& failure) {
            std::_Exit(failure.code == failureCode::userStop ? EXIT_SUCCESS : EXIT_FAILURE);
        }
    };

    EXPECT_EXIT(waitInVain(), ::testing::ExitedWithCode(EXIT_SUCCESS), "");
}

TEST(stopSignalTest, inputEndsAWait) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    close(ends[1]);

    EXPECT_NO_THROW(awaitInput(ends[0]));
    close(ends[0]);
}

TEST(stopSignalTest, withoutAnInterruptNothingIsThrown) {
    EXPECT_NO_THROW(throwIfStopped());
    EXPECT_FALSE(isStopRaised());
}
