// What `veltrane score` does with rattle-tree-iris, written by hand: rows of CSV in, the tree, rows of its outputs out.
// It knows which columns there are and that no cell is quoted or missing.
//
// Arguments: the file of cases, the output, and how many threads share the rows of each piece of the file.
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

constexpr std::size_t kPiece = std::size_t{1} << 20U;

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

struct Leaf {
    std::string_view species;
    double shares[3];
    std::string_view node;
};

constexpr Leaf kLeaves[] = {{"setosa", {1, 0, 0}, "2"},
                            {"versicolor", {0, 49.0 / 54, 5.0 / 54}, "6"},
                            {"virginica", {0, 1.0 / 46, 45.0 / 46}, "7"}};

char* Write(std::string_view text, char* to) {
    std::memcpy(to, text.data(), text.size());
    return to + text.size();
}

/// @return behind the cell and its comma
const char* ReadNumber(const char* cell, const char* end, double& number) {
    return std::from_chars(cell, end, number).ptr + 1;
}

/// Scores whole lines.
void ScoreLines(std::string_view lines, std::string& out) {
    constexpr std::size_t kLongestRow = 128;
    const char* at = lines.data();
    const char* const end = at + lines.size();
    while (at < end) {
        double numbers[4];
        for (double& number : numbers) {
            at = ReadNumber(at, end, number);
        }
        const auto* const behind = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        at = behind == nullptr ? end : behind + 1;
        const Leaf& leaf = kLeaves[numbers[2] < 2.45 ? 0 : numbers[3] < 1.75 ? 1 : 2];
        char row[kLongestRow];
        char* next = Write(leaf.species, row);
        *next++ = ',';
        next = Write(leaf.species, next);
        for (const double share : leaf.shares) {
            *next++ = ',';
            next = std::to_chars(next, row + kLongestRow, share).ptr;
        }
        *next++ = ',';
        next = Write(leaf.node, next);
        *next++ = '\n';
        out.append(row, next);
    }
}

/// The end of the last whole line among so many bytes.
std::size_t EndOfLines(std::string_view text, std::size_t bytes) {
    const std::size_t last = text.rfind('\n', bytes == 0 ? 0 : bytes - 1);
    return last == text.npos ? 0 : last + 1;
}

void ScorePiece(std::string_view lines, std::vector<std::string>& outs) {
    std::vector<std::thread> threads;
    std::size_t first = 0;
    for (std::size_t i = 0; i < outs.size(); ++i) {
        const std::size_t end =
            i + 1 == outs.size() ? lines.size() : EndOfLines(lines, lines.size() * (i + 1) / outs.size());
        outs[i].clear();
        threads.emplace_back(ScoreLines, lines.substr(first, end - first), std::ref(outs[i]));
        first = end;
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

int Score(std::FILE* in, std::FILE* to, std::size_t threads) {
    std::vector<std::string> outs(threads);
    std::string piece;
    std::string rest; // of a line
    std::fputs("Species,Predicted_Species,Probability_setosa,Probability_versicolor,Probability_virginica,Node_Id\n",
               to);
    bool isFirst = true;
    for (bool goesOn = true; goesOn;) {
        piece = rest;
        const std::size_t before = piece.size();
        piece.resize(before + kPiece * threads);
        const std::size_t read = std::fread(piece.data() + before, 1, kPiece * threads, in);
        piece.resize(before + read);
        goesOn = read > 0;
        const std::size_t end = goesOn ? EndOfLines(piece, piece.size()) : piece.size();
        rest = piece.substr(end);
        const std::size_t header = isFirst ? piece.find('\n') + 1 : 0;
        isFirst = false;
        ScorePiece(std::string_view(piece).substr(header, end - header), outs);
        for (const std::string& out : outs) {
            std::fwrite(out.data(), 1, out.size(), to);
        }
    }
    return std::fflush(to) == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: csv_by_hand CASES OUTPUT THREADS\n";
        return 2;
    }
    const File in(std::fopen(argv[1], "rb"));
    const File out(std::fopen(argv[2], "wb"));
    const long threads = std::strtol(argv[3], nullptr, 10);
    return in == nullptr || out == nullptr || threads < 1
               ? 2
               : Score(in.get(), out.get(), static_cast<std::size_t>(threads));
}
