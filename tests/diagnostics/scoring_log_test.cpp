#include "support/faults/failure.h"

#include <MCVeltrane_900/ScoringLog.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <set>
#include <sstream>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

namespace files = std::filesystem;
using MCVeltrane_900::ScoringLog;

/// A working directory of the test's own and a log that has not read its configuration yet.
class LogTest : public testing::Test {
protected:
    void SetUp() override {
        before = files::current_path();
        std::string name = (files::temp_directory_path() / "veltrane_log_XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        folder = name;
        files::current_path(folder);
        delete ScoringLog::GetInstance();
    }

    void TearDown() override {
        files::current_path(before);
        delete ScoringLog::GetInstance();
        files::remove_all(folder);
    }

    static void Configure(const std::string& text) { std::ofstream("sc.cfg", std::ios::binary) << text; }

    static std::string LogFolder() { return "log" + std::to_string(getpid()); }

    /// What the thread of the test has written; its thread id is the process id.
    static std::string Written() {
        std::ifstream file(LogFolder() + "/" + std::to_string(getpid()) + "_scoring_trace.log");
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

    static bool IsOn() { return files::exists(LogFolder()); }

    static std::string NinesForDigits(std::string text) {
        std::replace_if(
            text.begin(), text.end(), [](unsigned char letter) { return std::isdigit(letter) != 0; }, '9');
        return text;
    }

    /// The trace level that a configuration gives: the highest one of which a line is written.
    static int LevelOf(const std::string& configuration) {
        Configure(configuration);
        delete ScoringLog::GetInstance();
        int level = 0;
        for (int tried = 1; tried < 10; ++tried) {
            files::remove_all(LogFolder());
            files::create_directory(LogFolder());
            ScoringLog::GetInstance()->TraceText(tried, "line");
            level = Written().empty() ? level : tried;
        }
        return level;
    }

    files::path before;
    files::path folder;
};

using ScoringLogTest = LogTest;
using KeptScoringLog = LogTest;
using ScoringLogThreads = LogTest;

TEST_F(ScoringLogTest, WithoutConfigurationNothingIsMade) {
    ScoringLog::GetInstance()->TraceText(1, "line");
    EXPECT_TRUE(files::is_empty("."));
}

TEST_F(ScoringLogTest, GetInstanceGivesTheSameOne) {
    EXPECT_NE(ScoringLog::GetInstance(), nullptr);
    EXPECT_EQ(ScoringLog::GetInstance(), ScoringLog::GetInstance());
}

TEST_F(ScoringLogTest, FolderIsMadeWhenTheLogIsMade) {
    Configure("trace_leve,1\n");
    EXPECT_FALSE(IsOn());
    ScoringLog::GetInstance();
    EXPECT_TRUE(files::is_directory(LogFolder()));
    EXPECT_TRUE(files::is_empty(LogFolder()));
}

TEST_F(ScoringLogTest, FolderMayBeThereAlready) {
    Configure("trace_leve,1\n");
    files::create_directory(LogFolder());
    ScoringLog::GetInstance()->TraceText(1, "line");
    EXPECT_EQ(Written(), "line\n");
}

TEST_F(ScoringLogTest, LinesAreAppended) {
    Configure("trace_leve,1\n");
    ScoringLog::GetInstance()->TraceText(1, "Model name is :%s", "TreeModel");
    ScoringLog::GetInstance()->TraceText(1, "%d%%", 100);
    EXPECT_EQ(Written(), "Model name is :TreeModel\n100%\n");
}

TEST_F(ScoringLogTest, LevelsAboveTheTraceLevelAreDropped) {
    Configure("trace_leve,2\n");
    ScoringLog* log = ScoringLog::GetInstance();
    log->TraceText(3, "error");
    log->TraceText(2, "detail");
    log->TraceText(1, "progress");
    EXPECT_EQ(Written(), "detail\nprogress\n");
}

TEST_F(ScoringLogTest, DroppedLinesTouchNoFile) {
    Configure("trace_leve,1\n");
    ScoringLog::GetInstance()->TraceText(2, "detail");
    EXPECT_TRUE(files::is_empty(LogFolder()));
}

TEST_F(ScoringLogTest, AtLevelThreeEveryLineCarriesTheTime) {
    Configure("trace_leve,3\n");
    for (int level = 1; level <= 3; ++level) {
        ScoringLog::GetInstance()->TraceText(level, "line %d", level);
    }
    const std::string stamp = "99999999 99:99:99.999: line 9\n";
    EXPECT_EQ(NinesForDigits(Written()), stamp + stamp + stamp);
}

TEST_F(ScoringLogTest, TimeIsTheLocalTime) {
    Configure("trace_leve,3\n");
    // std::time may lag behind the clock that the log reads.
    const auto now = [] { return std::chrono::system_clock::to_time_t(std::chrono::system_clock::now()); };
    const std::time_t earlier = now();
    ScoringLog::GetInstance()->TraceText(1, "line");
    const std::time_t later = now();
    std::tm written{};
    std::istringstream(Written()) >> std::get_time(&written, "%Y%m%d %H:%M:%S");
    written.tm_isdst = -1;
    const std::time_t stamp = std::mktime(&written);
    EXPECT_GE(stamp, earlier);
    EXPECT_LE(stamp, later);
}

TEST_F(ScoringLogTest, LongTextIsCut) {
    Configure("trace_leve,1\n");
    ScoringLog::GetInstance()->TraceText(1, "%s", std::string(200000, 'x').c_str());
    EXPECT_EQ(Written(), std::string(102399, 'x') + "\n");
}

TEST_F(ScoringLogTest, FileThatCannotBeOpenedLosesTheLine) {
    Configure("trace_leve,1\n");
    ScoringLog* log = ScoringLog::GetInstance();
    files::remove_all(LogFolder());
    log->TraceText(1, "lost");
    files::create_directory(LogFolder());
    log->TraceText(1, "line");
    EXPECT_EQ(Written(), "line\n");
}

TEST_F(ScoringLogTest, ConfigurationIsNotReadAgain) {
    Configure("trace_leve,1\n");
    ScoringLog* log = ScoringLog::GetInstance();
    Configure("trace_leve,0\n");
    log->TraceText(1, "line");
    EXPECT_EQ(Written(), "line\n");
}

TEST_F(ScoringLogTest, DestructorClearsTheInstance) {
    Configure("trace_leve,1\n");
    delete ScoringLog::GetInstance();
    Configure("");
    ScoringLog::GetInstance()->TraceText(1, "line");
    EXPECT_EQ(Written(), "");
}

TEST_F(ScoringLogTest, ErrorMessageOfAnExceptionIsTraced) {
    Configure("trace_leve,3\n");
    MCVeltrane_900::VTException failure;
    failure.SetDetailMessage("line 3");
    failure.PutErrorMessage(260109);
    EXPECT_EQ(failure.GetErrorMessage(), "Error in parsing the PMML file. Detailed message:line 3");
    const std::string written = Written();
    const std::string text = ": Error message : Error in parsing the PMML file. Detailed message:line 3\n";
    ASSERT_GT(written.size(), text.size());
    EXPECT_EQ(written.substr(written.size() - text.size()), text);
}

TEST_F(ScoringLogTest, ErrorMessageIsNotTracedBelowLevelThree) {
    Configure("trace_leve,2\n");
    MCVeltrane_900::VTException(1, "detail").GetErrorMessage();
    EXPECT_EQ(Written(), "");
}

TEST_F(ScoringLogTest, ConstructedMessageIsNotTraced) {
    Configure("trace_leve,3\n");
    MCVeltrane_900::VTException(1, "detail").ConstructMessage();
    EXPECT_EQ(Written(), "");
}

TEST_F(ScoringLogTest, PercentSignsOfAMessageAreNoFormat) {
    Configure("trace_leve,3\n");
    MCVeltrane_900::VTException(1, "100%s%n").GetErrorMessage();
    EXPECT_NE(Written().find(": Error message : 100%s%n\n"), std::string::npos);
}

TEST_F(KeptScoringLog, KeyIsOneLetterShortOfTheWord) {
    EXPECT_EQ(LevelOf("trace_level,3\n"), 0);
    EXPECT_EQ(LevelOf("trace_leve,3\n"), 3);
}

TEST_F(KeptScoringLog, TimeStampFollowsTheTraceLevelAndNotTheLine) {
    Configure("trace_leve,2\n");
    ScoringLog::GetInstance()->TraceText(2, "detail");
    EXPECT_EQ(Written(), "detail\n");
}

/// The lines that one thread of several writes: none is like another's.
std::string LinesOf(int thread) {
    std::string lines;
    for (int line = 0; line < 200; ++line) {
        lines += "thread " + std::to_string(thread) + " line " + std::to_string(line) + "\n";
    }
    return lines;
}

/// The contents of all trace files, in order.
std::vector<std::string> AllWritten(const std::string& folder) {
    std::vector<std::string> contents;
    for (const auto& entry : files::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        const std::size_t behindTheNumber = name.find_first_not_of("0123456789");
        EXPECT_GT(behindTheNumber, 0U);
        EXPECT_EQ(name.substr(behindTheNumber), "_scoring_trace.log");
        std::ostringstream text;
        text << std::ifstream(entry.path()).rdbuf();
        contents.push_back(text.str());
    }
    std::sort(contents.begin(), contents.end());
    return contents;
}

/// Runs work(0) to work(count - 1) in threads that all live until the last is done, so that no two have one number.
template <typename Work>
void RunInThreads(int count, Work work) {
    std::atomic<int> done{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([i, count, work, &done] {
            work(i);
            for (++done; done < count;) {
                std::this_thread::yield();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST_F(ScoringLogThreads, EachThreadWritesAFileOfItsOwn) {
    constexpr int kThreads = 8;
    Configure("trace_leve,1\n");
    ScoringLog::GetInstance();
    RunInThreads(kThreads, [](int thread) {
        for (int line = 0; line < 200; ++line) {
            ScoringLog::GetInstance()->TraceText(1, "thread %d line %d", thread, line);
        }
    });
    std::vector<std::string> expected;
    for (int thread = 0; thread < kThreads; ++thread) {
        expected.push_back(LinesOf(thread));
    }
    EXPECT_EQ(AllWritten(LogFolder()), expected);
}

TEST_F(ScoringLogThreads, FirstUseMayRace) {
    Configure("trace_leve,1\n");
    for (int round = 0; round < 20; ++round) {
        delete ScoringLog::GetInstance();
        files::remove_all(LogFolder());
        std::vector<ScoringLog*> seen(4);
        RunInThreads(4, [&seen](int thread) {
            seen[thread] = ScoringLog::GetInstance();
            seen[thread]->TraceText(1, "line of %d", thread);
        });
        EXPECT_EQ(std::set<ScoringLog*>(seen.begin(), seen.end()).size(), 1U);
        EXPECT_EQ(seen.front(), ScoringLog::GetInstance());
        EXPECT_EQ(AllWritten(LogFolder()),
                  (std::vector<std::string>{"line of 0\n", "line of 1\n", "line of 2\n", "line of 3\n"}));
    }
}

/// The settings as rows: the text of the file and the level that it gives.
struct Setting {
    const char* name;
    std::string text;
    int level;
};

class ScoringLogSetting : public LogTest, public testing::WithParamInterface<Setting> {};

TEST_P(ScoringLogSetting, GivesTheLevel) {
    EXPECT_EQ(LevelOf(GetParam().text), GetParam().level);
}

std::string NameOfSetting(const testing::TestParamInfo<Setting>& setting) {
    return setting.param.name;
}

INSTANTIATE_TEST_SUITE_P(
    ScoringLog, ScoringLogSetting,
    testing::Values(Setting{"Plain", "trace_leve,3\n", 3}, Setting{"BlankBeforeValue", "trace_leve, 3\n", 3},
                    Setting{"WhitespaceAround", " \t\ftrace_leve\f\t , \t3\f \n", 3},
                    Setting{"NoEndOfLine", "trace_leve,3", 3}, Setting{"CarriageReturn", "trace_leve,3\r\n", 3},
                    Setting{"FullWordAsKey", "trace_level,3\n", 0}, Setting{"OtherCase", "Trace_leve,3\n", 0},
                    Setting{"BlankInKey", "trace leve,3\n", 0}, Setting{"NoComma", "trace_leve=3\n", 0},
                    Setting{"Zero", "trace_leve,0\n", 0}, Setting{"Negative", "trace_leve,-1\n", 0},
                    Setting{"NotANumber", "trace_leve,three\n", 0}, Setting{"NoValue", "trace_leve,\n", 0},
                    Setting{"NumberThenText", "trace_leve,2x\n", 2}, Setting{"SecondComma", "trace_leve,2,3\n", 2},
                    Setting{"EmptyFile", "", 0}, Setting{"EmptyLinesBefore", "\n\n \ntrace_leve,2\n", 2},
                    Setting{"OtherKeysBefore", "other,1\nnothing\n,\ntrace_leve,2\n", 2},
                    Setting{"ZeroDoesNotStopTheReading", "trace_leve,0\ntrace_leve,2\n", 2},
                    Setting{"FirstPositiveWins", "trace_leve,2\ntrace_leve,3\n", 2},
                    Setting{"BeyondInt", "trace_leve,99999999999999999999\n", 9},
                    Setting{"FarBelowInt", "trace_leve,-99999999999999999999\n", 0},
                    Setting{"LineOf63", std::string(63, 'x') + "\ntrace_leve,2\n", 2},
                    Setting{"LineOf64EndsTheReading", std::string(64, 'x') + "\ntrace_leve,2\n", 0},
                    Setting{"LongLineEndsTheReading", std::string(5000, 'x') + "\ntrace_leve,2\n", 0},
                    Setting{"LongLineWithTheSettingInFront", "trace_leve,2" + std::string(100, ' ') + "\n", 2},
                    Setting{"LongLineWithTheSettingBehind", std::string(70, ' ') + "trace_leve,2\n", 0},
                    Setting{"LongLastLine", std::string(64, 'x'), 0},
                    Setting{"Nul", std::string("\0trace_leve,2\n", 14), 0}),
    NameOfSetting);

TEST_F(ScoringLogTest, ConfigurationThatIsAFolderLeavesTheLogOff) {
    files::create_directory("sc.cfg");
    ScoringLog::GetInstance()->TraceText(1, "line");
    EXPECT_FALSE(IsOn());
}

TEST_F(ScoringLogTest, SettingsThatLeaveTheLogOffMakeNoFolder) {
    Configure("trace_leve,0\n");
    ScoringLog::GetInstance()->TraceText(1, "line");
    EXPECT_FALSE(IsOn());
}

} // namespace
