#ifndef VELTRANE_HOST_SCORE_MODEL_H
#define VELTRANE_HOST_SCORE_MODEL_H

#include <memory>
#include <optional>
#include <string>

namespace MCScore {
class MCStatus;
}

namespace MCVeltrane_900 {
class ScoreModel;
class ScoreResult;
} // namespace MCVeltrane_900

namespace veltrane::host {

/// The list of the models whose plug-ins were installed with the library: `modeldll.txt` in the folder `veltrane`
/// beside the library that this process runs with.
std::string InstalledModelList();

/// Lets the plug-in for a document's model build it. Throws a `VTException` for a document that cannot be read or has
/// no plug-in, and a `Failure` where the plug-in doesn't keep its side: no model, a model without a dictionary.
/// @param models   path of the model list; the installed one without it
/// @param encoding that the texts of the document are brought into
std::unique_ptr<MCVeltrane_900::ScoreModel>
BuildModel(const std::string& document, const std::optional<std::string>& models, const std::string& encoding);

/// An empty result of the model's kind. Throws a `Failure` when the model gives none, or one that is not of the kind
/// that it tells.
std::unique_ptr<MCVeltrane_900::ScoreResult> MakeResult(const MCVeltrane_900::ScoreModel& model,
                                                        const std::string& document);

/// What kept a model from scoring a case, for a person; empty where the status is no error.
std::string ReasonOf(const MCScore::MCStatus& status);

} // namespace veltrane::host

#endif
