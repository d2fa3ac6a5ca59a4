#ifndef VELTRANE_HOST_CHUNK_WORKER_H
#define VELTRANE_HOST_CHUNK_WORKER_H

#include "blocks/block_plan.h"
#include "blocks/chunk.h"
#include "blocks/column_reader.h"
#include "blocks/record_splitter.h"
#include "blocks/result_rows.h"
#include "files/encoding_check.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace veltrane::host {

/// What one thread needs to turn the records of a chunk into rows of the output.
class ChunkWorker {
public:
    /// @param plan borrowed
    explicit ChunkWorker(const BlockPlan& plan);

    /// Reads the cells of a chunk, has them scored and writes the rows, and notes what is to be told of them.
    void Work(Chunk& chunk);

private:
    void ReadTable(Chunk& chunk, std::uint32_t firstRow);
    void CheckKept(Chunk& chunk, std::uint32_t firstRow);
    void Score();
    void NoteUnscored(Chunk& chunk, std::uint32_t firstRow);
    void WriteRows(Chunk& chunk);
    void WriteRow(Chunk& chunk, std::size_t row);

    const BlockPlan& fPlan;
    EncodingCheck fEncoding;
    CellParser fParser;
    CaseRow fRow;
    CellTools fTools;
    RecordSplitter fSplitter;
    std::size_t fMostRows; ///< of a block
    CellTable fTable;
    std::vector<ColumnReader> fReaders;       ///< in the order of the file's columns
    std::vector<int> fReaderInputs;           ///< by readers, the input that each fills; negative for none
    std::vector<std::size_t> fCheckedColumns; ///< kept ones that are no field
    std::vector<InputColumn> fInputs;
    std::unique_ptr<ColumnScorer::State> fState;
    ResultRows fResults;
};

} // namespace veltrane::host

#endif
