#ifndef VELTRANE_HOST_COMMANDS_H
#define VELTRANE_HOST_COMMANDS_H

#include "documents/document_outline.h"
#include "run/options.h"

#include <string>

/// The commands. Each gives the exit code; failures are thrown.
namespace veltrane::host {

/// Computes the derived fields of each case. Memory does not grow with the number of cases.
int RunTransform(const TransformOptions& options);

/// Scores each case with the document's model. Memory does not grow with the number of cases.
int RunScore(const ScoreOptions& options);

/// Scores the verification records of a document and reports field by field how the results agree with them.
int RunVerify(const VerifyOptions& options);

/// Shows what a document says on standard output: of its model, else of its fields and derived fields. What the other
/// commands refuse, a model without a plug-in or a document without either, is shown too as far as it goes, and then
/// fails as it does there.
int RunInspect(const InspectOptions& options);

/// What `--model` takes for the models of a document, a line each: the name of a model, or its number where it has no
/// name, shares it, or a line can't show it.
std::string ModelNames(const DocumentOutline& outline);

/// `veltrane complete-models`: writes them to standard output, for the completions of shells.
int RunModelNames(const ModelNamesOptions& options);

} // namespace veltrane::host

#endif
