#ifndef VELTRANE_DOCUMENT_H
#define VELTRANE_DOCUMENT_H

#include <veltrane/arrow.h>
#include <veltrane/column_scorer.h>
#include <veltrane_export.h>

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace veltrane {

/// How a document is opened.
struct DocumentOptions {
    /// What of a document is scored.
    enum class Content {
        AUTOMATIC,      ///< its model where it has one, else its derived fields
        MODEL,          ///< its model
        DERIVED_FIELDS, ///< the derived fields of its TransformationDictionary, for which it needs no model
    };

    Content content = Content::AUTOMATIC;

    /// Which of several models: its name, or its number, from 1 in the order of the document. Empty: the first one that
    /// can be scored and whose kind stands in the list of models.
    std::string model;

    /// Path of the list of models, as the system takes it. Empty: the one beside the library, veltrane/modeldll.txt.
    std::string modelList;

    /// Names and values of options that the model is given, see ScoreModel::SetOption.
    std::vector<std::pair<std::string, std::string>> modelOptions;

    /// The encoding of all texts: those of the columns, of their names, and of the fields. Columns of texts are of the
    /// utf8 types for UTF-8, and of the binary types for any other.
    std::string encoding = "UTF-8";

    /// Whether results of type INTEGER come as float64, which holds all of them, in place of int64.
    bool wholeNumbersAsDoubles = false;
};

/// A document that is ready to be scored in columns, by the Arrow C data interface: its model, or its derived fields.
///
/// It doesn't change, and all of its operations may be called from any thread; each thread scores with a state of its
/// own. Copies share what was opened, and so do states, so that either may go first. Nothing of a document stays behind
/// when the last of them is gone, nor of one that couldn't be opened.
///
/// Models are built by the plug-in of their kind. One that exports GiveMyColumnScorer (see ColumnScorer) scores blocks
/// of rows, any other one row by row.
class VELTRANE_API Document {
public:
    class State;

    /// @param in the document, from where the stream stands to its end
    /// @throws VTException for a document that can't be read: 260105, 260107, 260109 and what its readers and its
    ///         plug-in fail with; 260103 for a list of models that can't be opened; 260301 where no model of the
    ///         document has a plug-in in the list, 260113 where that plug-in can't be opened, 260304 where it makes no
    ///         model; 260341 for a model that isn't there; 260342 for an option that the model doesn't take; 260343 for
    ///         a document with neither model nor derived fields; 260344 for an encoding that isn't known. What a
    ///         plug-in throws passes unchanged.
    explicit Document(std::istream& in, const DocumentOptions& options = {});

    /// The same for a document in memory, which is not kept.
    static Document OfBytes(std::string_view bytes, const DocumentOptions& options = {});

    /// The same for a file.
    /// @param path as the system takes it
    /// @throws VTException 260104 when the file can't be read, too
    static Document OfFile(const std::string& path, const DocumentOptions& options = {});

    Document(const Document& other);
    Document& operator=(const Document& other);
    ~Document();

    /// The fields that are read from columns. A column belongs to the field of its name, case counts; fields that
    /// aren't needed may have none, and are missing then. Columns that are no field are ignored.
    const std::vector<ColumnField>& Inputs() const;

    /// The columns of results, in their order. Those of a model are the predicted value, under the target's name or as
    /// "prediction", and then the output fields; those of derived fields are these.
    const std::vector<ColumnField>& Outputs() const;

    /// Whether results depend on the rows before, so that all rows have to come through one state, in their order.
    bool NeedsOrder() const;

    /// What a thread scores with. It remembers the rows before, where the document looks back on them.
    State NewState() const;

    /// Scores a batch of rows.
    ///
    /// Everything about the columns is looked at before the first row is scored: a batch that is refused leaves the
    /// state as it was. Types and their meaning stand in docs/columns.md. Results that are missing are nulls; a row
    /// that can't be scored has nothing else.
    /// @param array     a struct with a child for each column. It is consumed, whether the call fails or not: its
    /// release
    ///                  callback is called once, before the call returns, and it is marked as released
    /// @param schema    that of `array`; it stays the caller's
    /// @param state     of this document or of a copy; one thread at a time
    /// @param results   receives a struct with a child for each of Outputs() and as many rows. It is the caller's, who
    ///                  releases it; it is marked as released when the call fails
    /// @param resultSchema receives the schema of `results` in the same way, which is always that of OutputSchema();
    ///                  null where nobody asks
    /// @throws VTException 260345 to 260357 for an array, a schema or a state that can't be used, each with the name of
    ///         the column; 260358 and 260359 for a result that its column can't hold, in which case the rows count as
    ///         scored. std::bad_alloc
    void Score(ArrowArray* array, const ArrowSchema* schema, State& state, ArrowArray* results,
               ArrowSchema* resultSchema = nullptr) const;

    /// The schema of a struct with a child for each of Inputs(), in the type that takes no conversion, or of Outputs().
    /// @param schema receives it; the caller releases it
    /// @throws VTException 260345 for null. std::bad_alloc
    void InputSchema(ArrowSchema* schema) const;
    void OutputSchema(ArrowSchema* schema) const;

    /// What is behind it, for hosts that have blocks of their own. It lives as long as this document or a copy.
    const ColumnScorer& Scorer() const;

private:
    struct Opened;
    explicit Document(std::shared_ptr<const Opened> opened);

    std::shared_ptr<const Opened> fOpened;
};

/// What one thread scores a document with. It may be moved.
class VELTRANE_API Document::State {
public:
    State(State&& other) noexcept;
    State& operator=(State&& other) noexcept;
    ~State();

private:
    friend class Document;
    struct Parts;
    explicit State(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> fParts;
};

} // namespace veltrane

#endif
