#ifndef VELTRANE_TESTS_MODELS_SCORING_H
#define VELTRANE_TESTS_MODELS_SCORING_H

#include "support/faults/fault.h"
#include "support/numbers.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreResult.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

/// Reading models through the factory and the real plug-ins, and scoring cases that are written as texts.
namespace veltrane::tests {

/// A case: the text of each field by its name; "" for a missing value.
using Case = std::map<std::string, std::string>;

/// A model of a document, with a result of its own.
class Scored {
public:
    explicit Scored(const std::string& document);
    explicit Scored(std::unique_ptr<MCVeltrane_900::ScoreModel> model);

    MCVeltrane_900::ScoreModel& Model() { return *fModel; }
    MCVeltrane_900::ScoreResult& Result() { return *fResult; }

    /// Scores a case whose record has the fields of the data dictionary, each with a value of its kind, or none.
    MCScore::MCStatus Score(const Case& values);

    /// The predicted value as a text, "" for none, and as a number, the missing one for none or a text.
    std::string Text() const;
    double Number() const;

    /// The same of an output field.
    std::string Text(const std::string& output);
    double Number(const std::string& output);

    /// The probability of a category that is a text.
    double Probability(const std::string& category) const;

private:
    std::unique_ptr<MCVeltrane_900::ScoreModel> fModel;
    std::unique_ptr<MCVeltrane_900::ScoreResult> fResult;
};

/// The code of the status of a case without a prediction.
constexpr long kNoPrediction = 90027;

/// Reads a model through the factory, with the list of all plug-ins of the tree.
std::unique_ptr<MCVeltrane_900::ScoreModel> ReadModel(const std::string& document);

/// A record for a model: a value of its kind for each field of the dictionary that the case names.
std::unique_ptr<MCVeltrane_900::CaseRecord> MakeRecord(const MCVeltrane_900::ScoreModel& model, const Case& values);

std::string ReadFile(const std::string& path);

/// The rows of a simple CSV file, by the names in its header.
std::vector<Case> ReadRows(const std::string& path);

/// The number that a text starts with; one below the range of doubles is 0.
double ToNumber(const std::string& text);

/// Expects that a document with this change is refused.
void ExpectRefused(const std::string& document, const FaultyChange& fault, const char* file = __builtin_FILE(),
                   int line = __builtin_LINE());

/// Replaces the only occurrence of a text; fails the test when there isn't exactly one.
std::string Replaced(std::string text, const std::string& from, const std::string& to);

} // namespace veltrane::tests

#endif
