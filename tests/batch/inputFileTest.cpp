#include "batch/inputFile.h"

#include "batch/fileError.h"
#include "batch/stopSignal.h"
#include "language/exception.h"
#include "support/scratchFolder.h"

#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {

class cInputFileTest : public ::testing::Test {
protected:
    static std::string trouble(const std::string& path) {
        try {
            readFile(path);
        } catch (const cFileError& error) {
            return error.message;
        }
        ADD_FAILURE() << "no cFileError was thrown";
        return {};
    }

    cScratchFolder folder;
};

}  // namespace

TEST_F(cInputFileTest, everyByteIsRead) {
    const std::string bytes = std::string("a\r\n\0\xff", 5) + std::string(200000, 'x');
    folder.write("model", bytes);

    EXPECT_EQ(readFile(folder / "model"), bytes);
}

TEST_F(cInputFileTest, missingFileIsTold) {
    const std::string path = folder / "model";

    EXPECT_EQ(trouble(path), "can't read " + path + ": No such file or directory");
}

TEST_F(cInputFileTest, folderCanNotBeRead) {
    const std::string path = folder / "";

    EXPECT_EQ(trouble(path), "can't read " + path + ": Is a directory");
}

TEST(inputFileDeathTest, stopThatCameMeanwhileIsRaised) {
    const auto readAfterInterrupt = [] {
        installStopSignal();
        std::raise(SIGINT);
        try {
            readFile("/dev/null");
        } catch (const cException& stop) {
            std::exit(stop.code);
        }
        std::exit(EXIT_SUCCESS);
    };

    EXPECT_EXIT(readAfterInterrupt(), ::testing::ExitedWithCode(failureCode::userStop), "");
}
