#ifndef VELTRANE_TESTS_MODELS_MODEL_ROWS_H
#define VELTRANE_TESTS_MODELS_MODEL_ROWS_H

#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <veltrane/column_scorer.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// A model of a plug-in over random cells, in columns and case by case.
namespace veltrane::tests {

/// The cells of one input field.
struct ModelCells {
    std::vector<std::string> kept;       ///< the text of each row, "" for a missing one
    std::vector<double> numbers;         ///< of a field of any other type than STRING
    std::vector<std::string_view> texts; ///< of a field of type STRING
    std::vector<std::int32_t> codes;
    std::vector<std::string_view> dictionary;
    std::vector<std::size_t> unreadable; ///< rows
};

/// What a model gives for rows, all of it as texts that tell every bit.
using ModelAnswers = std::vector<std::string>;

/// The values that a document mentions.
std::vector<std::string> WordsOf(const std::string& document);

class ModelRows {
public:
    /// @param document taken by the factory and the plug-ins of the tree
    /// @throws VTException for a document that is refused
    explicit ModelRows(const std::string& document);

    /// @param model of that document
    ModelRows(const std::string& document, std::unique_ptr<MCVeltrane_900::ScoreModel> model);
    ~ModelRows();

    const ColumnScorer& Scorer() const { return *fScorer; }
    std::size_t Rows() const { return fRows; }

    /// Other cells: values that the document mentions, and some that are odd.
    void Fill(std::mt19937_64& random, std::size_t rows);

    /// Numbers of every size, infinite ones too, and what is missing; texts as Fill() has them.
    void FillHostile(std::mt19937_64& random, std::size_t rows);

    /// The answers of the model case by case.
    ModelAnswers CaseByCase() const;

    /// Those of the scorer in blocks of a length, the first of which may be shorter.
    ModelAnswers InBlocks(ColumnScorer::State& state, std::size_t length, std::size_t offset, bool hasDictionary) const;

private:
    void ScoreBlock(ColumnScorer::State& state, std::size_t first, std::size_t rows, bool hasDictionary,
                    ModelAnswers& answers) const;
    std::unique_ptr<MCVeltrane_900::ScoreCaseRecord> RecordOf(std::size_t row) const;

    std::string fDocument;
    std::unique_ptr<MCVeltrane_900::ScoreModel> fModel;
    std::unique_ptr<ColumnScorer> fScorer;
    std::vector<std::string> fWords; ///< of the document, in quotes there
    std::size_t fRows = 0;
    std::vector<ModelCells> fCells;
};

} // namespace veltrane::tests

#endif
