#include "echo_results.h"
#include "files/failure.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

namespace veltrane::host {
namespace {

/// What a run leaves behind.
struct Left {
    int code = 0;
    std::string failure;
    std::string output;
    std::string rejects;
    std::string told;

    bool operator==(const Left&) const = default;
};

void PrintTo(const Left& left, std::ostream* out) {
    *out << "code " << left.code << "\nfailure: " << left.failure << "\noutput:\n"
         << left.output << "rejects:\n"
         << left.rejects << "told:\n"
         << left.told;
}

class BlockRunTest : public testing::Test {
protected:
    BlockRunTest() {
        std::string pattern = (std::filesystem::temp_directory_path() / "veltrane_blocks.XXXXXX").string();
        folder = ::mkdtemp(pattern.data());
        options.cases = (folder / "cases.csv").string();
    }
    ~BlockRunTest() override { std::filesystem::remove_all(folder); }

    static std::string ReadFile(const std::filesystem::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    void Write(const std::string& cases) const { std::ofstream(options.cases, std::ios::binary) << cases; }

    /// One run over the cases; standard output goes to a file that a failure leaves behind.
    Left Run(std::size_t threads, bool byCase) {
        CaseOptions asked = options;
        asked.threads = threads;
        asked.byCase = byCase;
        const std::filesystem::path rejects = folder / "rejects.csv";
        std::filesystem::remove(rejects);
        if (withRejects) {
            asked.rejects = rejects.string();
        }
        Left left;
        const auto dictionary = EchoDictionary();
        CaseRow row(*dictionary);
        row.KeepUnreadable();
        EchoResults results;
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        try {
            left.code = CaseRun(asked, row, results).Run();
        } catch (const Failure& failure) {
            left.failure = failure.what();
        } catch (const ToldFailure&) {
            left.failure = "told";
        }
        left.told = testing::internal::GetCapturedStderr();
        left.output = testing::internal::GetCapturedStdout();
        left.rejects = ReadFile(rejects);
        return left;
    }

    void ExpectTheSame(const std::string& cases) {
        Write(cases);
        const Left expected = Run(1, true);
        for (const std::size_t threads : {std::size_t{1}, std::size_t{3}}) {
            EXPECT_EQ(Run(threads, false), expected) << threads << " threads, cases:\n" << cases.substr(0, 2000);
        }
    }

    std::filesystem::path folder;
    CaseOptions options;
    bool withRejects = true;
};

constexpr const char* kHeader = "number,text,day,days,truth,unused,other\n";

TEST_F(BlockRunTest, GivesWhatTheCasesGiveOneByOne) {
    options.keep = true;
    ExpectTheSame(std::string(kHeader) + "1,a,2024-02-29,3,true,4,x\n"
                                         "-2.5e3,\"b,c\",2024-2-3,-1.5,false,x,\"y,\"\"z\"\"\"\n"
                                         "abc,,2024-02-30,,maybe,,\n"
                                         ",q,,,,,\n"
                                         " 7 ,\" a \",\t2024-01-01 ,1e400,TRUE,-1e400,w\n"
                                         "1\n"
                                         "1,2,3,4,5,6,7,8\n"
                                         "\n"
                                         "0x10,\"two\nlines\",x,y,z,nan,\"\r\n\"\n"
                                         "\"5\n\",t,,,,,\n");
}

TEST_F(BlockRunTest, TellsTheSameFaultsOfTextThatIsNoCsv) {
    for (const char* end :
         {"1,\"a\"b\n", "1,a\"b\n", "1,\"a", "1,\"a\"", "\"", "1,a", "1,a\r", "1,\"a\"\r\n2,\"b\nc"}) {
        ExpectTheSame(std::string(kHeader) + "1,a,,,,,\r\n\r\nx,\"l1\nl2\",,,,,\n" + end);
    }
    for (const char* start :
         {"", "\n\n", "\"number", "number,\"text\"x\n1\n", "\xEF\xBB\xBFnumber,text\n1,a\n", "\xEF\xBB\xBF",
          "\xFF\xFEn", "number\n\n1\n\n", "number\r\r\n1\r\r\n", "text\n1\n", "number,number\n", "n"}) {
        ExpectTheSame(start);
    }
}

TEST_F(BlockRunTest, TakesTokensAndEncodingsAsTheCasesDo) {
    options.missingTokens = {"NA", " -9", "-9 ", "\x80"};
    options.keep = true;
    const std::string rows = "NA,NA,NA,NA,NA,NA,NA\n NA , NA ,NA , NA, NA,NA,NA\n-9, -9,-9 , -9,-9,-9 ,-9\n"
                             "1,\xC3\xA4,,,,,\xC3\xB6\n1,\xE4,,,,,\xF6\n1,\x80,,,\x80,,\x80\n1,a,,,,,\n";
    for (const char* encoding : {"UTF-8", "windows-1252", "ISO-8859-1", "Shift_JIS", "GB18030"}) {
        options.encoding = encoding;
        ExpectTheSame(kHeader + rows + std::string("1,a\0b,,,,,c\0d\n", 14) + "1,a,2024-01-01\n");
    }
}

TEST_F(BlockRunTest, EndsAtTheSameCellWhereItIsStrict) {
    options.strict = true;
    std::string rows = kHeader;
    for (int row = 0; row < 9000; ++row) {
        rows += std::to_string(row) + ",a,,,,,\n";
    }
    ExpectTheSame(rows + "x,a,,,,,\n1,a,,,,,\n");
    ExpectTheSame(rows + "1,a,,\n1,a,,,,,\n");
    ExpectTheSame(rows + "1,a,,,,,\n");
}

TEST_F(BlockRunTest, LeavesTheSameRowsInFrontOfAFailure) {
    std::string rows = kHeader;
    for (int row = 0; row < 20000; ++row) {
        rows += std::to_string(row) + ",a,,,,,\n" + (row % 1000 == 7 ? "bad,b,,,,,\n" : "");
    }
    ExpectTheSame(rows + "1,\"open");
    ExpectTheSame(rows + "1,open\"\n");
}

TEST_F(BlockRunTest, ReadsFilesOfOneColumn) {
    options.missingColumns = true;
    for (const char* rows :
         {"number\n1\n\n2\n\n\n", "number\r\n1\r\n\r\n2", "number\n\"\"\n\"1\"\n", "number\r1\r\r2\r"}) {
        ExpectTheSame(rows);
    }
}

TEST_F(BlockRunTest, WorksOnRandomTextAsTheCasesDo) {
    const char* const kPieces[] = {"1",   "2.5",      "-3e2", "abc", ",",     ",",        ",",          "\n",
                                   "\n",  "\r\n",     "\r",   "\"",  "\"\"",  " ",        "2024-02-29", "true",
                                   "b,c", "\xC3\xA4", "\xE4", "NA",  "\"a\"", "\"x\ny\","};
    std::mt19937 random(17);
    options.missingTokens = {"NA"};
    for (int round = 0; round < 120; ++round) {
        options.keep = round % 3 == 0;
        withRejects = round % 10 == 0; // which wait for the disk
        options.strict = round % 7 == 0;
        std::string text = round % 5 == 0 ? "number,text\n" : kHeader;
        for (std::size_t pieces = random() % 60; pieces > 0; --pieces) {
            text += kPieces[random() % std::size(kPieces)];
        }
        ExpectTheSame(text);
    }
}

std::string ManyRows() {
    std::mt19937 random(4);
    std::string rows = kHeader;
    for (int row = 0; row < 60'000; ++row) {
        rows += std::to_string(random() % 1000) + (random() % 3 == 0 ? ".25," : ",");
        rows += random() % 50 == 0 ? "\"b,c\"," : random() % 500 == 0 ? "\"two\nlines\"," : "a,";
        rows += random() % 1000 == 0 ? "2024-02-30,,,,\n" : random() % 400 == 0 ? "\n" : "2024-02-28,5,true,,\n";
        rows += random() % 700 == 0 ? ",a,,,,,\n" : "";
    }
    return rows;
}

class BlockRunThreads : public BlockRunTest {};

TEST_F(BlockRunThreads, KeepTheOrderOfRowsAndReports) {
    Write(ManyRows());
    const Left expected = Run(1, true);
    EXPECT_GT(expected.output.size(), std::size_t{1} << 20);
    for (const std::size_t threads : {1, 2, 8}) {
        const Left left = Run(threads, false);
        EXPECT_TRUE(left == expected) << threads;
    }
}

TEST_F(BlockRunThreads, EndWhileOthersWork) {
    options.strict = true;
    Write(ManyRows());
    const Left expected = Run(1, true);
    EXPECT_EQ(expected.failure, "told");
    EXPECT_TRUE(Run(8, false) == expected);
}

} // namespace
} // namespace veltrane::host
