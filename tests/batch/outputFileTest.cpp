#include "batch/outputFile.h"

#include "batch/fileError.h"
#include "support/scratchFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>

namespace {

using std::filesystem::perms;

/// A folder that holds an older result.
class cOutputFileTest : public ::testing::Test {
protected:
    cOutputFileTest() { folder.write("old.txt", "old"); }

    static perms permissionsOf(const std::filesystem::path& path) {
        return std::filesystem::status(path).permissions();
    }

    cScratchFolder folder;
};

/// The message of the cFileError that `action` throws. Fails the test if it throws none.
template <typename cAction>
std::string trouble(cAction action) {
    try {
        action();
    } catch (const cFileError& error) {
        return error.message;
    }
    ADD_FAILURE() << "no cFileError was thrown";
    return {};
}

void writeTo(const std::string& path, const std::string& text) {
    cOutputFile file(path);
    file.write(text);
    file.commit();
}

}  // namespace

TEST_F(cOutputFileTest, newFileIsThereOnceCommitted) {
    cOutputFile file(folder / "new.txt");
    file.write("one ");
    file.write("two\n");
    const bool isThereBefore = std::filesystem::exists(folder / "new.txt");

    file.commit();

    EXPECT_FALSE(isThereBefore);
    EXPECT_EQ(folder.read("new.txt"), "one two\n");
    EXPECT_EQ(folder.names(), (std::set<std::string>{"new.txt", "old.txt"}));
}

TEST_F(cOutputFileTest, oldFileIsKeptUntilTheNewOneIsCommitted) {
    cOutputFile file(folder / "old.txt");
    file.write("new");
    const std::string before = folder.read("old.txt");

    file.commit();

    EXPECT_EQ(before, "old");
    EXPECT_EQ(folder.read("old.txt"), "new");
}

TEST_F(cOutputFileTest, withoutCommitEverythingStaysAsItWas) {
    {
        cOutputFile replacing(folder / "old.txt");
        replacing.write("new");
        const cOutputFile making(folder / "new.txt");
    }

    EXPECT_EQ(folder.read("old.txt"), "old");
    EXPECT_EQ(folder.names(), std::set<std::string>{"old.txt"});
}

TEST_F(cOutputFileTest, severalFilesOfAFolderCanBeOpenAtOnce) {
    cOutputFile one(folder / "one.txt");
    cOutputFile two(folder / "two.txt");
    one.write("1");
    two.write("2");
    one.commit();
    two.commit();

    EXPECT_EQ(folder.read("one.txt"), "1");
    EXPECT_EQ(folder.read("two.txt"), "2");
}

TEST_F(cOutputFileTest, nameOfALeftoverPartIsPassedOver) {
    std::string taken;
    {
        const cOutputFile first(folder / "new.txt");
        for (const std::string& name : folder.names())
            if (name.ends_with(".part")) taken = name;
    }
    const std::size_t numberAt = taken.rfind('-') + 1;
    const int next = std::stoi(taken.substr(numberAt)) + 1;
    const std::string leftover = taken.substr(0, numberAt) + std::to_string(next) + ".part";
    folder.write(leftover, "left over");

    writeTo(folder / "new.txt", "new");

    EXPECT_EQ(folder.read("new.txt"), "new");
    EXPECT_EQ(folder.read(leftover), "left over");
}

TEST_F(cOutputFileTest, replacedFileKeepsItsPermissions) {
    const perms before = perms::owner_read | perms::owner_write | perms::group_read;
    std::filesystem::permissions(folder / "old.txt", before);

    writeTo(folder / "old.txt", "new");

    EXPECT_EQ(permissionsOf(folder / "old.txt"), before);
}

TEST_F(cOutputFileTest, newFileHasThePermissionsOfAnyOther) {
    writeTo(folder / "new.txt", "new");

    EXPECT_EQ(permissionsOf(folder / "new.txt"), permissionsOf(folder / "old.txt"));
}

TEST_F(cOutputFileTest, linkStaysALinkAndItsFileIsReplaced) {
    std::filesystem::create_symlink("old.txt", folder / "link.txt");

    writeTo(folder / "link.txt", "new");

    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.txt"));
    EXPECT_EQ(folder.read("old.txt"), "new");
}

TEST_F(cOutputFileTest, pipeIsWrittenToAsItIs) {
    const std::filesystem::path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const cFileDescriptor reader(open(pipe.c_str(), O_RDONLY | O_NONBLOCK));

    writeTo(pipe, "through");

    std::string received(20, '\0');
    const ssize_t count = read(reader.number(), received.data(), received.size());
    EXPECT_EQ(received.substr(0, static_cast<std::size_t>(count)), "through");
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

TEST_F(cOutputFileTest, fullDiskIsToldAtCommit) {
    cOutputFile file("/dev/full");
    file.write("one");
    file.write("two");

    EXPECT_EQ(trouble([&] { file.commit(); }), "can't write /dev/full: No space left on device");
}

TEST_F(cOutputFileTest, missingFolderIsToldAtOnce) {
    const std::string path = folder / "nowhere/new.txt";

    EXPECT_EQ(trouble([&] { cOutputFile file(path); }), "can't write " + path + ": No such file or directory");
}

TEST_F(cOutputFileTest, folderCanNotBeAFile) {
    const std::string path = folder / "";

    EXPECT_EQ(trouble([&] { cOutputFile file(path); }), "can't write " + path + ": Is a directory");
}

TEST_F(cOutputFileTest, fileCanNotBeAFolder) {
    const std::string path = folder / "old.txt/new.txt";

    EXPECT_EQ(trouble([&] { cOutputFile file(path); }), "can't write " + path + ": Not a directory");
}

TEST_F(cOutputFileTest, standardOutputIsNamedInItsTrouble) {
    const cFileDescriptor kept(dup(STDOUT_FILENO));
    const cFileDescriptor full(open("/dev/full", O_WRONLY));
    dup2(full.number(), STDOUT_FILENO);

    const std::string message = trouble([] { writeTo("-", "text"); });

    dup2(kept.number(), STDOUT_FILENO);
    EXPECT_EQ(message, "can't write standard output: No space left on device");
}
