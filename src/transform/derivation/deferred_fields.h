#ifndef VELTRANE_TRANSFORM_DEFERRED_FIELDS_H
#define VELTRANE_TRANSFORM_DEFERRED_FIELDS_H

#include "transform/derivation/derivation.h"
#include "transform/derivation/field_evaluation.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace veltrane::transform {

/// The fields below a field that lies too deep for the stack. They wait in a list here instead of for each other on the
/// stack.
///
/// A field is evaluated up to the first other one that it asks for, and is given up then. That one is evaluated in the
/// same way, and then the field once more from its start, with the answer that it asked for, and so on until it asks
/// for nothing more. An answer that is good for the case stands in its field. Any other is given again without a new
/// evaluation, so that histories move on as often as if the fields had waited on the stack, and the results that it
/// finds in the fields it has asked are those that it would have found then.
class DeferredFields {
public:
    explicit DeferredFields(Derivation& derivation) : fDerivation(derivation) { derivation.deferred = this; }
    ~DeferredFields();
    DeferredFields(const DeferredFields&) = delete;
    DeferredFields& operator=(const DeferredFields&) = delete;

    /// @return borrowed from the field
    const MCVeltrane_900::ScoreValue* Evaluate(FieldEvaluation& field);

    /// What the field that is being evaluated gets when it asks for another one; null when it is given up now, or has
    /// been before.
    const MCVeltrane_900::ScoreValue* Ask(FieldEvaluation& field);

    bool IsGivenUp() const { return fAsked != nullptr; }

    /// How many answers the field has used. A field that must not be given up halfway asks for all that it needs, goes
    /// back to where it was and asks again.
    std::size_t Used() const { return fWaiting.back().used; }
    void GoBack(std::size_t used) { fWaiting.back().used = used; }

private:
    struct Answer {
        FieldEvaluation* field;
        std::unique_ptr<MCVeltrane_900::ScoreValue> value;  ///< what its evaluation gave
        std::unique_ptr<MCVeltrane_900::ScoreValue> latest; ///< what stood in it when the last answer was found
    };
    struct Waiting {
        FieldEvaluation* field;
        std::vector<Answer> answers;
        std::size_t used = 0;
    };

    void Push(FieldEvaluation& field);
    void Pop();
    void Attempt();
    void TakeAnswer(FieldEvaluation& field);

    Derivation& fDerivation;
    std::vector<Waiting> fWaiting;
    FieldEvaluation* fAsked = nullptr; ///< what the field asked for that is given up
};

} // namespace veltrane::transform

#endif
