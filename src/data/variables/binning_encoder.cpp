#include "diagnostics/trace.h"

#include <MCCommon_900/MCMV.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreBinningEncoder.h>

namespace MCVeltrane_900 {

namespace {

/// Marks an entry to or an exit from Encode; both say "Exit".
void TraceEncode() {
    using namespace veltrane::diagnostics;
    Trace(TRACE_PROGRESS, "Exit:%s", "MCVeltrane_900::ScoreBinningEncoder::Encode");
}

int FindBin(const std::vector<double>& cutpoints, int numberOfBins, double number) {
    int low = 0;
    int high = numberOfBins - 2;
    if (high < 0) {
        return number < 0.0 ? 0 : 1;
    }
    int middle = 0;
    do {
        middle = (low + high) / 2;
        if (number == cutpoints[middle]) {
            return middle;
        }
        if (cutpoints[middle] > number) {
            high = middle - 1;
        } else {
            low = middle + 1;
        }
    } while (low <= high);
    return cutpoints[middle] > number ? middle : middle + 1;
}

} // namespace

ScoreBinningEncoder::ScoreBinningEncoder() = default;
ScoreBinningEncoder::ScoreBinningEncoder(const std::vector<double>& cutpoints) {
    SetBinningCutpoints(cutpoints);
}
ScoreBinningEncoder::ScoreBinningEncoder(const ScoreBinningEncoder& other) = default;
ScoreBinningEncoder& ScoreBinningEncoder::operator=(const ScoreBinningEncoder& other) = default;
ScoreBinningEncoder::~ScoreBinningEncoder() = default;

ScoreEncoder::EncoderType ScoreBinningEncoder::GetEncoderType() const {
    return ENCODER_BINNING;
}
int ScoreBinningEncoder::GetNumberOfCategories() const {
    return fNumberOfBins;
}

double ScoreBinningEncoder::Encode(double number) const {
    TraceEncode();
    const int bin = FindBin(fCutpoints, fNumberOfBins, number);
    TraceEncode();
    return bin;
}

int ScoreBinningEncoder::Encode(const ScoreValue* value) {
    return EncodeConst(value);
}
int ScoreBinningEncoder::Encode(const std::string& text) {
    return EncodeConst(text);
}

int ScoreBinningEncoder::EncodeConst(const std::string& text) const {
    return static_cast<int>(Encode(NumericValue(text).GetDouble()));
}

int ScoreBinningEncoder::EncodeConst(const ScoreValue* value) const {
    return value->GetType() == ScoreValue::NUMERIC_VALUE ? static_cast<int>(Encode(value->GetDouble())) : -1;
}

std::string ScoreBinningEncoder::Decode(int) const {
    return std::string();
}
double ScoreBinningEncoder::DecodeNum(int) const {
    return MCCommon_900::MCMV::Missing();
}
ScoreEncoder* ScoreBinningEncoder::Clone() const {
    return new ScoreBinningEncoder(*this);
}
void ScoreBinningEncoder::SetValueLabels(const std::vector<std::string>&) {}
void ScoreBinningEncoder::SetValueLabel(int, const std::string&) {}
const std::vector<std::string>* ScoreBinningEncoder::GetValueLabels() const {
    return nullptr;
}

void ScoreBinningEncoder::Display(std::ostream& out) const {
    out << "\tScoreBinningEncoder: number of bins = " << fNumberOfBins << "\n"
        << "\t\tCutpoints: ";
    for (const double cutpoint : fCutpoints) {
        out << cutpoint << " ";
    }
    out << "\n";
}

void ScoreBinningEncoder::SetBinningCutpoints(const std::vector<double>& cutpoints) {
    fCutpoints = cutpoints;
    fNumberOfBins = static_cast<int>(cutpoints.size()) + 1;
}

} // namespace MCVeltrane_900
