#ifndef VELTRANE_HOST_PROGRESS_BAR_H
#define VELTRANE_HOST_PROGRESS_BAR_H

#include <chrono>
#include <cstdint>
#include <string>

namespace veltrane::host {

/// How far a run has come.
struct Progress {
    std::uint64_t rows = 0;
    std::uint64_t bytes = 0;
    std::uint64_t totalBytes = 0;
    double seconds = 0; ///< since the start
};

/// The bar as one line of at most `columns` characters: the share of the bytes, the rows, their rate and the time left,
/// as far as there is room.
std::string RenderProgress(const Progress& progress, int columns);

/// A progress bar on a terminal. It is drawn at the start, then a few times a second, and stays as the last line.
class ProgressBar {
public:
    /// @param terminal the terminal's file descriptor
    ProgressBar(int terminal, std::uint64_t totalBytes);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// Notes how far the run is; draws when it is time to. Cheap enough to be called for each row.
    void Update(std::uint64_t rows, std::uint64_t bytes);

    /// The same for many rows at once.
    void UpdateMany(std::uint64_t rows, std::uint64_t bytes);

    /// Takes the bar off the terminal, so that something else can be written. The next drawing brings it back.
    void Hide();

    /// Draws the last state and moves to the next line.
    void Finish();

private:
    using Clock = std::chrono::steady_clock;

    void Draw(Clock::time_point now);

    int fTerminal;
    Progress fProgress;
    Clock::time_point fStart;
    Clock::time_point fNextDrawing;
    unsigned fUpdates = 0;
    bool fShown = false;
};

} // namespace veltrane::host

#endif
