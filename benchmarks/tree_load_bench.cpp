// What reading trees costs over a bare SAX parse of the same document, and over a bare DOM parse; how much memory is
// needed at most while a document is read from a file, over its size; and what a node takes when all else is gone.
// `ratio` is the whole time over that of the SAX parse, `opened ratio` the same for columns, and `DOM ratio` that of
// the DOM parse over it.
#include "allocation_counter.h"
#include "documents.h"
#include "turns.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <veltrane/document.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <memory>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::bench;

namespace {

const std::string kPeakOf = "--peak-of";
const std::string kPeakOfOpened = "--peak-of-opened";

std::unique_ptr<ScoreModel> Read(std::istream& in) {
    return std::unique_ptr<ScoreModel>(ModelFactory::MakeModelFromXML(in, {"MiningModel", "TreeModel"}, "UTF-8"));
}

std::unique_ptr<ScoreModel> Read(const std::string& document) {
    std::istringstream in(document);
    return Read(in);
}

/// A file of a document, which goes with it.
class File {
public:
    explicit File(const std::string& document) : fPath("/tmp/veltrane-load-" + std::to_string(getpid())) {
        std::ofstream(fPath, std::ios::binary) << document;
    }
    ~File() { std::remove(fPath.c_str()); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    const std::string& Path() const { return fPath; }

private:
    std::string fPath;
};

/// The most memory that this process has had, without that of the one which started it.
long PeakKilobytes() {
    std::ifstream status("/proc/self/status");
    const std::string field = "VmHWM:";
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(field)) {
            return std::atol(line.c_str() + field.size());
        }
    }
    return 0;
}

/// By how much the memory of a process of its own grows at most while it reads a document from a file.
double PeakMegabytes(const char* program, const std::string& what, const std::string& path) {
    int ends[2];
    if (pipe(ends) != 0) {
        return 0.0;
    }
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        execl(program, program, what.c_str(), path.c_str(), static_cast<char*>(nullptr));
        _exit(1);
    }
    close(ends[1]);
    char text[32] = {};
    const ssize_t length = read(ends[0], text, sizeof(text) - 1);
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return length > 0 ? std::atof(text) / 1e3 : 0.0;
}

void LoadTrees(benchmark::State& state, const std::string& document, double nodes) {
    // All sides find the XML platform started.
    ModelFactory::Initialize("");
    double sax = 0.0;
    double dom = 0.0;
    double whole = 0.0;
    double opened = 0.0;
    for (auto _ : state) {
        sax += SecondsOf(1, [&](int) { ParseSaxOnly(document); });
        dom += SecondsOf(1, [&](int) { ParseDomOnly(document); });
        whole += SecondsOf(1, [&](int) { benchmark::DoNotOptimize(Read(document)); });
        opened += SecondsOf(1, [&](int) { benchmark::DoNotOptimize(veltrane::Document::OfBytes(document)); });
    }
    const std::size_t before = LiveBytes();
    const std::unique_ptr<ScoreModel> model = Read(document);
    state.counters["bytes/node"] = static_cast<double>(LiveBytes() - before) / nodes;
    state.counters["document MB"] = static_cast<double>(document.size()) / 1e6;
    const File file(document);
    state.counters["peak MB"] = PeakMegabytes("/proc/self/exe", kPeakOf, file.Path());
    state.counters["opened peak MB"] = PeakMegabytes("/proc/self/exe", kPeakOfOpened, file.Path());
    const auto rounds = static_cast<double>(state.iterations());
    state.counters["SAX ms"] = sax / rounds * 1e3;
    state.counters["DOM ratio"] = dom / sax;
    state.counters["whole ms"] = whole / rounds * 1e3;
    state.counters["ratio"] = whole / sax;
    state.counters["opened ratio"] = opened / sax;
}

void Tree(benchmark::State& state) {
    const auto nodes = static_cast<int>(state.range(0));
    LoadTrees(state, TreeDocument(nodes), nodes);
}

void Forest(benchmark::State& state) {
    const auto trees = static_cast<int>(state.range(0));
    const auto nodes = static_cast<int>(state.range(1));
    LoadTrees(state, ForestDocument(trees, nodes), static_cast<double>(trees) * nodes);
}

void ForestAudit(benchmark::State& state) {
    constexpr double kNodes = 68220;
    LoadTrees(state, ReadFile(VELTRANE_CASES "/models/forest-audit.pmml"), kNodes);
}

constexpr auto kMilliseconds = benchmark::kMillisecond;

BENCHMARK(Tree)->Arg(99999)->Arg(999999)->Unit(kMilliseconds);
BENCHMARK(Forest)->Args({1000, 999})->Unit(kMilliseconds);
BENCHMARK(ForestAudit)->Unit(kMilliseconds);

/// Reads a document from a file in a process that does nothing else, and tells by how much its memory grew at most.
int TellPeak(const char* path, bool opens) {
    ModelFactory::Initialize("");
    const long before = PeakKilobytes();
    if (opens) {
        benchmark::DoNotOptimize(veltrane::Document::OfFile(path));
    } else {
        std::ifstream in(path, std::ios::binary);
        benchmark::DoNotOptimize(Read(in));
    }
    std::printf("%ld", PeakKilobytes() - before);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 3 && (argv[1] == kPeakOf || argv[1] == kPeakOfOpened)) {
        return TellPeak(argv[2], argv[1] == kPeakOfOpened);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
