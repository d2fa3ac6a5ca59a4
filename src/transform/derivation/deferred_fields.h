#ifndef VELTRANE_TRANSFORM_DEFERRED_FIELDS_H
#define VELTRANE_TRANSFORM_DEFERRED_FIELDS_H

#include "transform/derivation/derivation.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace veltrane::transform {

/// What lies between the evaluation of a field and those that ask for it.
struct FieldEvaluation {
    static const MCVeltrane_900::ScoreValue* Nested(MCVeltrane_900::TransformVar& var, Derivation& derivation,
                                                    int levels) {
        return var.EvaluateNested(derivation, levels);
    }
    static const MCVeltrane_900::TransformationDictionary* Dictionary(const ApplyCase& oneCase) {
        return MCVeltrane_900::TransformVar::DerivedFields(oneCase);
    }
    static Derivation& Of(const MCVeltrane_900::TransformationDictionary& fields) { return *fields.fDerivation; }
};

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
    const MCVeltrane_900::ScoreValue* Evaluate(MCVeltrane_900::TransformVar& var);

    /// What the field that is being evaluated gets when it asks for another one; null when it is given up now, or has
    /// been before.
    const MCVeltrane_900::ScoreValue* Ask(MCVeltrane_900::TransformVar& var);

    bool IsGivenUp() const { return fAsked != nullptr; }

    /// How many answers the field has used. A field that must not be given up halfway asks for all that it needs, goes
    /// back to where it was and asks again.
    std::size_t Used() const { return fWaiting.back().used; }
    void GoBack(std::size_t used) { fWaiting.back().used = used; }

private:
    struct Answer {
        MCVeltrane_900::TransformVar* var;
        std::unique_ptr<MCVeltrane_900::ScoreValue> value;  ///< what its evaluation gave
        std::unique_ptr<MCVeltrane_900::ScoreValue> latest; ///< what stood in it when the last answer was found
    };
    struct Waiting {
        MCVeltrane_900::TransformVar* var;
        std::vector<Answer> answers;
        std::size_t used = 0;
    };

    void Push(MCVeltrane_900::TransformVar& var);
    void Pop();
    void Attempt();
    void TakeAnswer(MCVeltrane_900::TransformVar& var);

    Derivation& fDerivation;
    std::vector<Waiting> fWaiting;
    MCVeltrane_900::TransformVar* fAsked = nullptr; ///< what the field asked for that is given up
};

} // namespace veltrane::transform

#endif
