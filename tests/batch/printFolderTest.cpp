#include "batch/printFolder.h"

#include "batch/fileError.h"
#include "support/scratchFolder.h"

#include <gtest/gtest.h>

namespace {

struct cNameCase {
    const char* key;
    const char* fileName;
};

void PrintTo(const cNameCase& row, std::ostream* stream) { *stream << row.key; }

class cPrintFileNameTest : public ::testing::TestWithParam<cNameCase> {};

class cPrintFolderTest : public ::testing::Test {
protected:
    cScratchFolder scratch;
};

}  // namespace

TEST_P(cPrintFileNameTest, staysInTheFolderAndInSight) {
    EXPECT_EQ(printFileName(GetParam().key), GetParam().fileName);
}

INSTANTIATE_TEST_SUITE_P(keys, cPrintFileNameTest,
                         ::testing::Values(cNameCase{"log", "log.txt"}, cNameCase{"Day_2-b.1", "Day_2-b.1.txt"},
                                           cNameCase{".hidden", "%2Ehidden.txt"}, cNameCase{"..", "%2E..txt"},
                                           cNameCase{"../../etc/x", "%2E.%2F..%2Fetc%2Fx.txt"},
                                           cNameCase{"50%", "50%25.txt"}, cNameCase{"%2E", "%252E.txt"},
                                           cNameCase{"a\"b", "a%22b.txt"}, cNameCase{"ö", "%C3%B6.txt"}));

TEST_F(cPrintFolderTest, eachTextHasAFileOfItsOwn) {
    const std::string path = scratch / "prints";
    cPrintFolder folder(path);

    folder.write({{"log", "one\ntwo\n"}, {"a/b", "three\n"}});

    EXPECT_EQ(scratch.read("prints/log.txt"), "one\ntwo\n");
    EXPECT_EQ(scratch.read("prints/a%2Fb.txt"), "three\n");
}

TEST_F(cPrintFolderTest, folderIsMadeWithThoseAboveItAndStays) {
    {
        cPrintFolder folder(scratch / "deep/down/");
        folder.write({});
    }

    EXPECT_TRUE(std::filesystem::is_directory(scratch / "deep/down"));
}

TEST_F(cPrintFolderTest, madeFoldersGoAgainWhenNothingIsWritten) {
    { const cPrintFolder folder(scratch / "deep/down"); }

    EXPECT_TRUE(scratch.names().empty());
}

TEST_F(cPrintFolderTest, folderThatWasThereStaysWithAllThatIsInIt) {
    std::filesystem::create_directory(scratch / "prints");
    scratch.write("prints/notes", "mine");
    { const cPrintFolder folder(scratch / "prints"); }

    EXPECT_EQ(scratch.read("prints/notes"), "mine");
}

TEST_F(cPrintFolderTest, fileInTheWayIsToldAndNothingIsLeft) {
    scratch.write("taken", "mine");
    const std::string path = scratch / "taken";
    try {
        const cPrintFolder folder(path);
        FAIL() << "no cFileError was thrown";
    } catch (const cFileError& error) {
        EXPECT_EQ(error.message, "can't write to folder " + path + ": Not a directory");
    }
    EXPECT_EQ(scratch.read("taken"), "mine");
}

TEST_F(cPrintFolderTest, levelThatCanNotBeMadeTakesBackThoseAboveIt) {
    const std::string path = scratch / ("new/" + std::string(300, 'x'));
    try {
        const cPrintFolder folder(path);
        FAIL() << "no cFileError was thrown";
    } catch (const cFileError& error) {
        EXPECT_EQ(error.message, "can't write to folder " + path + ": File name too long");
    }
    EXPECT_TRUE(scratch.names().empty());
}

TEST_F(cPrintFolderTest, keyTooLongForAFileIsTold) {
    cPrintFolder folder(scratch / "prints");
    try {
        folder.write({{std::string(300, 'k'), "text"}});
        FAIL() << "no cFileError was thrown";
    } catch (const cFileError& error) {
        EXPECT_TRUE(error.message.ends_with(".txt: File name too long")) << error.message;
    }
}
