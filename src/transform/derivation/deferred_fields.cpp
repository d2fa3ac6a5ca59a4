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

void DeferredFields::Push(FieldEvaluation& field) {
    fWaiting.push_back({&field, {}, 0});
    field.isEvaluating = true;
}

void DeferredFields::Pop() {
    fWaiting.back().field->isEvaluating = false;
    fWaiting.pop_back();
}

const ScoreValue* DeferredFields::Evaluate(FieldEvaluation& field) {
    Push(field);
    for (;;) {
        Attempt();
        if (fAsked != nullptr) {
            Push(*std::exchange(fAsked, nullptr));
            continue;
        }
        FieldEvaluation& done = *fWaiting.back().field;
        Pop();
        if (fWaiting.empty()) {
            return done.Result();
        }
        if (!fDerivation.Holds(done.computedFor)) {
            TakeAnswer(done);
        }
    }
}

void DeferredFields::Attempt() {
    fWaiting.back().used = 0;
    try {
        fWaiting.back().field->Attempt(fDerivation);
    } catch (const GivenUp&) {
        // what it asked for comes first
    }
}

void DeferredFields::TakeAnswer(FieldEvaluation& field) {
    std::vector<Answer>& answers = fWaiting.back().answers;
    answers.push_back({&field, CopyOf(*field.Result()), nullptr});
    for (Answer& answer : answers) {
        answer.latest = CopyOf(*answer.field->Result());
    }
}

const ScoreValue* DeferredFields::Ask(FieldEvaluation& field) {
    if (fAsked != nullptr) {
        return nullptr;
    }
    Waiting& asking = fWaiting.back();
    if (asking.used == asking.answers.size() || asking.answers[asking.used].field != &field) {
        asking.answers.resize(asking.used);
        fAsked = &field;
        return nullptr;
    }
    fDerivation.ReachUnrepeatable();
    const Answer& answer = asking.answers[asking.used++];
    if (asking.used < asking.answers.size()) {
        Restore(*field.Result(), *answer.value);
    } else {
        for (const Answer& any : asking.answers) {
            Restore(*any.field->Result(), *any.latest);
        }
    }
    return field.Result();
}

} // namespace veltrane::transform
