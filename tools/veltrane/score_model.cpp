#include "score_model.h"

#include "failure.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/ScoreClsResult.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreRegResult.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <dlfcn.h>

namespace veltrane::host {
namespace {

using MCVeltrane_900::ModelFactory;
using MCVeltrane_900::ScoreClsResult;
using MCVeltrane_900::ScoreModel;
using MCVeltrane_900::ScoreRegResult;
using MCVeltrane_900::ScoreResult;

/// The kinds of result that are classifications; see ScoreResult::GetResultKind.
constexpr std::array kClassificationKinds{0, 2, 3, 4, 6, 10, 15, 18, 20, 21, 24, 26};
constexpr int kRegressionKind = 1;
constexpr int kLastKind = 27;

constexpr long kNoDefaultPrediction = 90027;

/// Whether a result is what its kind says. A host that believed a wrong kind would call operations that aren't there.
bool IsOfItsKind(ScoreResult& result) {
    const int kind = result.GetResultKind();
    if (kind < 0 || kind > kLastKind)
        return false;
    if (std::find(kClassificationKinds.begin(), kClassificationKinds.end(), kind) != kClassificationKinds.end())
        return dynamic_cast<ScoreClsResult*>(&result) != nullptr;
    return kind != kRegressionKind || dynamic_cast<ScoreRegResult*>(&result) != nullptr;
}

} // namespace

std::string InstalledModelList() {
    Dl_info info{};
    std::string folder = ".";
    if (::dladdr(&ModelFactory::fInitialized, &info) != 0 && info.dli_fname != nullptr) {
        const std::string library = info.dli_fname;
        const std::size_t slash = library.rfind('/');
        folder = slash == std::string::npos ? "." : library.substr(0, slash);
    }
    return folder + "/veltrane/modeldll.txt";
}

std::unique_ptr<ScoreModel> BuildModel(const std::string& document, const std::optional<std::string>& models,
                                       const std::string& encoding) {
    const std::string list = models.value_or(InstalledModelList());
    std::unique_ptr<ScoreModel> model(ModelFactory::MakeModelFromXML(document, list, encoding, std::string()));
    if (!model)
        throw Failure(document + ": the plug-in made no model of the document");
    if (!model->GetDictionary())
        throw Failure(document + ": the plug-in made a model without a data dictionary");
    return model;
}

std::unique_ptr<ScoreResult> MakeResult(const ScoreModel& model, const std::string& document) {
    std::unique_ptr<ScoreResult> result(model.CreateResult());
    if (!result)
        throw Failure(document + ": the model makes no results");
    if (!IsOfItsKind(*result))
        throw Failure(fmt::format("{}: the model's results say that they are of kind {}, and are not", document,
                                  result->GetResultKind()));
    return result;
}

std::string ReasonOf(const MCScore::MCStatus& status) {
    if (!status.IsError())
        return {};
    if (status.GetErrorCode() == kNoDefaultPrediction)
        return "a case without a prediction, and the target has no default (status 90027)";
    return fmt::format("status {}", status.GetErrorCode());
}

} // namespace veltrane::host
