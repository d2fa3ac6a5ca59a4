#ifndef VELTRANE_PLUGINS_FOREST_ROW_SETS_H
#define VELTRANE_PLUGINS_FOREST_ROW_SETS_H

#include <cstddef>
#include <cstdint>

namespace veltrane_forest {

inline constexpr std::size_t kRowsOfWord = 64;
inline constexpr std::size_t kWordsOfSet = 4;
inline constexpr std::size_t kRowsOfSet = kRowsOfWord * kWordsOfSet;

/// Some of 256 rows: a bit for each.
struct alignas(32) RowSet {
    std::uint64_t words[kWordsOfSet] = {};
};

/// What a run of questions is about. A question is a word: of an ORDER and a RANGE the lowest mark in its lower half
/// and how far the range goes on behind it in the upper one, of BITS a bit for each of 32 marks, of a POOL the place of
/// the set there. An ORDER begins at mark 0.
enum class QuestionKind : std::uint8_t { ORDER, RANGE, BITS, POOL };

/// Questions about one feature that lie one behind the other.
struct QuestionRun {
    std::uint32_t feature;
    std::uint32_t count;
    QuestionKind kind;
};

/// How a processor works on sets of rows.
struct RowVectors {
    /// Asks the questions of a run, of any kind but a POOL.
    /// @param questions the words of the run
    /// @param places    of the answers in `sets`: the rows that say yes, and any others behind the last row
    /// @param marks     of the feature, with room for a multiple of 64 rows
    /// @param rows      kRowsOfSet at most
    void (*ask)(const QuestionRun& run, const std::uint32_t* questions, const std::uint16_t* places,
                const std::uint16_t* marks, std::size_t rows, RowSet* sets);
    /// Parts the rows of a tree. Set `i + 1` has the answers to step i, which parts set `from[i]`.
    /// @param steps 255 at most
    /// @param exits room for kRowsOfSet; by row, the set that it comes to
    void (*part)(const std::uint8_t* from, std::size_t steps, std::size_t rows, RowSet* sets, std::uint8_t* exits);
    /// Counts the cuts that lie below numbers; null where a processor has no vectors for it that are faster.
    /// @param cuts    sorted, one at least and fewer than a mark may be
    /// @param missing the mark of what isn't a number
    /// @param marks   by row; with room for a multiple of 64 rows, which are set too
    void (*rank)(const double* cuts, std::size_t count, const double* numbers, std::size_t rows, std::uint16_t missing,
                 std::uint16_t* marks);
};

/// The vectors of AVX2 or AVX-512; null where the processor doesn't have them.
const RowVectors* RowVectorsOfAvx2();
const RowVectors* RowVectorsOfAvx512();

} // namespace veltrane_forest

#endif
