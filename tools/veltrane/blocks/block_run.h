#ifndef VELTRANE_HOST_BLOCK_RUN_H
#define VELTRANE_HOST_BLOCK_RUN_H

#include "blocks/block_plan.h"
#include "blocks/chunk_line.h"
#include "blocks/chunk_reader.h"
#include "blocks/chunk_worker.h"
#include "cases/row_fault.h"
#include "files/byte_stream.h"
#include "files/csv_writer.h"
#include "files/unpacking.h"
#include "run/progress_bar.h"
#include "run/report.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <vector>

namespace veltrane::host {

/// One pass over the rows of a file in blocks, by several threads. What comes out, and what is told, is what the cases
/// give one by one.
class BlockRun {
public:
    /// Tells why the case in the plan's row has no results; it stands until the next call.
    using Explain = std::function<const RowFault&()>;

    struct Streams {
        const InputFile& file;
        const UnpackedSource& source;
        ChunkReader& reader; ///< behind the header
        CsvWriter& writer;
        Report& report;
        ProgressBar* bar; ///< null for none
    };

    /// @param row     the plan's, filled with a case that is to be explained
    /// @param explain called between chunks, by the thread that calls Run()
    BlockRun(const BlockPlan& plan, const Streams& streams, CaseRow& row, Explain explain);

    /// Goes through all rows. Failures are thrown when all rows in front of them are written.
    void Run();

private:
    bool MayWait() const;
    void Read(std::unique_ptr<Chunk> chunk, ChunkLine& line);
    void WriteReady(ChunkLine& line);
    void WriteAll(ChunkLine& line);
    void Write(const Chunk& chunk);
    void WriteRows(const Chunk& chunk, std::size_t from, std::size_t to);
    void Tell(const Chunk& chunk, const RowNote& note);
    void TellUnscored(const std::string_view* cells);
    void ChooseSize(const Chunk& chunk);
    void FlushStream();

    const BlockPlan& fPlan;
    Streams fStreams;
    CaseRow& fRow;
    EncodingCheck fEncoding;
    CellParser fParser;
    Explain fExplain;
    std::vector<std::unique_ptr<ChunkWorker>> fWorkers; ///< by threads, made when they are needed
    std::size_t fChunkSize;
    std::exception_ptr fFailure; ///< of reading
    std::uint64_t fRows = 0;     ///< written
    std::size_t fLine;           ///< of the first byte that comes next
};

} // namespace veltrane::host

#endif
