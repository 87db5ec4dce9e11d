#include "batch/temporaryFolder.h"

#include "batch/fileError.h"
#include "support/scratchFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

/// The directory for temporary files is one of the test's own.
class cTemporaryFolderTest : public ::testing::Test {
protected:
    cTemporaryFolderTest() {
        if (const char* set = std::getenv("TMPDIR")) before = set;
        setenv("TMPDIR", directory.string().c_str(), 1);
    }
    ~cTemporaryFolderTest() override {
        if (before.empty())
            unsetenv("TMPDIR");
        else
            setenv("TMPDIR", before.c_str(), 1);
    }

    cScratchFolder scratch;
    const std::filesystem::path directory = scratch / "";
    std::string before;
};

}  // namespace

TEST_F(cTemporaryFolderTest, isForItsUserAlone) {
    const cTemporaryFolder folder;

    EXPECT_EQ(folder.getPath().parent_path(), directory.parent_path());
    EXPECT_EQ(std::filesystem::status(folder.getPath()).permissions(), std::filesystem::perms::owner_all);
}

TEST_F(cTemporaryFolderTest, twoAreNotTheSame) {
    const cTemporaryFolder one;
    const cTemporaryFolder other;

    EXPECT_NE(one.getPath(), other.getPath());
}

TEST_F(cTemporaryFolderTest, isGoneAtTheEndWithAllThatIsInIt) {
    {
        const cTemporaryFolder folder;
        std::ofstream(folder.getPath() / "lines") << "1,2,";
    }

    EXPECT_TRUE(scratch.names().empty());
}

TEST_F(cTemporaryFolderTest, missingDirectoryIsTold) {
    setenv("TMPDIR", (scratch / "nowhere").c_str(), 1);
    try {
        const cTemporaryFolder folder;
        FAIL() << "no cFileError was thrown";
    } catch (const cFileError& error) {
        EXPECT_TRUE(error.message.starts_with("can't use the folder for temporary files: ")) << error.message;
    }
}
