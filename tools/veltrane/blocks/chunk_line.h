#ifndef VELTRANE_HOST_CHUNK_LINE_H
#define VELTRANE_HOST_CHUNK_LINE_H

#include "blocks/chunk.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace veltrane::host {

/// Chunks on their way through threads: one thread, which made this, gives them in order, and gets them back in that
/// order when they have been worked on. It works on some of them itself. The other threads start with the second chunk,
/// so that a small file needs none.
class ChunkLine {
public:
    /// Works on a chunk; called by one thread at a time for each number.
    /// @param thread from 0
    using Work = std::function<void(std::size_t thread, Chunk& chunk)>;

    ChunkLine(std::size_t threads, Work work);

    /// Lets the threads finish the chunk that they are at and drops the others.
    ~ChunkLine();
    ChunkLine(const ChunkLine&) = delete;
    ChunkLine& operator=(const ChunkLine&) = delete;

    /// A cleared chunk; null when all of them are on their way.
    std::unique_ptr<Chunk> TakeFree();

    /// Takes a chunk back that was not given, or that came out.
    void PutFree(std::unique_ptr<Chunk> chunk);

    void Give(std::unique_ptr<Chunk> chunk);

    /// Whether no chunk is on its way.
    bool IsEmpty() const { return fLine.empty(); }

    /// The oldest chunk if the work on it is done, else null. What the work threw is in its `failure`.
    std::unique_ptr<Chunk> Next();

    /// Works on a chunk that nobody is at, or waits until the oldest is done.
    void Help();

private:
    struct Entry {
        std::unique_ptr<Chunk> chunk;
        bool isDone = false;
    };

    void Start();
    void Run(std::size_t thread);
    void WorkOn(std::size_t thread, Entry& entry);

    std::size_t fThreads;
    Work fWork;
    std::vector<std::unique_ptr<Chunk>> fFree;
    std::deque<std::unique_ptr<Entry>> fLine; ///< of the giving thread alone; the oldest first
    std::vector<std::thread> fOthers;
    bool fStarted = false;

    std::mutex fMutex; ///< of what follows, and of `isDone`
    std::condition_variable fIsGiven;
    std::condition_variable fIsDone;
    std::deque<Entry*> fWaiting;
    bool fEnds = false;
};

} // namespace veltrane::host

#endif
