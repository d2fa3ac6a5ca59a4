#ifndef VELTRANE_DIAGNOSTICS_TRACE_H
#define VELTRANE_DIAGNOSTICS_TRACE_H

#include <MCVeltrane_900/ScoringLog.h>

namespace veltrane::diagnostics {

/// The levels of the trace log.
enum TraceLevel { TRACE_PROGRESS = 1, TRACE_DETAILS = 2, TRACE_ERRORS = 3 };

/// Traces through the log of the process, when there is one. `format` is a printf format.
template <typename... Arguments>
void Trace(TraceLevel level, const char* format, Arguments... arguments) {
    if (MCVeltrane_900::ScoringLog* log = MCVeltrane_900::ScoringLog::GetInstance(); log != nullptr) {
        log->TraceText(level, format, arguments...);
    }
}

} // namespace veltrane::diagnostics

#endif
