#include "transform/derivation/deferred_fields.h"

#include "data/values/value_cast.h"

#include <utility>

using namespace MCVeltrane_900;

namespace veltrane::transform {

namespace {

/// A copy of a result, the stored length of a text included.
std::unique_ptr<ScoreValue> CopyOf(ScoreValue& result) {
    std::unique_ptr<ScoreValue> copy(result.Clone());
    if (data::IsText(result)) {
        data::AsText(*copy).SetLength(data::AsText(result).GetLength());
    }
    return copy;
}

/// Makes a copy the result again. Both are of the class that the type of the field asks for.
void Restore(ScoreValue& result, ScoreValue& copy) {
    if (data::IsText(result)) {
        data::AsText(result) = data::AsText(copy);
    } else if (data::IsDateTime(result)) {
        data::AsDateTime(result) = data::AsDateTime(copy);
    } else {
        data::AsNumber(result) = data::AsNumber(copy);
    }
}

} // namespace

DeferredFields::~DeferredFields() {
    while (!fWaiting.empty()) {
        Pop(); // an exception passes
    }
    fDerivation.deferred = nullptr;
}

void DeferredFields::Push(TransformVar& var) {
    fWaiting.push_back({&var, {}, 0});
    var.fEvaluating = true;
}

void DeferredFields::Pop() {
    fWaiting.back().var->fEvaluating = false;
    fWaiting.pop_back();
}

const ScoreValue* DeferredFields::Evaluate(TransformVar& var) {
    Push(var);
    for (;;) {
        Attempt();
        if (fAsked != nullptr) {
            Push(*std::exchange(fAsked, nullptr));
            continue;
        }
        TransformVar& done = *fWaiting.back().var;
        Pop();
        if (fWaiting.empty()) {
            return done.fResult.get();
        }
        if (!fDerivation.Holds(done.fComputedFor)) {
            TakeAnswer(done);
        }
    }
}

void DeferredFields::Attempt() {
    fWaiting.back().used = 0;
    try {
        fWaiting.back().var->Attempt(fDerivation);
    } catch (const GivenUp&) {
        // what it asked for comes first
    }
}

void DeferredFields::TakeAnswer(TransformVar& var) {
    std::vector<Answer>& answers = fWaiting.back().answers;
    answers.push_back({&var, CopyOf(*var.fResult), nullptr});
    for (Answer& answer : answers) {
        answer.latest = CopyOf(*answer.var->fResult);
    }
}

const ScoreValue* DeferredFields::Ask(TransformVar& var) {
    if (fAsked != nullptr) {
        return nullptr;
    }
    Waiting& field = fWaiting.back();
    if (field.used == field.answers.size() || field.answers[field.used].var != &var) {
        field.answers.resize(field.used);
        fAsked = &var;
        return nullptr;
    }
    fDerivation.ReachUnrepeatable();
    const Answer& answer = field.answers[field.used++];
    if (field.used < field.answers.size()) {
        Restore(*var.fResult, *answer.value);
    } else {
        for (const Answer& any : field.answers) {
            Restore(*any.var->fResult, *any.latest);
        }
    }
    return var.fResult.get();
}

} // namespace veltrane::transform
