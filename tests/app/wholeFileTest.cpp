#include "app/wholeFile.h"

#include "support/scratchFolder.h"

#include <QByteArray>
#include <QString>

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

using cNames = std::set<std::string>;

/// While it lives, no file of this process grows beyond a size: a write gets as far as there and fails.
class cSizeLimit {
public:
    explicit cSizeLimit(rlim_t bytes) : formerHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &former);
        const rlimit limit{bytes, former.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~cSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &former);
        std::signal(SIGXFSZ, formerHandler);
    }
    cSizeLimit(const cSizeLimit&) = delete;
    cSizeLimit& operator=(const cSizeLimit&) = delete;

private:
    rlimit former{};
    void (*formerHandler)(int);
};

/// Groups that the user can give to a file: the user's own, and for root one that nobody has.
std::vector<gid_t> groupsToGive() {
    std::vector<gid_t> groups(static_cast<std::size_t>(getgroups(0, nullptr)));
    groups.resize(static_cast<std::size_t>(getgroups(static_cast<int>(groups.size()), groups.data())));
    groups.push_back(getegid());
    constexpr gid_t nobodys = 54321;
    if (geteuid() == 0) groups.push_back(nobodys);
    return groups;
}

struct wholeFileTest : testing::Test {
    cScratchFolder folder;

    QString path(const std::string& name) const { return QString::fromStdString(folder / name); }
    fs::perms permissions(const std::string& name) const { return fs::status(folder / name).permissions(); }
    struct stat status(const std::string& name) const {
        struct stat found {};
        EXPECT_EQ(stat((folder / name).c_str(), &found), 0);
        return found;
    }
    void makePipe(const std::string& name) const { ASSERT_EQ(mkfifo((folder / name).c_str(), 0600), 0); }

    std::string replace(const std::string& name, const QByteArray& text = "new") const {
        return replaceFile(path(name), text).toStdString();
    }
    /// Why a file isn't read.
    std::string refusal(const std::string& name) const {
        QByteArray text("untouched");
        std::string reason = readWholeFile(path(name), text).toStdString();
        EXPECT_EQ(text, "untouched");
        return reason;
    }
};

}  // namespace

// ---- reading

TEST_F(wholeFileTest, fileIsReadToTheLastByte) {
    const std::string written("one\r\n\0two\xFF", 10);
    folder.write("m", written);
    QByteArray text;

    EXPECT_EQ(readWholeFile(path("m"), text), QString());
    EXPECT_EQ(text.toStdString(), written);
}

TEST_F(wholeFileTest, emptyFileIsReadAsNothing) {
    folder.write("m", "");
    QByteArray text("before");

    EXPECT_EQ(readWholeFile(path("m"), text), QString());
    EXPECT_EQ(text, "");
}

TEST_F(wholeFileTest, fileIsReadThroughALink) {
    folder.write("m", "text");
    fs::create_symlink("m", folder / "link");
    QByteArray text;

    EXPECT_EQ(readWholeFile(path("link"), text), QString());
    EXPECT_EQ(text, "text");
}

TEST_F(wholeFileTest, whatIsNoPlainFileIsNotRead) {
    makePipe("pipe");
    fs::create_symlink("/dev/zero", folder / "device");

    for (const char* name : {".", "pipe", "device"}) EXPECT_EQ(refusal(name), "It is not a plain file.") << name;
}

TEST_F(wholeFileTest, nameIsNotReadAsFarAsAZeroByteAlone) {
    folder.write("m", "text");

    EXPECT_EQ(refusal(std::string("m\0x", 3)), "There is a zero byte in its name.");
}

TEST_F(wholeFileTest, whatIsNotThereIsNotRead) {
    fs::create_symlink("none", folder / "dangling");

    for (const char* name : {"none", "none/m", "dangling"})
        EXPECT_EQ(refusal(name), "No such file or directory") << name;
}

// ---- writing

TEST_F(wholeFileTest, newFileHoldsTheTextAndNothingElseIsLeft) {
    EXPECT_EQ(replace("m", "text\n"), "");

    EXPECT_EQ(folder.read("m"), "text\n");
    EXPECT_EQ(folder.names(), cNames{"m"});
}

TEST_F(wholeFileTest, shorterTextTakesTheWholePlaceOfALongerOne) {
    folder.write("m", "a longer text");

    EXPECT_EQ(replace("m", "text"), "");

    EXPECT_EQ(folder.read("m"), "text");
    EXPECT_EQ(folder.names(), cNames{"m"});
}

TEST_F(wholeFileTest, permissionsOfTheOldFileStay) {
    for (const auto mode : {fs::perms(0600), fs::perms(0640), fs::perms(0664), fs::perms(0755)}) {
        folder.write("m", "old");
        fs::permissions(folder / "m", mode);

        EXPECT_EQ(replace("m"), "");
        EXPECT_EQ(permissions("m"), mode);
    }
}

TEST_F(wholeFileTest, specialPermissionsStay) {
    for (const auto mode : {fs::perms(02660), fs::perms(04755), fs::perms(06750), fs::perms(01644)}) {
        folder.write("m", "old");
        fs::permissions(folder / "m", mode);
        ASSERT_EQ(permissions("m"), mode);

        EXPECT_EQ(replace("m"), "");
        EXPECT_EQ(permissions("m"), mode);
    }
}

TEST_F(wholeFileTest, groupOfTheOldFileStays) {
    for (const gid_t group : groupsToGive()) {
        folder.write("m", "old");
        ASSERT_EQ(chown((folder / "m").c_str(), static_cast<uid_t>(-1), group), 0);
        fs::permissions(folder / "m", fs::perms(02664));

        EXPECT_EQ(replace("m"), "");
        EXPECT_EQ(status("m").st_gid, group);
        EXPECT_EQ(permissions("m"), fs::perms(02664));
    }
}

TEST_F(wholeFileTest, otherNamesOfTheOldFileKeepItsText) {
    folder.write("m", "old");
    fs::create_hard_link(folder / "m", folder / "backup");

    EXPECT_EQ(replace("m"), "");

    EXPECT_EQ(folder.read("m"), "new");
    EXPECT_EQ(folder.read("backup"), "old");
}

TEST_F(wholeFileTest, fileIsFoundInTheWorkingFolder) {
    const fs::path before = fs::current_path();
    fs::current_path(folder / ".");

    EXPECT_EQ(replaceFile("m", "text"), QString());
    fs::current_path(before);

    EXPECT_EQ(folder.read("m"), "text");
}

TEST_F(wholeFileTest, linkIsNotReplacedAndItsTargetStays) {
    folder.write("target", "old");
    fs::create_symlink("target", folder / "link");

    EXPECT_EQ(replace("link"),
              "It is a symbolic link. Save under the name that it leads to: " + (folder / "target").string());

    EXPECT_EQ(fs::read_symlink(folder / "link"), "target");
    EXPECT_EQ(folder.read("target"), "old");
    EXPECT_EQ(folder.names(), (cNames{"link", "target"}));
}

TEST_F(wholeFileTest, linkToNothingIsNotReplacedEither) {
    fs::create_symlink("none", folder / "link");

    EXPECT_EQ(replace("link"),
              "It is a symbolic link. Save under the name that it leads to: " + (folder / "none").string());

    EXPECT_EQ(folder.names(), cNames{"link"});
}

TEST_F(wholeFileTest, fileWithoutAPermissionToWriteStaysEvenForRoot) {
    folder.write("m", "old");
    fs::permissions(folder / "m", fs::perms(0444));

    EXPECT_EQ(replace("m"), "It is read-only.");

    EXPECT_EQ(folder.read("m"), "old");
    EXPECT_EQ(folder.names(), cNames{"m"});
}

TEST_F(wholeFileTest, whatIsNoPlainFileIsNotReplaced) {
    fs::create_directory(folder / "folder");
    makePipe("pipe");

    for (const char* name : {"folder", "pipe"}) EXPECT_EQ(replace(name), "It is not a plain file.") << name;

    EXPECT_TRUE(fs::is_directory(folder / "folder"));
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
    EXPECT_EQ(folder.names(), (cNames{"folder", "pipe"}));
}

TEST_F(wholeFileTest, missingFolderIsTold) { EXPECT_EQ(replace("none/m"), "No such file or directory"); }

TEST_F(wholeFileTest, whatAnEndedProgramLeftIsReplaced) {
    folder.write("m", "old");
    folder.write("m.new", "half a longer text, and without permission");
    fs::permissions(folder / "m.new", fs::perms(0444));

    EXPECT_EQ(replace("m"), "");

    EXPECT_EQ(folder.read("m"), "new");
    EXPECT_EQ(folder.names(), cNames{"m"});
}

TEST_F(wholeFileTest, nothingIsWrittenThroughALinkLaidInTheWay) {
    folder.write("m", "old");
    folder.write("victim", "dear");
    fs::create_symlink("victim", folder / "m.new");

    EXPECT_EQ(replace("m"), "");

    EXPECT_EQ(folder.read("victim"), "dear");
    EXPECT_EQ(folder.read("m"), "new");
    EXPECT_FALSE(fs::is_symlink(folder / "m"));
    EXPECT_EQ(folder.names(), (cNames{"m", "victim"}));
}

TEST_F(wholeFileTest, whatElseIsInTheWayOfTheNewFileStays) {
    for (const char* name : {"a", "b"}) folder.write(name, "old");
    fs::create_directory(folder / "a.new");
    makePipe("b.new");

    for (const char* name : {"a", "b"}) {
        EXPECT_EQ(replace(name), "File exists") << name;
        EXPECT_EQ(folder.read(name), "old") << name;
    }

    EXPECT_TRUE(fs::is_directory(folder / "a.new"));
    EXPECT_TRUE(fs::is_fifo(folder / "b.new"));
}

TEST_F(wholeFileTest, writeThatGetsHalfWayLeavesTheOldFileAlone) {
    folder.write("m", "old");
    std::string reason;
    {
        const cSizeLimit limit(1000);
        reason = replace("m", QByteArray(3000, 'x'));
    }

    EXPECT_EQ(reason, "File too large");
    EXPECT_EQ(folder.read("m"), "old");
    EXPECT_EQ(folder.names(), cNames{"m"});
}

TEST_F(wholeFileTest, writeThatFailsAtOnceLeavesTheOldFileAlone) {
    folder.write("m", "old");
    std::string reason;
    {
        const cSizeLimit limit(0);
        reason = replace("m");
    }

    EXPECT_EQ(reason, "File too large");
    EXPECT_EQ(folder.read("m"), "old");
    EXPECT_EQ(folder.names(), cNames{"m"});
}

/// A name that nothing can have, though it can be had with ".new" behind it.
TEST_F(wholeFileTest, newFileThatCantTakeItsPlaceIsRemoved) {
    const fs::path before = fs::current_path();
    fs::current_path(folder / ".");
    const QString reason = replaceFile("", "text");
    fs::current_path(before);

    EXPECT_EQ(reason, "No such file or directory");
    EXPECT_EQ(folder.names(), cNames{});
}

TEST_F(wholeFileTest, nameTooLongForTheNewFileIsTold) {
    const std::string name(252, 'n');  // with ".new" it is one byte more than a name can have
    folder.write(name, "old");

    EXPECT_EQ(replace(name), "File name too long");
    EXPECT_EQ(folder.read(name), "old");
}
