#include "groves.h"

#include <algorithm>
#include <tuple>

namespace veltrane_forest {

namespace {

/// The sets of rows of a grove lie in the nearest cache together with marks.
constexpr std::size_t kMostSets = 512;

} // namespace

/// A set of a pool that a word has room for is told by its bits.
Groves::Asked Groves::AskedBy(const Question& question, Sets sets, const std::vector<std::uint32_t>& pool) {
    if (!question.isSet) {
        const QuestionKind kind = question.low == 0 ? QuestionKind::ORDER : QuestionKind::RANGE;
        return {question.feature, kind, question.low | question.reach << 16U, 0};
    }
    if (sets == Sets::OF_BITS) {
        return {question.feature, QuestionKind::BITS, question.bits, 0};
    }
    const std::uint32_t size = pool[question.bits];
    if (size >= kMarksOfWord) {
        return {question.feature, QuestionKind::POOL, question.bits, 0};
    }
    const std::uint32_t word = pool[question.bits + 1];
    const std::uint32_t missing = word >> size & 1U;
    const std::uint32_t others = word & ((std::uint32_t{1} << size) - 1);
    return {question.feature, QuestionKind::BITS, others | missing << (kMarksOfWord - 1), 0};
}

void Groves::Add(const Sketch& sketch, const Crown& crown, Sets sets, const std::vector<std::uint32_t>& pool) {
    if (fSets + crown.exits.size() > kMostSets) {
        CloseGrove();
    }
    fTrees.push_back({static_cast<std::uint32_t>(fFrom.size()), static_cast<std::uint16_t>(crown.steps.size()),
                      static_cast<std::uint16_t>(fSets), static_cast<std::uint32_t>(fGroves.size()), crown.isWhole});
    for (std::size_t i = 0; i < crown.steps.size(); ++i) {
        Asked asked = AskedBy(sketch.steps[crown.steps[i]].question, sets, pool);
        asked.place = static_cast<std::uint16_t>(fSets + i + 1);
        fAsked.push_back(asked);
    }
    fFrom.insert(fFrom.end(), crown.from.begin(), crown.from.end());
    fSets += crown.exits.size();
    fMostSets = std::max(fMostSets, fSets);
}

void Groves::CloseGrove() {
    std::stable_sort(fAsked.begin(), fAsked.end(), [](const Asked& left, const Asked& right) {
        return std::tie(left.feature, left.kind) < std::tie(right.feature, right.kind);
    });
    fGroves.push_back({fFirst, fRuns.size(), 0, fQuestions.size()});
    for (const Asked& asked : fAsked) {
        if (fGroves.back().runs == 0 || fRuns.back().feature != asked.feature || fRuns.back().kind != asked.kind) {
            fRuns.push_back({asked.feature, 0, asked.kind});
            ++fGroves.back().runs;
        }
        ++fRuns.back().count;
        fQuestions.push_back(asked.question);
        fPlaces.push_back(asked.place);
    }
    fAsked.clear();
    fSets = 0;
    fFirst = fTrees.size();
}

void Groves::Settle() {
    CloseGrove();
    fGroves.shrink_to_fit();
    fRuns.shrink_to_fit();
    fQuestions.shrink_to_fit();
    fPlaces.shrink_to_fit();
    fFrom.shrink_to_fit();
    fTrees.shrink_to_fit();
    fAsked = std::vector<Asked>();
}

void Groves::Ask(std::size_t tree, const RowVectors& vectors, const std::uint32_t* pool, const std::uint16_t* marks,
                 std::size_t stride, std::size_t rows, RowSet* sets) const {
    const Grove& grove = fGroves[fTrees[tree].grove];
    const std::uint32_t* questions = fQuestions.data() + grove.question;
    const std::uint16_t* places = fPlaces.data() + grove.question;
    for (std::size_t i = grove.run; i < grove.run + grove.runs; ++i) {
        const QuestionRun& run = fRuns[i];
        const std::uint16_t* const own = marks + run.feature * stride;
        if (run.kind == QuestionKind::POOL) {
            for (std::uint32_t q = 0; q < run.count; ++q) {
                RowSet& set = sets[places[q]];
                set = RowSet();
                for (std::size_t row = 0; row < rows; ++row) {
                    const std::uint64_t isIn = IsInPool(pool + questions[q], own[row]) ? 1 : 0;
                    set.words[row / kRowsOfWord] |= isIn << (row % kRowsOfWord);
                }
            }
        } else {
            vectors.ask(run, questions, places, own, rows, sets);
        }
        questions += run.count;
        places += run.count;
    }
}

std::size_t Groves::Bytes() const {
    return fGroves.capacity() * sizeof(Grove) + fRuns.capacity() * sizeof(QuestionRun) +
           fQuestions.capacity() * sizeof(std::uint32_t) + fPlaces.capacity() * sizeof(std::uint16_t) +
           fFrom.capacity() + fTrees.capacity() * sizeof(Tree);
}

} // namespace veltrane_forest
