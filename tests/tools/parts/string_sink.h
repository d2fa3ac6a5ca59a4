#ifndef VELTRANE_TESTS_TOOLS_STRING_SINK_H
#define VELTRANE_TESTS_TOOLS_STRING_SINK_H

#include "files/csv_writer.h"
#include "results/result_columns.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace veltrane::host {

/// Keeps the bytes that are written to it.
class StringSink : public ByteSink {
public:
    void Write(std::string_view bytes) override {
        text += bytes;
        ++writes;
    }

    std::string text;
    int writes = 0;
};

/// The row of a file that has these values.
inline std::string RowOf(std::initializer_list<const MCVeltrane_900::ScoreValue*> values) {
    StringSink sink;
    CsvWriter writer(sink, ',');
    std::string scratch;
    for (const MCVeltrane_900::ScoreValue* value : values) {
        WriteValue(value, DateForm::DATE, writer, scratch);
    }
    writer.EndRow();
    writer.Flush();
    return sink.text;
}

} // namespace veltrane::host

#endif
