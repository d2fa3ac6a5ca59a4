#include "files/atomic_file.h"
#include "files/failure.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace veltrane::host {
namespace {

namespace fs = std::filesystem;

class AtomicFiles : public testing::Test {
protected:
    AtomicFiles() {
        std::string pattern = (fs::temp_directory_path() / "veltrane_atomic.XXXXXX").string();
        folder = ::mkdtemp(pattern.data());
    }
    ~AtomicFiles() override { fs::remove_all(folder); }

    std::string Path(const std::string& name) const { return (folder / name).string(); }

    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder)) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    static std::string Content(const std::string& path) {
        std::stringstream content;
        content << std::ifstream(path, std::ios::binary).rdbuf();
        return content.str();
    }

    fs::path folder;
};

using FileNames = std::vector<std::string>;

TEST_F(AtomicFiles, AppearWhenTheyAreCommitted) {
    AtomicFile file(Path("out.csv"));
    file.Write("a,b\n");
    EXPECT_FALSE(fs::exists(Path("out.csv")));
    file.Commit();
    EXPECT_EQ(Content(Path("out.csv")), "a,b\n");
    EXPECT_EQ(Names(), (FileNames{"out.csv"}));
}

TEST_F(AtomicFiles, LeaveNothingWithoutCommit) {
    {
        AtomicFile file(Path("out.csv"));
        file.Write("a,b\n");
        EXPECT_EQ(Names().size(), 1u);
    }
    EXPECT_EQ(Names(), FileNames{});
}

TEST_F(AtomicFiles, KeepTheOldFileWithoutCommit) {
    std::ofstream(Path("out.csv")) << "old";
    { AtomicFile(Path("out.csv")).Write("new"); }
    EXPECT_EQ(Content(Path("out.csv")), "old");
    EXPECT_EQ(Names(), (FileNames{"out.csv"}));
}

TEST_F(AtomicFiles, ReplaceTheOldFileAndKeepItsMode) {
    std::ofstream(Path("out.csv")) << "old, and longer";
    ::chmod(Path("out.csv").c_str(), 0604);
    AtomicFile file(Path("out.csv"));
    file.Write("new");
    file.Commit();
    EXPECT_EQ(Content(Path("out.csv")), "new");
    EXPECT_EQ(static_cast<unsigned>(fs::status(Path("out.csv")).permissions()), 0604u);
}

TEST_F(AtomicFiles, HaveTheUsualModeWhenTheyAreNew) {
    const mode_t before = ::umask(027);
    AtomicFile file(Path("out.csv"));
    file.Commit();
    ::umask(before);
    EXPECT_EQ(static_cast<unsigned>(fs::status(Path("out.csv")).permissions()), 0640u);
}

TEST_F(AtomicFiles, WriteThroughASymbolicLink) {
    std::ofstream(Path("real.csv")) << "old";
    fs::create_symlink("real.csv", Path("link.csv"));
    AtomicFile file(Path("link.csv"));
    file.Write("new");
    file.Commit();
    EXPECT_TRUE(fs::is_symlink(Path("link.csv")));
    EXPECT_EQ(Content(Path("real.csv")), "new");
}

TEST_F(AtomicFiles, WriteToADeviceDirectly) {
    AtomicFile file("/dev/null");
    file.Write("gone");
    file.Commit();
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(AtomicFiles, TellWhenTheDeviceIsFull) {
    AtomicFile file("/dev/full");
    try {
        file.Write("x");
        FAIL() << "nothing was thrown";
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(), "/dev/full: No space left on device");
    }
}

TEST_F(AtomicFiles, TellWhenTheFolderIsMissing) {
    try {
        AtomicFile file(Path("none/out.csv"));
        FAIL() << "nothing was thrown";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.what(), Path("none/out.csv") + ": No such file or directory");
    }
}

TEST_F(AtomicFiles, TakeVeryLongNames) {
    const std::string name(250, 'n');
    AtomicFile file(Path(name));
    file.Write("x");
    file.Commit();
    EXPECT_EQ(Content(Path(name)), "x");
}

TEST_F(AtomicFiles, GoAwayWhenASignalEndsTheProcess) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            ::signal(number, SIG_DFL); // ignored where the tests run under nohup
            AtomicFile file(Path("out.csv"));
            file.Write("half");
            if (!fs::is_empty(folder)) {
                ::raise(number);
            }
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == number) << status;
        EXPECT_EQ(Names(), FileNames{});
    }
}

TEST_F(AtomicFiles, GoAwayBothWhenASignalEndsTheProcess) {
    for (const bool committed : {false, true}) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            AtomicFile first(Path("first.csv"));
            AtomicFile second(Path("second.csv"));
            first.Write("whole");
            second.Write("half");
            if (committed) {
                first.Commit();
            }
            ::raise(SIGTERM);
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM) << status;
        EXPECT_EQ(Names(), committed ? FileNames{"first.csv"} : FileNames{});
    }
}

TEST_F(AtomicFiles, StayWhenASignalWasIgnoredFromTheStart) {
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ::signal(SIGHUP, SIG_IGN);
        AtomicFile file(Path("out.csv"));
        file.Write("whole");
        ::raise(SIGHUP);
        file.Commit();
        ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    EXPECT_EQ(Content(Path("out.csv")), "whole");
}

} // namespace
} // namespace veltrane::host
