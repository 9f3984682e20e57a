#include "read/TemporaryFolder.hpp"
#include "Jail.hpp"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace vant::media {
namespace {

namespace fs = std::filesystem;

class AbandonedFolders : public testing::Test {
protected:
    AbandonedFolders() { setenv("TMPDIR", top_.c_str(), 1); }
    ~AbandonedFolders() override { setenv("TMPDIR", before_.c_str(), 1); }

    /// What is left of a run that is killed with a folder of some files.
    void leaveFolder() const {
        const pid_t run = fork();
        if (run == 0) {
            const TemporaryFolder folder;
            fs::create_directories(fs::path(folder.path()) / "expanded" / "inner");
            std::ofstream(fs::path(folder.path()) / "expanded" / "file") << "bytes";
            raise(SIGKILL);
        }
        int status = 0;
        waitpid(run, &status, 0);
        ASSERT_FALSE(fs::is_empty(top_));
    }

    fs::path makeNamedLikeARuns(mode_t mode) const {
        const fs::path path = top_ / "vantmedia-run.AbCdEf";
        fs::create_directory(path);
        std::ofstream(path / "file") << "bytes";
        chmod(path.c_str(), mode);
        return path;
    }

    const std::string before_ = fs::temp_directory_path();
    const test::Jail jail_;
    const fs::path top_ = jail_.root();
};

TEST_F(AbandonedFolders, OfAKilledRunIsRemovedWithAllInIt) {
    leaveFolder();
    leaveFolder();
    removeAbandonedFolders();
    EXPECT_TRUE(fs::is_empty(top_));
}

TEST_F(AbandonedFolders, InUseIsNone) {
    const TemporaryFolder used;
    std::ofstream(fs::path(used.path()) / "file") << "bytes";
    leaveFolder();
    removeAbandonedFolders();
    EXPECT_TRUE(fs::exists(fs::path(used.path()) / "file"));
    EXPECT_EQ(std::distance(fs::directory_iterator(top_), fs::directory_iterator()), 1);
}

TEST_F(AbandonedFolders, AreRemovedOfThisUserAloneAndOfTheModeThatRunsMakeThemWith) {
    const fs::path shared = makeNamedLikeARuns(S_IRWXU | S_IRGRP | S_IXGRP);
    removeAbandonedFolders();
    EXPECT_TRUE(fs::exists(shared / "file"));
    chmod(shared.c_str(), S_IRWXU);
    if (chown(shared.c_str(), 1234, static_cast<gid_t>(-1)) == 0) {
        removeAbandonedFolders();
        EXPECT_TRUE(fs::exists(shared / "file"));
        ASSERT_EQ(chown(shared.c_str(), geteuid(), static_cast<gid_t>(-1)), 0);
    }
    removeAbandonedFolders();
    EXPECT_FALSE(fs::exists(shared));
}

TEST_F(AbandonedFolders, AreNotLookedForThroughLinks) {
    const fs::path folder = top_ / "somebody's";
    fs::create_directory(folder);
    fs::permissions(folder, fs::perms::owner_all);
    std::ofstream(folder / "file") << "bytes";
    fs::create_symlink(folder, top_ / "vantmedia-run.AbCdEf");
    removeAbandonedFolders();
    EXPECT_TRUE(fs::exists(folder / "file"));
    EXPECT_TRUE(fs::is_symlink(top_ / "vantmedia-run.AbCdEf"));
}

TEST_F(AbandonedFolders, AreNoFilesAndNoneOfAnotherName) {
    std::ofstream(top_ / "vantmedia-run.AbCdEf") << "bytes";
    fs::create_directory(top_ / "vantmedia.backup");
    fs::permissions(top_ / "vantmedia.backup", fs::perms::owner_all);
    removeAbandonedFolders();
    EXPECT_TRUE(fs::exists(top_ / "vantmedia-run.AbCdEf"));
    EXPECT_TRUE(fs::exists(top_ / "vantmedia.backup"));
}

/// Done by a user who is not above the permissions of files.
void makeWithAClosedFolderAndLetGo(const fs::path &top) {
    if (geteuid() == 0 && (chown(top.c_str(), 1234, static_cast<gid_t>(-1)) != 0 || seteuid(1234) != 0))
        _exit(1);
    {
        const TemporaryFolder folder;
        const fs::path closed = fs::path(folder.path()) / "closed";
        fs::create_directory(closed);
        std::ofstream(closed / "file") << "bytes";
        fs::permissions(closed, fs::perms::none);
    }
    _exit(fs::is_empty(top) ? 0 : 2);
}

TEST_F(AbandonedFolders, AreNoneOfAnEndedRunWhateverItsArchivesHeld) {
    const pid_t run = fork();
    if (run == 0)
        makeWithAClosedFolderAndLetGo(top_);
    int status = 0;
    waitpid(run, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
}

} // namespace
} // namespace vant::media
