// Any bytes as a document of a model: they end in a catalogued failure, or in a model that gives the same in columns
// as case by case, scores cases of every kind, shows itself and is freed whole.
#include "kit/model/transformations.h"
#include "kit/model/verification.h"
#include "roads.h"
#include "run.h"

#include <veltrane.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::fuzz;

namespace {

/// The elements that have a plug-in.
const std::vector<std::string> kNames = {VELTRANE_PLUGIN_NAMES};
constexpr double kNumbers[] = {1.5, -1e300, 0.0, std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::infinity()};
constexpr const char* kTexts[] = {"red", "", "true", "1", "a\xff"};
constexpr std::size_t kKinds = 5;

ScoreValue* MakeValue(const ScoreDictVar& field, std::size_t kind) {
    switch (field.GetVarType()) {
    case ScoreDictVar::kNUMERIC_VAR:
        return new NumericValue(kNumbers[kind]);
    case ScoreDictVar::DATETIME_VAR:
        return new DateTimeValue(kNumbers[kind], field.GetDateTimeType());
    default:
        return new StringValue(kTexts[kind]);
    }
}

/// One record whose fields take a value of every kind, each another one, and at last none.
void ScoreCases(ScoreModel& model) {
    const std::unique_ptr<ScoreResult> result(model.CreateResult());
    for (std::size_t round = 0; round <= kKinds; ++round) {
        CaseRecord record;
        std::size_t at = round;
        for (const ScoreDictVar* field : model.GetDictionary()->GetScoreDictVars()) {
            record.Add(field->GetName(), round == kKinds ? nullptr : MakeValue(*field, at++ % kKinds));
        }
        model.Score(&record, result.get());
    }
    std::ostringstream text;
    model.Display(text);
}

/// The derived fields of a document that the factory has accepted, by themselves.
void Transform(const std::string& document) {
    std::istringstream in(document);
    const auto transformations = veltrane_kit::Transformations::Read(in, "UTF-8");
    for (std::size_t round = 0; transformations != nullptr && round <= kKinds; ++round) {
        CaseRecord record;
        std::size_t at = round;
        for (const ScoreDictVar* field : transformations->Dictionary().GetScoreDictVars()) {
            record.Add(field->GetName(), round == kKinds ? nullptr : MakeValue(*field, at++ % kKinds));
        }
        transformations->Compute(record);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Run run;
    const std::string document(reinterpret_cast<const char*>(data), size);
    MayFail([&] {
        std::istringstream in(document);
        const std::unique_ptr<ScoreModel> model(ModelFactory::MakeModelFromXML(in, kNames, "UTF-8"));
        if (model != nullptr) {
            RequireSameRoads(*model, document);
            ScoreCases(*model);
            std::istringstream again(document);
            veltrane_kit::ReadVerification(again, kNames, "UTF-8");
            Transform(document);
            RequireSameTransformations(document);
        }
    });
    return 0;
}
