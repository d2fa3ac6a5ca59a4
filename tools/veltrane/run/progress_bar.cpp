#include "run/progress_bar.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace veltrane::host {
namespace {

constexpr std::chrono::milliseconds kDrawingInterval{100};
constexpr unsigned kUpdatesPerClockReading = 256;
constexpr int kUsualColumns = 80;
constexpr int kNarrowestBar = 5;
constexpr int kWidestBar = 40;
constexpr std::string_view kClearLine = "\r\x1b[K";

std::string Grouped(std::uint64_t number) {
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3; at -= 3) {
        text.insert(at - 3, 1, ',');
    }
    return text;
}

std::string Duration(double seconds) {
    const auto whole = static_cast<std::uint64_t>(std::min(seconds + 0.5, 1e9));
    if (whole >= 3600) {
        return fmt::format("{}:{:02}:{:02}", whole / 3600, whole / 60 % 60, whole % 60);
    }
    return fmt::format("{}:{:02}", whole / 60, whole % 60);
}

int Columns(int terminal) {
    winsize size{};
    if (::ioctl(terminal, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) {
        return kUsualColumns;
    }
    return size.ws_col;
}

} // namespace

std::string RenderProgress(const Progress& progress, int columns) {
    const double share =
        progress.totalBytes == 0
            ? 1
            : std::min(1.0, static_cast<double>(progress.bytes) / static_cast<double>(progress.totalBytes));
    const double rate = progress.seconds > 0 ? static_cast<double>(progress.rows) / progress.seconds : 0;
    const std::string left = share > 0 ? Duration(progress.seconds * (1 - share) / share) : "-:--";
    std::string text = fmt::format("{:3}%  {} rows  {} rows/s  {} left", static_cast<int>(std::floor(share * 100)),
                                   Grouped(progress.rows), Grouped(static_cast<std::uint64_t>(rate)), left);
    const int room = std::min(columns - static_cast<int>(text.size()) - 3, kWidestBar);
    if (room >= kNarrowestBar) {
        const int filled = static_cast<int>(share * room);
        text = fmt::format("[{:<{}}] {}", std::string(static_cast<std::size_t>(filled), '#'), room, text);
    }
    if (static_cast<int>(text.size()) > columns) {
        text.resize(static_cast<std::size_t>(std::max(columns, 0)));
    }
    return text;
}

ProgressBar::ProgressBar(int terminal, std::uint64_t totalBytes)
    : fTerminal(terminal), fStart(Clock::now()), fNextDrawing(fStart) {
    fProgress.totalBytes = totalBytes;
    Draw(fStart);
}

ProgressBar::~ProgressBar() {
    Hide();
}

void ProgressBar::Update(std::uint64_t rows, std::uint64_t bytes) {
    if (++fUpdates % kUpdatesPerClockReading == 0) {
        UpdateMany(rows, bytes);
    } else {
        fProgress.rows = rows;
        fProgress.bytes = bytes;
    }
}

void ProgressBar::UpdateMany(std::uint64_t rows, std::uint64_t bytes) {
    fProgress.rows = rows;
    fProgress.bytes = bytes;
    const Clock::time_point now = Clock::now();
    if (now >= fNextDrawing) {
        Draw(now);
    }
}

void ProgressBar::Draw(Clock::time_point now) {
    fNextDrawing = now + kDrawingInterval;
    fProgress.seconds = std::chrono::duration<double>(now - fStart).count();
    const std::string line = std::string(kClearLine) + RenderProgress(fProgress, Columns(fTerminal) - 1);
    fShown = ::write(fTerminal, line.data(), line.size()) > 0;
}

void ProgressBar::Hide() {
    if (fShown) {
        fShown = ::write(fTerminal, kClearLine.data(), kClearLine.size()) < 0;
    }
}

void ProgressBar::Finish() {
    Draw(Clock::now());
    fShown = ::write(fTerminal, "\n", 1) < 0;
}

} // namespace veltrane::host
