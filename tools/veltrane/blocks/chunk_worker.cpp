#include "blocks/chunk_worker.h"

#include <algorithm>
#include <cstring>

namespace veltrane::host {
namespace {

/// Files of many columns have fewer rows in a block, so that their cells stay in the caches.
std::size_t MostRows(std::size_t width) {
    constexpr std::size_t kMostCells = 32768;
    constexpr std::size_t kFewestRows = 16;
    return std::clamp(kMostCells / std::max<std::size_t>(width, 1), kFewestRows, ColumnScorer::kMostRows);
}

/// Whether bytes are ASCII without NUL.
bool ArePlain(const char* bytes, std::size_t size) {
    unsigned char all = 0;
    for (std::size_t at = 0; at < size; ++at) {
        all |= static_cast<unsigned char>(bytes[at]);
    }
    return all < 0x80 && std::memchr(bytes, '\0', size) == nullptr;
}

} // namespace

ChunkWorker::ChunkWorker(const BlockPlan& plan)
    : fPlan(plan), fEncoding(plan.Options().encoding), fParser(plan.Options().missingTokens, &fEncoding),
      fRow(plan.Row().Fields()), fTools{fParser, fRow}, fSplitter(plan.Options().delimiter),
      fMostRows(MostRows(plan.Width())), fInputs(plan.Scorer().Inputs().size()), fState(plan.Scorer().NewState()),
      fResults(plan.Scorer(), plan.Forms(), plan.Options().delimiter) {
    if (plan.Row().KeepsUnreadable()) {
        fRow.KeepUnreadable();
    }
    const auto& columns = plan.Columns().All();
    for (std::size_t at = 0; at < columns.size(); ++at) {
        if (columns[at].field == nullptr) {
            continue;
        }
        const int input = plan.Inputs()[at];
        const auto type =
            input < 0 ? std::nullopt : std::optional(plan.Scorer().Inputs()[static_cast<std::size_t>(input)].type);
        fReaders.emplace_back(*columns[at].field, type, at, static_cast<std::size_t>(plan.Places()[at]));
        fReaderInputs.push_back(input);
    }
    for (const std::size_t at : plan.Kept().Places()) {
        if (columns[at].field == nullptr) {
            fCheckedColumns.push_back(at);
        }
    }
    fTable.width = plan.Width();
    fSplitter.SetColumns(columns.size(), plan.Places());
}

void ChunkWorker::Work(Chunk& chunk) {
    fTools.isPlainText = fEncoding.KeepsAscii() && ArePlain(chunk.bytes.data(), chunk.size);
    fSplitter.Begin(chunk);
    bool more = true;
    while (more) {
        const auto firstRow = static_cast<std::uint32_t>(chunk.rowEnds.size());
        const std::size_t firstNote = chunk.notes.size();
        more = fSplitter.Split(fTable, fMostRows, firstRow, chunk.notes);
        ReadTable(chunk, firstRow);
        CheckKept(chunk, firstRow);
        Score();
        NoteUnscored(chunk, firstRow);
        WriteRows(chunk);
        std::stable_sort(chunk.notes.begin() + static_cast<std::ptrdiff_t>(firstNote), chunk.notes.end(),
                         [](const RowNote& a, const RowNote& b) { return a.row < b.row; });
    }
    chunk.lines = chunk.faultLine = fSplitter.Lines();
    if (fSplitter.Fault() != nullptr) {
        chunk.fault = fSplitter.Fault();
        chunk.faultLine = fSplitter.RecordLine();
    }
}

void ChunkWorker::ReadTable(Chunk& chunk, std::uint32_t firstRow) {
    for (std::size_t at = 0; at < fReaders.size(); ++at) {
        fReaders[at].Read(fTable, fTools, {chunk.notes, firstRow});
        if (fReaderInputs[at] >= 0) {
            fInputs[static_cast<std::size_t>(fReaderInputs[at])] = fReaders[at].Column();
        }
    }
}

/// The cells of fields have been looked at.
void ChunkWorker::CheckKept(Chunk& chunk, std::uint32_t firstRow) {
    if (fTools.isPlainText) {
        return;
    }
    for (const std::size_t column : fCheckedColumns) {
        const auto place = static_cast<std::size_t>(fPlan.Places()[column]);
        for (std::size_t row = 0; row < fTable.Rows(); ++row) {
            if (const std::string_view cell = fTable.At(row, place); !fEncoding.Holds(cell)) {
                chunk.notes.push_back({RowNote::Kind::UNREADABLE, static_cast<std::uint32_t>(firstRow + row),
                                       fTable.lines[row], column, cell, fEncoding.Problem()});
            }
        }
    }
}

void ChunkWorker::Score() {
    fPlan.Scorer().Score({fTable.Rows(), fInputs.data()}, *fState, fResults.Block());
}

void ChunkWorker::NoteUnscored(Chunk& chunk, std::uint32_t firstRow) {
    for (std::size_t row = 0; row < fTable.Rows(); ++row) {
        if (!fResults.IsUnscored(row)) {
            continue;
        }
        chunk.notes.push_back({RowNote::Kind::UNSCORED,
                               static_cast<std::uint32_t>(firstRow + row),
                               fTable.lines[row],
                               chunk.unscoredCells.size(),
                               {}});
        for (std::size_t place = 0; place < fTable.width; ++place) {
            chunk.unscoredCells.push_back(fTable.At(row, place));
        }
    }
}

void ChunkWorker::WriteRows(Chunk& chunk) {
    for (std::size_t row = 0; row < fTable.Rows(); ++row) {
        WriteRow(chunk, row);
        chunk.rowEnds.push_back(static_cast<std::uint32_t>(chunk.results.Size()));
    }
}

void ChunkWorker::WriteRow(Chunk& chunk, std::size_t row) {
    TextBuffer& text = chunk.results;
    const std::size_t start = text.Size();
    std::size_t cells = 0;
    for (const std::size_t column : fPlan.Kept().Places()) {
        text.Need(1);
        if (cells++ > 0) {
            text.Put(fPlan.Options().delimiter);
        }
        fResults.PutText(fTable.At(row, static_cast<std::size_t>(fPlan.Places()[column])), text);
    }
    text.Need(1);
    if (cells > 0 && fResults.Cells() > 0) {
        text.Put(fPlan.Options().delimiter);
    }
    fResults.Put(row, text);
    cells += fResults.Cells();
    text.Need(kEmptyRow.size() + 1);
    if (cells == 1 && text.Size() == start) {
        text.Put(kEmptyRow);
    }
    text.Put('\n');
}

} // namespace veltrane::host
