#include "blocks/block_run.h"

#include "files/failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <span>
#include <utility>

namespace veltrane::host {
namespace {

constexpr std::size_t kSmallestChunk = std::size_t{4} << 10;
constexpr std::size_t kFirstChunk = std::size_t{16} << 10;
constexpr std::size_t kLargestChunk = std::size_t{64} << 10;

/// Results of one chunk that are as many bytes make the next ones smaller.
constexpr std::size_t kMostResults = std::size_t{192} << 10;

} // namespace

BlockRun::BlockRun(const BlockPlan& plan, const Streams& streams, CaseRow& row, Explain explain)
    : fPlan(plan), fStreams(streams), fRow(row), fEncoding(plan.Options().encoding),
      fParser(plan.Options().missingTokens, &fEncoding), fExplain(std::move(explain)), fChunkSize(kFirstChunk),
      fLine(streams.reader.LineBehindHeader()) {}

void BlockRun::Run() {
    fWorkers.resize(fPlan.Scorer().NeedsOrder() ? 1 : fPlan.Options().threads);
    ChunkLine line(fWorkers.size(), [this](std::size_t thread, Chunk& chunk) {
        if (fWorkers[thread] == nullptr) {
            fWorkers[thread] = std::make_unique<ChunkWorker>(fPlan);
        }
        fWorkers[thread]->Work(chunk);
    });
    while (!fStreams.reader.IsAtEnd() && !fFailure) {
        WriteReady(line);
        if (MayWait()) {
            WriteAll(line);
            fStreams.writer.Flush();
        }
        if (std::unique_ptr<Chunk> chunk = line.TakeFree()) {
            Read(std::move(chunk), line);
        } else {
            line.Help();
        }
    }
    WriteAll(line);
    if (fFailure) {
        FlushStream();
        std::rethrow_exception(fFailure);
    }
}

/// Whether the next rows may be long in coming, so that those that are there have to be answered.
bool BlockRun::MayWait() const {
    return !fStreams.file.Size() && !fStreams.reader.HasRecords() &&
           (fStreams.source.IsPacked() || !fStreams.file.IsReady());
}

/// A failure is told behind the rows that have been read.
void BlockRun::Read(std::unique_ptr<Chunk> chunk, ChunkLine& line) {
    bool isFilled = false;
    try {
        isFilled = fStreams.reader.Read(*chunk, fChunkSize);
        chunk->fileBytes = fStreams.file.BytesRead();
    } catch (...) {
        fFailure = std::current_exception();
    }
    if (isFilled) {
        line.Give(std::move(chunk));
    } else {
        line.PutFree(std::move(chunk));
    }
}

void BlockRun::WriteReady(ChunkLine& line) {
    while (std::unique_ptr<Chunk> chunk = line.Next()) {
        Write(*chunk);
        ChooseSize(*chunk);
        line.PutFree(std::move(chunk));
    }
}

void BlockRun::WriteAll(ChunkLine& line) {
    for (WriteReady(line); !line.IsEmpty(); WriteReady(line)) {
        line.Help();
    }
}

void BlockRun::Write(const Chunk& chunk) {
    if (chunk.failure) {
        std::rethrow_exception(chunk.failure);
    }
    const std::size_t rows = chunk.rowEnds.size();
    std::size_t written = 0;
    std::size_t begun = 0;
    for (const RowNote& note : chunk.notes) {
        WriteRows(chunk, written, note.row);
        written = note.row;
        if (begun <= note.row) {
            fStreams.report.PassRows(note.row - begun);
            fStreams.report.BeginRow(fLine + note.line);
            begun = note.row + 1;
        }
        Tell(chunk, note);
    }
    WriteRows(chunk, written, rows);
    fStreams.report.PassRows(rows - begun);
    fRows += rows;
    if (fStreams.bar != nullptr) {
        fStreams.bar->UpdateMany(fRows, chunk.fileBytes);
    }
    if (chunk.fault != nullptr) {
        FlushStream();
        throw Failure(fmt::format("{}:{}: {}", fPlan.Options().cases, fLine + chunk.faultLine, chunk.fault));
    }
    fLine += chunk.lines;
}

void BlockRun::WriteRows(const Chunk& chunk, std::size_t from, std::size_t to) {
    if (from == to) {
        return;
    }
    const std::size_t start = from == 0 ? 0 : chunk.rowEnds[from - 1];
    fStreams.writer.Rows(chunk.results.Text().substr(start), std::span(chunk.rowEnds).subspan(from, to - from), start);
}

void BlockRun::Tell(const Chunk& chunk, const RowNote& note) {
    const auto& columns = fPlan.Columns().All();
    switch (note.kind) {
    case RowNote::Kind::UNSCORED:
        TellUnscored(chunk.unscoredCells.data() + note.count);
        return;
    case RowNote::Kind::RAGGED:
        fStreams.report.Ragged(note.count, columns.size());
        break;
    case RowNote::Kind::UNREADABLE:
        fStreams.report.Cell(columns[note.count].name, note.cell, note.problem);
        break;
    }
    if (fPlan.Options().strict) {
        throw ToldFailure();
    }
}

/// With the cell of the field that is to blame, where the row has one.
/// @param cells of the row, by their places in a table
void BlockRun::TellUnscored(const std::string_view* cells) {
    const auto& columns = fPlan.Columns().All();
    for (std::size_t at = 0; at < columns.size(); ++at) {
        if (columns[at].field != nullptr) {
            fParser.Read(cells[fPlan.Places()[at]], *columns[at].field, fRow); // its problems have been told
        }
    }
    const RowFault& fault = fExplain();
    std::string_view cell;
    for (std::size_t at = 0; at < columns.size(); ++at) {
        if (fault.field != nullptr && columns[at].field == fault.field) {
            cell = cells[fPlan.Places()[at]];
        }
    }
    fStreams.report.Unscored(fault.name, cell, fault.reason);
}

/// Chunks grow as long as their results are few.
void BlockRun::ChooseSize(const Chunk& chunk) {
    const bool areMany = chunk.results.Size() > kMostResults;
    fChunkSize = std::clamp(areMany ? fChunkSize / 2 : fChunkSize * 2, kSmallestChunk, kLargestChunk);
}

/// A failure of a stream comes behind the rows that have arrived; in a file those of the last chunk are of no use.
void BlockRun::FlushStream() {
    if (!fStreams.file.Size()) {
        fStreams.writer.Flush();
    }
}

} // namespace veltrane::host
