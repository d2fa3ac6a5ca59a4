#ifndef VELTRANE_HOST_EXPLANATION_H
#define VELTRANE_HOST_EXPLANATION_H

#include <string>
#include <string_view>
#include <vector>

namespace MCVeltrane_900 {
class VTException;
}

namespace veltrane::host {

class DocumentFile;
struct DocumentOutline;
struct ModelList;

/// A failure of the library in its own words: `error 260105: Unexpected error in opening PMML file.`
std::string ToldText(const MCVeltrane_900::VTException& failure);

/// The same for a message of the catalogue with one parameter.
std::string ToldText(int code, const std::string& parameter);

/// Why a document is none: it is empty or no XML, or the place and the words of the XML parser; empty where there is
/// nothing wrong with it.
std::string ExplainUnreadable(const DocumentFile& document, const DocumentOutline& outline);

/// For which kinds of model there are plug-ins.
std::string PluginsText(const ModelList& list);

/// What a document has in the place of a model for which there is a plug-in.
std::string ExplainUnsupported(const DocumentFile& document, const DocumentOutline& outline, const ModelList& list);

/// What there is in a document without a TransformationDictionary; empty for one that has it.
std::string ExplainMissingNode(const DocumentFile& document, const DocumentOutline& outline);

/// Why the plug-in for a model cannot be used, with the words of the system's loader.
std::string ExplainMissingPlugin(const std::string& model);

/// What there is to add to a failure that the library tells of a document; empty where that says it all.
std::string Explain(const MCVeltrane_900::VTException& failure, DocumentFile& document, const ModelList& list);

} // namespace veltrane::host

#endif
