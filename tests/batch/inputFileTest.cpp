#include "batch/inputFile.h"

#include "batch/fileError.h"
#include "batch/stopSignal.h"
#include "language/exception.h"
#include "support/scratchFolder.h"

#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

class cInputFileTest : public ::testing::Test {
protected:
    static std::string trouble(const std::string& path, std::string (*read)(const std::string&) = readFile) {
        try {
            read(path);
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

TEST_F(cInputFileTest, plainFileIsReadAsAnyOther) {
    folder.write("model", "text");

    EXPECT_EQ(readPlainFile(folder / "model"), "text");
    EXPECT_EQ(trouble(folder / "none", readPlainFile), trouble(folder / "none"));
}

TEST_F(cInputFileTest, whatIsNoPlainFileIsNotReadAsOne) {
    const std::string pipe = folder / "pipe";
    EXPECT_EQ(mkfifo(pipe.c_str(), 0600), 0);

    for (const std::string& path : {pipe, std::string("/dev/zero"), std::string(folder / "")})
        EXPECT_EQ(trouble(path, readPlainFile), "can't read " + path + ": It is not a plain file.");
}

TEST_F(cInputFileTest, nameIsNotReadAsFarAsAZeroByteAlone) {
    folder.write("model", "text");

    EXPECT_EQ(trouble(std::string(folder / "model") + '\0' + 'x', readPlainFile),
              "can't read the model: There is a zero byte in its name.");
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
