#ifndef MCVELTRANE_900_SCORINGLOG_H
#define MCVELTRANE_900_SCORINGLOG_H

#include <veltrane_export.h>

#include <string>

namespace MCVeltrane_900 {

/// The diagnostic trace. It is off unless the working directory holds the file "sc.cfg" with a line "trace_leve,N",
/// N above 0. When it is on, the process writes to the folder "log" + process id in the working directory, and each
/// thread to a file of its own there. Nothing here reports a failure: a file that cannot be opened loses the line.
class VELTRANE_API ScoringLog {
public:
    ScoringLog(const ScoringLog&) = delete;
    ScoringLog& operator=(const ScoringLog&) = delete;
    /// Clears the process-wide instance; the next GetInstance makes a new one, which reads "sc.cfg" again. No thread
    /// may be tracing meanwhile.
    ~ScoringLog();

    /// @return the instance of the process, made at the first call and kept to the end of the process; null when it
    ///         cannot be allocated. Any thread may call it.
    static ScoringLog* GetInstance();

    /// Writes one line. When the trace is off this costs one comparison.
    /// @param level  1 entries, exits and progress; 2 details; 3 errors. Written when it is not above the trace level
    /// @param format a printf format; the text is cut at 102399 bytes
#if defined(__GNUC__)
    __attribute__((format(printf, 3, 4)))
#endif
    void
    TraceText(int level, const char* format, ...);

private:
    ScoringLog();
    void Trace(const std::string& text, int level, bool perThread, const char* name);
    void Initialize();
    std::string MakeLogDir();
    std::string TrimWhitespace(const std::string& text);

    int fTraceLevel;
    std::string fLogDirectory;
};

} // namespace MCVeltrane_900

#endif
