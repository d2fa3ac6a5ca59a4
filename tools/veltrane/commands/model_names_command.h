#ifndef VELTRANE_HOST_MODEL_NAMES_COMMAND_H
#define VELTRANE_HOST_MODEL_NAMES_COMMAND_H

#include "documents/document_outline.h"
#include "run/options.h"

#include <string>

namespace veltrane::host {

/// What `--model` takes for the models of a document, a line each: the name of a model, or its number where it has no
/// name, shares it, or a line can't show it.
std::string ModelNames(const DocumentOutline& outline);

/// `veltrane complete-models`: writes them to standard output, for the completions of shells.
/// @return the exit code
int RunModelNames(const ModelNamesOptions& options);

} // namespace veltrane::host

#endif
