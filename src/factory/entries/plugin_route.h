#ifndef VELTRANE_FACTORY_PLUGIN_ROUTE_H
#define VELTRANE_FACTORY_PLUGIN_ROUTE_H

#include "factory/documents/document_parser.h"
#include "factory/entries/kept_on_failure.h"

#include <memory>
#include <string>
#include <vector>

namespace MCVeltrane_900 {
class BaseTranslator;
class ScoreDictionary;
class ScoreModel;
} // namespace MCVeltrane_900

/// From a model name to a plug-in's model.
namespace veltrane::factory {

/// Gets a translator from the plug-in of a listed model name.
/// @return owned by the caller; null when the plug-in gives none
/// @throws VTException 260113 with the name when it isn't in the list, or there is no such plug-in
MCVeltrane_900::BaseTranslator* MakeTranslator(const std::vector<std::string>& names, const std::string& modelName);

/// Finds an exported C symbol in the plug-in of a model name.
/// @return null when there is no such plug-in, or it lacks the symbol
void* FindPluginSymbol(const std::string& modelName, const char* symbol);

/// What the routes through a document have in common.
struct DocumentRoute {
    const std::vector<std::string>& names;
    const std::string& encoding;
    std::unique_ptr<DocumentParser> parser;
    xercesc::DOMDocument* document;
    xercesc::DOMElement* root;
    OnFailure onFailure = OnFailure::KEEP; ///< of the plug-in: what becomes of parser and translator
};

/// Parses a document and finds its root. What the plug-in of a model in the list reads by itself are records, until
/// another reader needs it.
/// @param names the model list, which is borrowed by the route
/// @throws VTException as ParseDocument does; 260110 and 260112 for a document without a root or a tag of it
DocumentRoute OpenRoute(std::unique_ptr<DocumentParser> parser, std::istream& in, const std::vector<std::string>& names,
                        const std::string& encoding);

/// What a root's tag says about the model in the document.
struct RootKind {
    const char* tag;
    const char16_t* descendant; ///< an element that must stand below the root; null for none
    const char* modelName;      ///< null when the list of names is searched
};

/// @return null for a root that no model has
const RootKind* FindRootKind(xercesc::DOMElement& root);

/// The node name of the element that decides which model the document holds: of the first name of the list that has
/// one.
/// @param route its parser is deleted before a failure is thrown
/// @throws VTException 260301 with an empty text when no name has an element, 260283 with the root's tag
std::string FindModelName(DocumentRoute& route);

/// Finds the first name of the list that has an element below the root, and lets the plug-in of that element build the
/// model with a dictionary.
/// @param route its parser is deleted before a failure is thrown, kept for good when the plug-in throws, unless the
///              route says otherwise, and left to the caller at the end
/// @throws VTException 260301 with an empty text when no name has an element, 260283 with the root's tag, 260113 with
///         the element's name when there is no plug-in for it
MCVeltrane_900::ScoreModel* GetLibraryPath(DocumentRoute& route, MCVeltrane_900::ScoreDictionary* dict);

/// The same without a dictionary; the parser is deleted at the end.
/// @param modelName the name of the plug-in when the root has told it already; null searches the list
MCVeltrane_900::ScoreModel* GetLibraryPath(DocumentRoute& route, const char* modelName);

} // namespace veltrane::factory

#endif
