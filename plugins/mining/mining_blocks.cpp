// Models of models for blocks of cases: segment by segment, each for all rows at once where many belong to it.
#include "kit/conditions/decide.h"
#include "mining_scorer.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace veltrane_mining {

using veltrane_kit::Block;
using veltrane_kit::BlockScorer;
using veltrane_kit::CaseView;
using veltrane_kit::FieldColumn;
using veltrane_kit::ModelPlan;
using veltrane_kit::Prediction;
using veltrane_kit::PredictionBlock;
using veltrane_kit::RowView;
using veltrane_kit::Test;
using veltrane_kit::Truth;
using veltrane_kit::Value;

namespace {

/// A segment that so small a part of the rows belongs to is asked row by row.
constexpr std::size_t kFewRows = 8;

} // namespace

/// What a thread needs for blocks.
struct MiningScorer::BlockRoom : State {
    /// The values of a field that segments tell.
    struct Told {
        explicit Told(std::size_t rows) : numbers(rows), texts(rows) {}

        std::vector<double> numbers;
        std::vector<std::string_view> texts;
    };

    explicit BlockRoom(std::size_t rows) : asked(rows), isOver(rows), refused(rows) {}

    std::vector<std::uint8_t> asked;           ///< by row, whether the segment at hand is
    std::vector<std::uint8_t> isOver;          ///< whether nothing changes the row's prediction any more
    std::vector<std::uint8_t> refused;         ///< whether the segment refuses the row
    std::vector<PredictionBlock*> predictions; ///< of each segment; those of one kind share one, unless they tell more
    std::map<std::tuple<std::size_t, bool, const ModelPlan*>, std::unique_ptr<PredictionBlock>> kinds;
    std::vector<Told> told; ///< of each field that segments tell
    std::string entity;
};

class MiningScorer::Blocks : public BlockScorer {
public:
    explicit Blocks(const MiningScorer& scorer) : fScorer(scorer), fSegmentation(scorer.fSegmentation) {
        for (const Segment& segment : fSegmentation.segments) {
            const ModelPlan& plan = *segment.plan;
            fScorers.push_back(plan.GetScorer().MakeBlockScorer());
            auto standIn = std::make_unique<Prediction>();
            standIn->Clear(plan.Probabilities());
            const bool hasOne = plan.PredictDefault(*standIn);
            plan.CompleteOthers(fOtherDefaults.emplace_back());
            fDefaults.push_back(hasOne ? std::move(standIn) : nullptr);
            std::vector<std::size_t>& places = fToldPlaces.emplace_back();
            for (const Segment::Told& told : segment.told) {
                places.push_back(PlaceOf(told.to));
            }
        }
    }

    void Predict(Block& block, PredictionBlock& predictions, State& state) const override {
        auto& own = static_cast<Parts&>(state);
        BlockRoom& room = RoomFor(own, block);
        std::fill_n(room.isOver.begin(), block.Rows(), std::uint8_t{0});
        std::fill_n(predictions.predicted.begin(), block.Rows(), std::uint8_t{0});
        ShowTold(block, room);
        if (!IsSelected()) {
            own.combination.Start(fSegmentation, predictions.Categories(), block.Rows());
        }
        for (std::size_t i = 0; i < fSegmentation.segments.size(); ++i) {
            const std::size_t count = Choose(fSegmentation.segments[i], block, room);
            if (count == 0) {
                continue;
            }
            if (count * kFewRows < block.Rows()) {
                AskRows(i, block, own, room);
            } else {
                AskBlock(i, block, own, room);
            }
            if (i >= fSegmentation.ahead) {
                TakeRows(i, block, predictions, own, room);
            }
        }
        if (!IsSelected()) {
            FinishRows(block, predictions, own, room);
        }
    }

private:
    const std::vector<int>& ToldSlots() const { return fScorer.fInputs.ToldSlots(); }

    std::size_t PlaceOf(int slot) const {
        const std::vector<int>& slots = ToldSlots();
        return static_cast<std::size_t>(std::find(slots.begin(), slots.end(), slot) - slots.begin());
    }

    bool IsSelected() const { return fSegmentation.method >= Method::SELECT_FIRST; }

    BlockRoom& RoomFor(Parts& state, const Block& block) const {
        if (state.blocks == nullptr) {
            auto room = std::make_unique<BlockRoom>(block.MostRows());
            for (const Segment& segment : fSegmentation.segments) {
                const ModelPlan& plan = *segment.plan;
                const std::size_t categories = plan.Probabilities();
                const bool hasConfidences = categories > 0 && plan.GetScorer().MayHaveConfidences();
                const ModelPlan* alone = plan.GetScorer().MayHaveMore() ? &plan : nullptr;
                std::unique_ptr<PredictionBlock>& kind = room->kinds[{categories, hasConfidences, alone}];
                if (kind == nullptr) {
                    kind = std::make_unique<PredictionBlock>(categories, hasConfidences, block.MostRows());
                }
                room->predictions.push_back(kind.get());
            }
            room->told.assign(ToldSlots().size(), BlockRoom::Told(block.MostRows()));
            state.blocks = std::move(room);
        }
        return static_cast<BlockRoom&>(*state.blocks);
    }

    /// Marks the rows that a segment is asked for.
    /// @return how many
    std::size_t Choose(const Segment& segment, const Block& block, BlockRoom& room) const {
        const bool asksAll = fSegmentation.method == Method::SELECT_ALL;
        std::size_t count = 0;
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            bool isAsked = !block.IsRefused(row) && (asksAll || room.isOver[row] == 0);
            if (isAsked && segment.condition.test != Test::ALWAYS) {
                bool usedSurrogate = false;
                isAsked = fSegmentation.conditions.Decide(segment.condition, RowView(block, row), usedSurrogate) ==
                          Truth::YES;
            }
            room.asked[row] = isAsked ? 1 : 0;
            count += isAsked ? 1 : 0;
        }
        return count;
    }

    void AskRows(std::size_t index, Block& block, Parts& state, BlockRoom& room) const {
        PredictionBlock& predictions = *room.predictions[index];
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            if (room.asked[row] == 0) {
                continue;
            }
            if (fScorer.Ask(index, CaseView(block.Row(row)), state)) {
                predictions.Set(row, state.prediction, block.Arena());
            } else {
                predictions.predicted[row] = 0;
            }
            KeepTold(index, row, block, room);
        }
        SetToldCodes(index, block);
    }

    void AskBlock(std::size_t index, Block& block, Parts& state, BlockRoom& room) const {
        const ModelPlan& plan = *fSegmentation.segments[index].plan;
        std::fill_n(room.refused.begin(), block.Rows(), std::uint8_t{0});
        plan.GetInputs().ReadPart(block, room.refused.data());
        PredictionBlock& predictions = *room.predictions[index];
        std::fill(predictions.standardErrors.begin(), predictions.standardErrors.end(), Prediction::kNone);
        fScorers[index]->Predict(block, predictions, *state.parts[index].scorer);
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            if (room.asked[row] == 0) {
                continue;
            }
            if (room.refused[row] != 0) {
                predictions.ClearOthers(row);
            }
            if (Conclude(plan, row, room.refused[row] != 0, predictions)) {
                predictions.CompleteOthers(row, fOtherDefaults[index]);
                continue;
            }
            predictions.predicted[row] = 0;
            if (fDefaults[index] != nullptr) {
                predictions.SetDefault(row, *fDefaults[index], block.Arena());
            }
        }
        TellRows(index, block, state, room);
    }

    /// What ModelPlan::Predict makes of what the scorer says of a case.
    static bool Conclude(const ModelPlan& plan, std::size_t row, bool isRefused, PredictionBlock& predictions) {
        if (predictions.predicted[row] == 0 || isRefused) {
            return false;
        }
        if (plan.IsClassification()) {
            return predictions.categories[row] != Prediction::kNoCategory;
        }
        double& number = predictions.numbers[row];
        if (number == Prediction::kNone) {
            return false;
        }
        number = plan.GetTarget().Adjust(number);
        return std::isfinite(number);
    }

    /// Has others see what a segment tells of the rows that it was asked for.
    void TellRows(std::size_t index, Block& block, Parts& state, BlockRoom& room) const {
        const Segment& segment = fSegmentation.segments[index];
        const PredictionBlock& predictions = *room.predictions[index];
        for (std::size_t row = 0; !segment.told.empty() && row < block.Rows(); ++row) {
            if (room.asked[row] == 0) {
                continue;
            }
            const bool isPredicted = predictions.predicted[row] != 0;
            state.prediction.Clear(predictions.Categories());
            if (isPredicted) {
                predictions.Get(row, state.prediction, room.entity);
            }
            fScorer.Tell(segment, isPredicted, block.Row(row), state.parts[index], state);
            KeepTold(index, row, block, room);
        }
        SetToldCodes(index, block);
    }

    /// All fields that segments tell, missing at first.
    void ShowTold(Block& block, BlockRoom& room) const {
        for (std::size_t place = 0; place < ToldSlots().size(); ++place) {
            BlockRoom::Told& told = room.told[place];
            FieldColumn& field = block.Field(ToldSlots()[place]);
            field.type = fScorer.fInputs.Type(ToldSlots()[place]);
            if (veltrane_kit::IsText(field.type)) {
                std::fill_n(told.texts.begin(), block.Rows(), std::string_view());
                field.texts = told.texts.data();
            } else {
                std::fill_n(told.numbers.begin(), block.Rows(), veltrane_kit::kMissing);
                field.numbers = told.numbers.data();
            }
        }
    }

    void KeepTold(std::size_t index, std::size_t row, Block& block, BlockRoom& room) const {
        for (const std::size_t place : fToldPlaces[index]) {
            const int slot = ToldSlots()[place];
            const Value& value = block.Case().Field(slot);
            if (block.Field(slot).texts != nullptr) {
                room.told[place].texts[row] = value.isMissing ? std::string_view() : block.Arena().Keep(value.text);
            } else {
                room.told[place].numbers[row] = value.isMissing ? veltrane_kit::kMissing : value.number;
            }
        }
    }

    void SetToldCodes(std::size_t index, Block& block) const {
        for (const Segment::Told& told : fSegmentation.segments[index].told) {
            fScorer.fInputs.SetCodes(told.to, block);
        }
    }

    /// Makes the predictions of a segment part of those of the whole.
    void TakeRows(std::size_t index, Block& block, PredictionBlock& predictions, Parts& state, BlockRoom& room) const {
        const Segment& segment = fSegmentation.segments[index];
        const PredictionBlock& own = *room.predictions[index];
        const bool isReturned = fSegmentation.missing == MissingPrediction::RETURN_MISSING;
        if (!IsSelected()) {
            state.combination.Add(fSegmentation, segment, own, room.asked.data());
        }
        for (std::size_t row = 0; row < block.Rows() && (IsSelected() || isReturned); ++row) {
            if (room.asked[row] == 0) {
                continue;
            }
            if (!IsSelected()) {
                room.isOver[row] = own.predicted[row] != 0 ? room.isOver[row] : 1;
            } else if (fSegmentation.method == Method::MODEL_CHAIN) {
                ChainRow(segment, row, block, own, predictions, state, room);
            } else {
                SelectRow(segment, row, block, own, predictions, state, room);
            }
        }
    }

    void TakeRow(const Segment& segment, std::size_t row, Block& block, const PredictionBlock& own,
                 PredictionBlock& predictions, Parts& state, BlockRoom& room) const {
        own.Get(row, state.prediction, room.entity);
        predictions.scratch.Clear(predictions.Categories());
        fScorer.Take(segment, state, predictions.scratch);
        predictions.Set(row, predictions.scratch, block.Arena());
    }

    /// See MiningScorer::Chain.
    void ChainRow(const Segment& segment, std::size_t row, Block& block, const PredictionBlock& own,
                  PredictionBlock& predictions, Parts& state, BlockRoom& room) const {
        if (own.predicted[row] != 0 && segment.predictsTarget) {
            TakeRow(segment, row, block, own, predictions, state, room);
        } else if (own.predicted[row] != 0 || fSegmentation.missing != MissingPrediction::SKIP_SEGMENT) {
            predictions.predicted[row] = 0;
            const bool isReturned = fSegmentation.missing == MissingPrediction::RETURN_MISSING;
            room.isOver[row] = own.predicted[row] == 0 && isReturned ? 1 : 0;
        }
    }

    /// See MiningScorer::Select.
    void SelectRow(const Segment& segment, std::size_t row, Block& block, const PredictionBlock& own,
                   PredictionBlock& predictions, Parts& state, BlockRoom& room) const {
        const bool isAnswered = own.predicted[row] != 0;
        if (isAnswered && room.isOver[row] == 0) {
            TakeRow(segment, row, block, own, predictions, state, room);
            room.isOver[row] = 1;
        } else if (!isAnswered && fSegmentation.missing == MissingPrediction::RETURN_MISSING) {
            predictions.predicted[row] = 0;
            room.isOver[row] = 1;
        } else if (!isAnswered && fSegmentation.missing == MissingPrediction::CONTINUE) {
            room.isOver[row] = 1;
        }
    }

    void FinishRows(Block& block, PredictionBlock& predictions, Parts& state, const BlockRoom& room) const {
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            predictions.scratch.Clear(predictions.Categories());
            if (room.isOver[row] == 0 && state.combination.Finish(fSegmentation, predictions.scratch, row)) {
                predictions.Set(row, predictions.scratch, block.Arena());
            }
        }
    }

    const MiningScorer& fScorer;
    const Segmentation& fSegmentation;
    std::vector<std::unique_ptr<const BlockScorer>> fScorers;
    std::vector<std::unique_ptr<const Prediction>> fDefaults; ///< null for a segment without one
    std::vector<std::vector<Prediction>> fOtherDefaults;      ///< of the further targets of each segment
    std::vector<std::vector<std::size_t>> fToldPlaces;        ///< of each segment, among the fields that segments tell
};

/// The segments as one forest, for the rows that don't go segment by segment.
class MiningScorer::FlatBlocks : public BlockScorer {
public:
    explicit FlatBlocks(const MiningScorer& scorer) : fScorer(scorer), fFlat(*scorer.fFlat), fSegments(scorer) {}

    void Predict(Block& block, PredictionBlock& predictions, State& state) const override {
        auto& own = static_cast<Parts&>(state);
        fFlat.Look(block, own.flat);
        if (CountUnplain(block, own.flat) * kFewRows > block.Rows()) {
            fSegments.Predict(block, predictions, state);
            return;
        }
        own.combination.Start(fScorer.fSegmentation, predictions.Categories(), block.Rows());
        fFlat.Combine(block.Rows(), own.flat, own.combination);
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            predictions.predicted[row] = 0;
            if (block.IsRefused(row)) {
                continue;
            }
            Prediction& prediction = predictions.scratch;
            prediction.Clear(predictions.Categories());
            if (own.flat.unplain[row] == 0 && own.combination.Finish(fScorer.fSegmentation, prediction, row)) {
                predictions.Set(row, prediction, block.Arena());
            }
        }
        PredictUnplain(block, predictions, own);
    }

private:
    static std::size_t CountUnplain(const Block& block, const FlatEnsemble::Room& room) {
        std::size_t count = 0;
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            count += room.unplain[row] != 0 && !block.IsRefused(row) ? 1 : 0;
        }
        return count;
    }

    /// What is combined of the other rows isn't needed any more.
    void PredictUnplain(Block& block, PredictionBlock& predictions, Parts& state) const {
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            if (state.flat.unplain[row] == 0 || block.IsRefused(row)) {
                continue;
            }
            Prediction& prediction = predictions.scratch;
            prediction.Clear(predictions.Categories());
            if (fScorer.PredictBySegments(CaseView(block.Row(row)), prediction, state)) {
                predictions.Set(row, prediction, block.Arena());
            }
        }
    }

    const MiningScorer& fScorer;
    const FlatEnsemble& fFlat;
    Blocks fSegments;
};

std::unique_ptr<const BlockScorer> MiningScorer::MakeBlockScorer() const {
    if (fFlat != nullptr) {
        return std::make_unique<const FlatBlocks>(*this);
    }
    return std::make_unique<const Blocks>(*this);
}

} // namespace veltrane_mining
