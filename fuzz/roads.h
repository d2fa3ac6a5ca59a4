#ifndef VELTRANE_FUZZ_ROADS_H
#define VELTRANE_FUZZ_ROADS_H

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <veltrane/column_scorer.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The two roads of a document, case by case and in columns, over rows that the bytes of a run make: what they give has
/// the same bits.
namespace veltrane::fuzz {

/// Numbers that a run's bytes decide.
class Chance {
public:
    explicit Chance(std::string_view bytes);
    std::size_t Below(std::size_t bound);

private:
    std::uint64_t fState;
};

/// What a row has in one column, all its bits.
struct Cell {
    enum class Kind { MISSING, NUMBER, TEXT };

    Kind kind = Kind::MISSING;
    std::uint64_t bits = 0;
    std::string text;

    static Cell OfNumber(double number); ///< missing for one that is not a number
    static Cell OfText(std::string_view text);
    bool operator==(const Cell& other) const = default;
};

/// What a row gives: a cell for each of the outputs, all of them missing where there is no prediction.
struct Answer {
    bool isScored = true;
    std::vector<Cell> cells;
    bool operator==(const Answer& other) const = default;
};

/// Rows for the fields of a scorer: values that the document mentions, plain ones and odd ones, in columns and as
/// cases.
class Rows {
public:
    Rows(const ColumnScorer& scorer, std::string_view document, Chance& chance);

    std::size_t Count() const { return fCount; }

    /// A case as a host hands it over.
    std::unique_ptr<MCVeltrane_900::CaseRecord> Record(std::size_t row) const;

    /// Scores all rows in blocks of up to `length` rows.
    /// @param isSparse whether some of the results are asked for by nobody; these are missing in the answers
    std::vector<Answer> InBlocks(ColumnScorer::State& state, std::size_t length, bool hasDictionaries, bool isSparse);

private:
    struct Field {
        DataType type;
        std::vector<std::string> kept; ///< the text of each row
        std::vector<double> numbers;
        std::vector<std::string_view> texts;
        std::vector<std::int32_t> codes;
        std::vector<std::string_view> dictionary;
        std::vector<std::size_t> unreadable; ///< rows
    };
    struct Results;

    void Fill(Field& field, const std::vector<std::string_view>& words, Chance& chance) const;
    void ScoreBlock(ColumnScorer::State& state, std::size_t first, std::size_t rows, bool hasDictionaries,
                    Results& results) const;

    const ColumnScorer& fScorer;
    std::size_t fCount;
    std::vector<Field> fFields;
};

/// The answer of a case.
using CaseRoad = std::function<Answer(const MCVeltrane_900::CaseRecord& record)>;

/// Requires that blocks of any length, a case that comes first and all cases one after the other give the same.
/// @param cases answers cases; none came before
void RequireSameRoads(const ColumnScorer& scorer, const CaseRoad& cases, std::string_view document);

/// The same for a model and the scorer that its plug-in gives out for it.
void RequireSameRoads(MCVeltrane_900::ScoreModel& model, std::string_view document);

/// The same for the derived fields of a document.
/// @throws VTException for a document that isn't read
void RequireSameTransformations(const std::string& document);

} // namespace veltrane::fuzz

#endif
