#include "platform/platform.h"

#include <MCVeltrane_900/ScoringLog.h>

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <memory>
#include <new>

namespace MCVeltrane_900 {

namespace {

constexpr const char* kConfigurationFile = "sc.cfg";
constexpr const char* kLevelKey = "trace_leve";
constexpr const char* kTraceName = "scoring_trace";
constexpr std::size_t kConfigurationLine = 64;
constexpr std::size_t kTextSize = 102400;
/// From this trace level on, every line carries the time.
constexpr int kTimeStampLevel = 3;

/// Set once the instance has read its configuration, so that whoever sees it sees its level and folder too.
std::atomic<ScoringLog*> gInstance{nullptr};

/// What atoi answers, with a number that leaves the range of int held at its end.
int ReadLevel(const std::string& text) {
    const long number = std::strtol(text.c_str(), nullptr, 10);
    if (number > std::numeric_limits<int>::max()) {
        return std::numeric_limits<int>::max();
    }
    return number < 0 ? 0 : static_cast<int>(number);
}

std::string TimeStamp() {
    const veltrane::platform::LocalTime now = veltrane::platform::Now();
    char text[64];
    std::snprintf(text, sizeof(text), "%04hu%02hu%02hu %02hu:%02hu:%02hu.%03hu", now.year, now.month, now.day, now.hour,
                  now.minute, now.second, now.millisecond);
    return text;
}

std::string FormatText(const char* format, va_list arguments) {
    char buffer[kTextSize] = {};
    std::vsnprintf(buffer, sizeof(buffer), format, arguments);
    return buffer;
}

} // namespace

ScoringLog::ScoringLog() : fTraceLevel(0) {
    Initialize();
}

ScoringLog::~ScoringLog() {
    ScoringLog* self = this;
    gInstance.compare_exchange_strong(self, nullptr);
}

ScoringLog* ScoringLog::GetInstance() {
    ScoringLog* held = gInstance.load(std::memory_order_acquire);
    if (held != nullptr) {
        return held;
    }
    // Threads may race here. The first one to publish wins; the others drop what they made.
    std::unique_ptr<ScoringLog> made(new (std::nothrow) ScoringLog);
    if (gInstance.compare_exchange_strong(held, made.get(), std::memory_order_acq_rel)) {
        return made.release();
    }
    return held;
}

void ScoringLog::TraceText(int level, const char* format, ...) {
    if (fTraceLevel < 1 || level > fTraceLevel) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    const std::string text = FormatText(format, arguments);
    va_end(arguments);
    Trace(text, level, true, kTraceName);
}

void ScoringLog::Trace(const std::string& text, int level, bool perThread, const char* name) {
    std::string path = fLogDirectory + veltrane::platform::kPathSeparator;
    if (perThread) {
        path += std::to_string(veltrane::platform::ThreadId()) + "_";
    }
    path += std::string(name) + ".log";
    std::ofstream file(path, std::ios::app);
    if (level > fTraceLevel) {
        return;
    }
    if (fTraceLevel >= kTimeStampLevel) {
        file << TimeStamp() << ": ";
    }
    file << text << '\n';
    file.flush();
}

void ScoringLog::Initialize() {
    std::ifstream file(kConfigurationFile);
    if (!file) {
        return;
    }
    int level = 0;
    // A line that does not fit the buffer is read as far as it goes and ends the reading.
    while (level < 1 && file) {
        char line[kConfigurationLine] = {};
        file.getline(line, sizeof(line));
        const std::string text = line;
        const std::size_t comma = text.find(',');
        if (comma != std::string::npos && TrimWhitespace(text.substr(0, comma)) == kLevelKey) {
            level = ReadLevel(TrimWhitespace(text.substr(comma + 1)));
        }
    }
    file.close();
    if (level > 0) {
        fTraceLevel = level;
        fLogDirectory = MakeLogDir();
    }
}

std::string ScoringLog::MakeLogDir() {
    std::string name = "log" + std::to_string(veltrane::platform::ProcessId());
    veltrane::platform::MakeDirectory(name);
    return name;
}

std::string ScoringLog::TrimWhitespace(const std::string& text) {
    constexpr const char* kWhitespace = " \t\f";
    const std::size_t first = text.find_first_not_of(kWhitespace);
    if (first == std::string::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kWhitespace) - first + 1);
}

} // namespace MCVeltrane_900
