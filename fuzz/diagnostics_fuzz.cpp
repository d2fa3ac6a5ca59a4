// Any bytes as the configuration of the trace log and as the pattern of a message of a host: the log starts, says
// something and ends, and the pattern is formatted with parameters that are bytes as well.
#include "run.h"

#include <MCVeltrane_900/ScoringLog.h>
#include <ScoreContext/VTErrorFormater.h>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

using namespace veltrane::fuzz;

namespace {

constexpr int kId = 1;

/// The configuration is read from the working directory: that is a folder of the process's own for as long, where the
/// file's name leads to one in memory, and the folder of the log to nowhere, so that no run writes.
class Folder {
public:
    Folder() : fConfiguration(memfd_create("configuration", 0)), fBefore(open(".", O_DIRECTORY)) {
        char name[] = "/tmp/fuzzXXXXXX";
        Require(fConfiguration >= 0 && fBefore >= 0 && mkdtemp(name) != nullptr);
        fName = name;
        Require(symlink(("/proc/self/fd/" + std::to_string(fConfiguration)).c_str(), PathOf("sc.cfg").c_str()) == 0);
        Require(symlink("/dev/null", LogFolder().c_str()) == 0);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        unlink(PathOf("sc.cfg").c_str());
        unlink(LogFolder().c_str());
        rmdir(fName.c_str());
        close(fConfiguration);
        close(fBefore);
    }

    void Configure(const std::string& text) const {
        Require(ftruncate(fConfiguration, 0) == 0);
        Require(pwrite(fConfiguration, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()));
    }

    void Enter() const { Require(chdir(fName.c_str()) == 0); }
    void Leave() const { Require(fchdir(fBefore) == 0); }

private:
    std::string PathOf(const std::string& file) const { return fName + "/" + file; }
    std::string LogFolder() const { return PathOf("log" + std::to_string(getpid())); }

    int fConfiguration;
    int fBefore;
    std::string fName;
};

void Log(const std::string& configuration) {
    static const Folder folder;
    folder.Configure(configuration);
    folder.Enter();
    const std::unique_ptr<MCVeltrane_900::ScoringLog> log(MCVeltrane_900::ScoringLog::GetInstance());
    Require(log != nullptr);
    log->TraceText(1, "%s", configuration.c_str());
    folder.Leave();
}

void Format(std::string pattern) {
    const std::string parameter = pattern.substr(pattern.size() / 2);
    ScoreContext::MessageItem item{kId, pattern.data()};
    ScoreContext::VTErrorFormater formater(1, &item);
    const int count = formater.GetParameterNumber(kId);
    Require(count >= 0);
    for (const std::size_t given : {0U, 1U, 3U}) {
        formater.Format(kId, std::vector<std::string>(given, parameter));
    }
    formater.FormatN(kId, 2, parameter.c_str(), pattern.c_str());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    Log(text);
    Format(text.c_str());
    return 0;
}
