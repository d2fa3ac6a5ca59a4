#ifndef MCVELTRANE_900_MODEL_FACTORY_H
#define MCVELTRANE_900_MODEL_FACTORY_H

#include <veltrane_export.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace MCVeltrane_900 {

class ScoreDictionary;
class ScoreModel;
class TransformationDictionary;

/// The entry of the library: a model document in, a model out.
///
/// The factory finds the model element of a document by a list of model names, opens the plug-in library that is named
/// after the element, and lets the plug-in's translator build the model. The host owns what it returns. Every failure
/// is a VTException thrown by value; what a plug-in throws passes unchanged.
///
/// In every operation
/// - `names` are the element names of models for which there are plug-ins. Their order is the order of the search, so
///   it decides between several models in one document;
/// - `encoding` names the code page that the translator brings the document's text into; empty for the default;
/// - `auxPath` reaches the NearestNeighborModel plug-in only;
/// - paths of files are in UTF-8, whatever the locale; messages name them in the form in which they were opened, which
///   is that of the code page. Bringing them there takes a process in the C locale to another one (see
///   SystemEncoding.h), so the first such call belongs in front of a host's threads.
///
/// A document comes from outside and is not trusted: nothing is read from the network, nesting and the expansion of
/// entities are bounded, and a document that passes a bound is refused like one that is not well-formed.
class VELTRANE_API ModelFactory {
public:
    /// How many expansions of entities the content and the attributes of a document may take.
    static constexpr int MAX_ENTITY_EXPANSIONS = 5000;

    /// Starts the XML platform for the life of the process and reads the list of model names. Optional; it is to be
    /// called before other threads use the factory. With it models can be built in parallel; without it each call
    /// starts and stops the XML platform, and calls wait for each other.
    /// @param modelListFile path of a model-list file; empty reads none, and leaves the names as they are
    /// @throws VTException 260103 when the file can't be opened, with the XML platform started and fInitialized false;
    ///         xercesc::XMLException when the XML platform fails
    static void Initialize(std::string modelListFile);

    /// Ends the XML platform that Initialize started. Nothing else is reset.
    static void Terminate();

    /// Builds a model from a document, with a dictionary for the translator of a PMML document.
    /// @param in   read from its beginning, wherever it stands
    /// @param dict goes to the translator
    static ScoreModel* MakeModelFromXML(std::istream& in, ScoreDictionary* dict, const std::vector<std::string>& names,
                                        const std::string& encoding);

    /// Builds a model from a document.
    /// @param in read from its beginning, wherever it stands
    static ScoreModel* MakeModelFromXML(std::istream& in, const std::vector<std::string>& names,
                                        const std::string& encoding, const std::string& auxPath);
    static ScoreModel* MakeModelFromXML(std::istream& in, const std::vector<std::string>& names,
                                        const std::string& encoding);

    /// Builds a model from the document on a stream, with the names of a model-list file; encoding and auxPath are
    /// empty.
    /// @param in            read from its beginning, wherever it stands
    /// @param modelListFile path, not changed; empty stands for "modeldll.txt" in the working directory
    /// @throws VTException 260103 when the list can't be opened
    static ScoreModel* MakeModelFromXML(std::istream& in, std::string& modelListFile);

    /// Builds a model from a file, with the names of a model-list file. They become those of the process when it has
    /// none yet.
    /// @param modelFile     path of the document
    /// @param modelListFile path; empty stands for "modeldll.txt" in the working directory
    /// @param auxPath       a path that is converted like the others
    /// @throws VTException 260103 when the list can't be opened, then 260104 when the document can't
    static ScoreModel* MakeModelFromXML(const std::string& modelFile, const std::string& modelListFile,
                                        const std::string& encoding, const std::string& auxPath);
    static ScoreModel* MakeModelFromXML(const std::string& modelFile, const std::string& modelListFile,
                                        const std::string& encoding);

    /// Builds a model from an element that the caller holds.
    /// @param element a xercesc::DOMElement*
    /// @param names   an empty list stands for fModelNames
    /// @param base    goes to the translator unread
    /// @param text    goes to the translator unread
    static ScoreModel* MakeModelFromXML(void* element, const std::vector<std::string>& names, ScoreModel* base,
                                        const std::string& text);

    /// The same with two dictionaries, which go to the translator unread.
    static ScoreModel* MakeModelFromXML(void* element, const std::vector<std::string>& names, ScoreDictionary* first,
                                        ScoreDictionary* second, const std::string& text);

    /// Reads the data dictionary and the transformation dictionary of a PMML document, without a model or a plug-in.
    /// On this road alone the external DTD of a document is read, when the DOCTYPE names an ordinary file on this
    /// machine; one at an address elsewhere counts as empty, and any other external entity is refused.
    /// @param in   read from where it stands
    /// @param dict receives the data dictionary, owned by the caller; untouched when the root isn't "PMML"
    /// @return the transformation dictionary, owned by the caller; null when it has no derived field or the root isn't
    ///         "PMML"
    static TransformationDictionary* GetTransformationDictionaryFromXML(std::istream& in, ScoreDictionary*& dict,
                                                                        const std::string& encoding);

    /// The same for the file at a path, taken as it stands.
    /// @throws VTException 260103 when the file can't be opened
    static TransformationDictionary* GetTransformationDictionaryFromXML(const std::string& path, ScoreDictionary*& dict,
                                                                        const std::string& encoding);

    /// Whether Initialize has run to its end; nothing clears it.
    static bool fInitialized;

    /// The process-wide list of model names, filled by Initialize or by the first call that brings a list.
    static std::vector<std::string> fModelNames;
};

} // namespace MCVeltrane_900

#endif
