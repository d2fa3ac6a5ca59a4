#include "blocks/chunk_line.h"

#include <csignal>
#include <pthread.h>
#include <system_error>
#include <utility>

namespace veltrane::host {
namespace {

/// Chunks that may be on their way beside one for each thread, so that none waits for the next to be read.
constexpr std::size_t kSpare = 3;

/// Threads that are started meanwhile leave all signals to the others: what a handler touches is guarded in the thread
/// that writes files alone.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &fBefore);
    }
    ~SignalsBlocked() { ::pthread_sigmask(SIG_SETMASK, &fBefore, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t fBefore{};
};

} // namespace

ChunkLine::ChunkLine(std::size_t threads, Work work) : fThreads(threads), fWork(std::move(work)) {
    const std::size_t chunks = threads == 1 ? 1 : threads + kSpare;
    for (std::size_t count = 0; count < chunks; ++count) {
        fFree.push_back(std::make_unique<Chunk>());
    }
}

ChunkLine::~ChunkLine() {
    {
        const std::lock_guard lock(fMutex);
        fEnds = true;
    }
    fIsGiven.notify_all();
    for (std::thread& other : fOthers) {
        other.join();
    }
}

std::unique_ptr<Chunk> ChunkLine::TakeFree() {
    if (fFree.empty()) {
        return nullptr;
    }
    std::unique_ptr<Chunk> chunk = std::move(fFree.back());
    fFree.pop_back();
    return chunk;
}

void ChunkLine::PutFree(std::unique_ptr<Chunk> chunk) {
    chunk->Clear();
    fFree.push_back(std::move(chunk));
}

void ChunkLine::Give(std::unique_ptr<Chunk> chunk) {
    if (!fLine.empty()) {
        Start();
    }
    fLine.push_back(std::make_unique<Entry>());
    fLine.back()->chunk = std::move(chunk);
    {
        const std::lock_guard lock(fMutex);
        fWaiting.push_back(fLine.back().get());
    }
    fIsGiven.notify_one();
}

/// Those do that the system lets start: the giving thread works too.
void ChunkLine::Start() {
    if (std::exchange(fStarted, true)) {
        return;
    }
    const SignalsBlocked blocked;
    try {
        for (std::size_t thread = 1; thread < fThreads; ++thread) {
            fOthers.emplace_back(&ChunkLine::Run, this, thread);
        }
    } catch (const std::system_error&) {
    }
}

std::unique_ptr<Chunk> ChunkLine::Next() {
    if (fLine.empty()) {
        return nullptr;
    }
    {
        const std::lock_guard lock(fMutex);
        if (!fLine.front()->isDone) {
            return nullptr;
        }
    }
    std::unique_ptr<Chunk> chunk = std::move(fLine.front()->chunk);
    fLine.pop_front();
    return chunk;
}

void ChunkLine::Help() {
    Entry* entry = nullptr;
    {
        std::unique_lock lock(fMutex);
        if (fWaiting.empty()) {
            fIsDone.wait(lock, [this] { return fLine.front()->isDone; });
            return;
        }
        entry = fWaiting.front();
        fWaiting.pop_front();
    }
    WorkOn(0, *entry);
}

void ChunkLine::Run(std::size_t thread) {
    for (;;) {
        Entry* entry = nullptr;
        {
            std::unique_lock lock(fMutex);
            fIsGiven.wait(lock, [this] { return fEnds || !fWaiting.empty(); });
            if (fEnds) {
                return;
            }
            entry = fWaiting.front();
            fWaiting.pop_front();
        }
        WorkOn(thread, *entry);
    }
}

void ChunkLine::WorkOn(std::size_t thread, Entry& entry) {
    try {
        fWork(thread, *entry.chunk);
    } catch (...) {
        entry.chunk->failure = std::current_exception();
    }
    {
        const std::lock_guard lock(fMutex);
        entry.isDone = true;
    }
    fIsDone.notify_one();
}

} // namespace veltrane::host
