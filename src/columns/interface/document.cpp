#include "columns/arrow/batch.h"
#include "columns/arrow/exported.h"
#include "columns/arrow/result_column.h"
#include "columns/arrow/schemas.h"
#include "columns/interface/opened_document.h"
#include "columns/opening/bytes_stream.h"
#include "diagnostics/raise.h"
#include "factory/entries/model_names.h"

#include <veltrane/document.h>

#include <algorithm>
#include <exception>
#include <fstream>
#include <istream>
#include <streambuf>
#include <string>
#include <vector>

namespace veltrane {

using columns::ColumnRoom;
using columns::Held;
using columns::ResultColumn;
using columns::ResultFormat;
using columns::ResultRoom;
using diagnostics::Message;
using diagnostics::Raise;

/// What was made of a document. Nothing of it changes.
struct Document::Opened {
    Opened(std::istream& in, const DocumentOptions& options)
        : isUtf8(columns::IsUtf8(options.encoding)), document(columns::OpenInColumns(in, options)) {
        for (const ColumnField& field : document.scorer->Outputs()) {
            results.push_back(columns::ResultFormatOf(field, isUtf8, options.wholeNumbersAsDoubles));
        }
    }

    bool isUtf8;
    columns::OpenedDocument document;
    std::vector<ResultFormat> results;
};

namespace {

/// Room for a block of a scorer's columns.
struct BlockRoom {
    explicit BlockRoom(const ColumnScorer& scorer)
        : inputs(scorer.Inputs().size()), inputRooms(inputs.size()), outputs(scorer.Outputs().size()),
          outputRooms(outputs.size()) {}

    std::vector<InputColumn> inputs;
    std::vector<ColumnRoom> inputRooms;
    std::vector<OutputColumn> outputs;
    std::vector<ResultRoom> outputRooms;
};

} // namespace

/// What a thread has for itself. It keeps the document.
struct Document::State::Parts {
    explicit Parts(std::shared_ptr<const Opened> shared)
        : opened(std::move(shared)), scored(opened->document.scorer->NewState()), room(*opened->document.scorer) {}

    std::shared_ptr<const Opened> opened;
    std::unique_ptr<ColumnScorer::State> scored;
    BlockRoom room;
};

namespace {

/// Whether a stream can be read again from its start.
bool GoesBack(std::istream& in) {
    const bool goes = in.seekg(0, std::ios_base::end).good() && in.seekg(0).good();
    in.clear();
    return goes;
}

} // namespace

Document::Document(std::shared_ptr<const Opened> opened) : fOpened(std::move(opened)) {}
Document::Document(const Document& other) = default;
Document& Document::operator=(const Document& other) = default;
Document::~Document() = default;

Document::Document(std::istream& in, const DocumentOptions& options)
    : Document(OfBytes(columns::ReadAll(in), options)) {}

Document Document::OfBytes(std::string_view bytes, const DocumentOptions& options) {
    columns::BytesStream in(bytes);
    return Document(std::make_shared<const Opened>(in, options));
}

/// A file needn't be in memory beside what is made of it.
Document Document::OfFile(const std::string& path, const DocumentOptions& options) {
    std::ifstream file;
    if (!factory::OpenForReading(file, path)) {
        Raise<Message::CANNOT_OPEN_DOCUMENT_FILE>(path);
    }
    return GoesBack(file) ? Document(std::make_shared<const Opened>(file, options)) : Document(file, options);
}

const ColumnScorer& Document::Scorer() const {
    return *fOpened->document.scorer;
}

const std::vector<ColumnField>& Document::Inputs() const {
    return Scorer().Inputs();
}

const std::vector<ColumnField>& Document::Outputs() const {
    return Scorer().Outputs();
}

bool Document::NeedsOrder() const {
    return Scorer().NeedsOrder();
}

Document::State Document::NewState() const {
    return State(std::make_unique<State::Parts>(fOpened));
}

void Document::InputSchema(ArrowSchema* schema) const {
    if (schema == nullptr) {
        Raise<Message::NULL_ARGUMENT>("schema");
    }
    columns::SchemaOf(Inputs(), fOpened->isUtf8).MoveTo(schema);
}

void Document::OutputSchema(ArrowSchema* schema) const {
    if (schema == nullptr) {
        Raise<Message::NULL_ARGUMENT>("schema");
    }
    columns::SchemaOf(fOpened->results).MoveTo(schema);
}

Document::State::State(std::unique_ptr<Parts> parts) : fParts(std::move(parts)) {}
Document::State::State(State&& other) noexcept = default;
Document::State& Document::State::operator=(State&& other) noexcept = default;
Document::State::~State() = default;

namespace {

/// Where the results of a block go.
void ShowPlaces(std::vector<ResultColumn>& results, std::size_t row, std::size_t count, BlockRoom& room) {
    for (std::size_t at = 0; at < results.size(); ++at) {
        room.outputs[at] = results[at].PlaceFor(room.outputRooms[at], row, count);
    }
}

void TakeResults(std::vector<ResultColumn>& results, std::size_t row, std::size_t count, const BlockRoom& room) {
    for (std::size_t at = 0; at < results.size(); ++at) {
        results[at].Take(room.outputRooms[at], row, count);
    }
}

/// Runs the blocks of a batch through a scorer, straight into the columns of its results. Where later rows look back,
/// all rows go through the state though a result doesn't fit: the next batch finds those before it.
void ScoreBlocks(const ColumnScorer& scorer, ColumnScorer::State& state, columns::Batch& batch, BlockRoom& room,
                 std::vector<ResultColumn>& results) {
    std::exception_ptr failure;
    batch.Begin(room.inputRooms);
    for (std::size_t row = 0; row < batch.Rows(); row += ColumnScorer::kMostRows) {
        const std::size_t count = std::min(ColumnScorer::kMostRows, batch.Rows() - row);
        batch.Read(row, count, room.inputs);
        ShowPlaces(results, row, count, room);
        scorer.Score({count, room.inputs.data()}, state, {room.outputs.data(), nullptr});
        try {
            if (failure == nullptr) {
                TakeResults(results, row, count, room);
            }
        } catch (...) {
            if (!scorer.NeedsOrder()) {
                throw;
            }
            failure = std::current_exception();
        }
    }
    if (failure != nullptr) {
        std::rethrow_exception(failure);
    }
}

Held<ArrowArray> Gather(std::vector<ResultColumn>& results, std::size_t rows) {
    columns::ArrayParts parts;
    parts.length = static_cast<std::int64_t>(rows);
    parts.buffers = {nullptr};
    for (ResultColumn& result : results) {
        parts.children.push_back(result.Finish());
    }
    return columns::MakeArray(std::move(parts));
}

} // namespace

void Document::Score(ArrowArray* array, const ArrowSchema* schema, State& state, ArrowArray* results,
                     ArrowSchema* resultSchema) const {
    Held<ArrowArray> taken;
    const bool isThere = array != nullptr && array->release != nullptr;
    taken.TakeFrom(array);
    if (resultSchema != nullptr) {
        resultSchema->release = nullptr;
    }
    if (results == nullptr) {
        Raise<Message::NULL_ARGUMENT>("results");
    }
    results->release = nullptr;
    if (state.fParts == nullptr || state.fParts->opened != fOpened) {
        Raise<Message::WRONG_STATE>();
    }
    columns::Batch batch(isThere ? &*taken : array, schema, Inputs(), fOpened->isUtf8);
    std::vector<ResultColumn> filled;
    filled.reserve(fOpened->results.size());
    for (const ResultFormat& format : fOpened->results) {
        filled.emplace_back(format, batch.Rows());
    }
    Held<ArrowSchema> filledSchema = columns::SchemaOf(fOpened->results);
    ScoreBlocks(Scorer(), *state.fParts->scored, batch, state.fParts->room, filled);
    Gather(filled, batch.Rows()).MoveTo(results);
    if (resultSchema != nullptr) {
        filledSchema.MoveTo(resultSchema);
    }
}

} // namespace veltrane
