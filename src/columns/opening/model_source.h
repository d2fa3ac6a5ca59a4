#ifndef VELTRANE_COLUMNS_MODEL_SOURCE_H
#define VELTRANE_COLUMNS_MODEL_SOURCE_H

#include <MCVeltrane_900/ScoreModel.h>
#include <veltrane/document.h>

#include <exception>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <utility>
#include <vector>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace veltrane::columns {

/// A model that was built from a document, its options set.
struct BuiltModel {
    std::unique_ptr<MCVeltrane_900::ScoreModel> model;
    std::string kind; ///< the name of its plug-in
    bool readsUnreadable =
        false;              ///< whether it takes a text in the place of a number or of a date for an invalid value
    bool looksBack = false; ///< whether the document has a Lag
};

/// A document and what is made of it. Nothing else stays of it in memory, whether it can be read or not.
class ModelSource {
public:
    /// @param in that goes back to its start; it is borrowed until Keep()
    ModelSource(std::istream& in, const DocumentOptions& options) : fIn(&in), fOptions(options) {}

    /// Takes the document into memory, for models to be built when the stream is gone, and by any thread.
    void Keep();

    /// Builds the model.
    /// @return with a model that has a dictionary; without one where it is the derived fields that are scored
    /// @throws VTException see Document
    BuiltModel Build() const;

    /// Reads the document from its start.
    void Read(const std::function<void(std::istream&)>& read) const;

    const DocumentOptions& Options() const { return fOptions; }

private:
    bool ScoresModel(const xercesc::DOMElement& root) const;
    std::exception_ptr FindNames(std::vector<std::string>& names) const;
    void SetOptions(BuiltModel& built) const;

    std::istream* fIn; ///< null when the document is kept
    std::string fBytes;
    DocumentOptions fOptions;
};

} // namespace veltrane::columns

#endif
