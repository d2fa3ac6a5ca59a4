#ifndef VELTRANE_PLUGINS_KIT_SCORER_H
#define VELTRANE_PLUGINS_KIT_SCORER_H

#include "kit/columns/block.h"
#include "kit/inputs/case_view.h"
#include "kit/results/prediction.h"
#include "kit/results/prediction_block.h"
#include "kit/results/target.h"

#include <iosfwd>
#include <memory>

namespace veltrane_kit {

struct ModelParts;
class BlockScorer;

/// What a kind of model makes of a case: the part of a model that its own elements tell. It is built with the document
/// and doesn't change from then on, so threads share it; what a case writes stands in a state of each.
class Scorer {
public:
    /// What one thread needs beside the scorer, memory above all. A kind that needs some derives its own.
    class State {
    public:
        virtual ~State() = default;
    };

    virtual ~Scorer() = default;

    virtual std::unique_ptr<State> NewState() const { return std::make_unique<State>(); }

    /// Predicts one case. It must not throw and should allocate nothing.
    /// @param fields     the case, by the slots that the scorer asked for when it was built
    /// @param prediction cleared; to be filled. What it borrows stays until the state's next case.
    /// @param state      of this scorer; one thread at a time
    /// @return false when the case can't be scored; `prediction.lacking` tells what value it would take, if one would
    ///         do
    virtual bool Predict(const CaseView& fields, Prediction& prediction, State& state) const = 0;

    /// The form of the scorer that predicts blocks of cases, for whoever has columns; it borrows the scorer. A kind
    /// without one of its own is asked row by row.
    virtual std::unique_ptr<const BlockScorer> MakeBlockScorer() const;

    /// Whether a prediction depends on the cases before, as the state has them: they have to come in their order, and
    /// a case that the mining schema refuses is none.
    virtual bool LooksBack() const { return false; }

    /// Whether a classification may have confidences apart from its probabilities.
    virtual bool MayHaveConfidences() const { return true; }

    /// Whether a classification may have probabilities; without them predictions have no room for any.
    virtual bool MayHaveProbabilities() const { return true; }

    /// Whether predictions may have more than number, category, probabilities, confidences and entity: grounds,
    /// affinities, further targets. Blocks of predictions are shared among those that don't.
    virtual bool MayHaveMore() const { return false; }

    /// Writes what Display of a model shows of the scorer itself, below the common part.
    virtual void Display(std::ostream& /*out*/, const Target& /*target*/) const {}
};

/// Predicts blocks of cases, each row as its scorer does, bit for bit.
class BlockScorer {
public:
    virtual ~BlockScorer() = default;

    /// @param block       the fields of the rows
    /// @param predictions to be filled, `predicted` for each row
    /// @param state       of the scorer
    virtual void Predict(Block& block, PredictionBlock& predictions, Scorer::State& state) const = 0;
};

/// Predicts one row of a block by the scorer.
void PredictRow(const Scorer& scorer, Block& block, std::size_t row, PredictionBlock& predictions,
                Scorer::State& state);

/// Makes the scorer of a kind of model from its own elements.
/// @param element the model's element
/// @param parts   dictionaries, mining schema, inputs and target, read; outputs are read later, when the target's
///                categories are known
/// @throws VTException for what the document has wrong
using MakeScorer = std::unique_ptr<const Scorer> (*)(const Element& element, ModelParts& parts);

} // namespace veltrane_kit

#endif
