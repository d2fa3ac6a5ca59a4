#ifndef VELTRANE_FACTORY_PLUGIN_ROUTE_H
#define VELTRANE_FACTORY_PLUGIN_ROUTE_H

#include "factory/documents/document_parser.h"

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

/// What the routes through a document have in common.
struct DocumentRoute {
    const std::vector<std::string>& names;
    const std::string& encoding;
    std::unique_ptr<DocumentParser> parser;
    xercesc::DOMDocument* document;
    xercesc::DOMElement* root;
};

/// Finds the first name of the list that has an element below the root, and lets the plug-in of that element build the
/// model with a dictionary.
/// @param route its parser is deleted before a failure is thrown, kept for good when the plug-in throws, and left to
///              the caller otherwise
/// @throws VTException 260301 with an empty text when no name has an element, 260283 with the root's tag, 260113 with
///         the element's name when there is no plug-in for it
MCVeltrane_900::ScoreModel* GetLibraryPath(DocumentRoute& route, MCVeltrane_900::ScoreDictionary* dict);

/// The same without a dictionary; the parser is deleted at the end.
/// @param modelName the name of the plug-in when the root has told it already; null searches the list
MCVeltrane_900::ScoreModel* GetLibraryPath(DocumentRoute& route, const char* modelName);

} // namespace veltrane::factory

#endif
