#include "../factory/entries/small_model.h"
#include "recording.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/ScoreCaseRecord.h>

#include <memory>

/// The plug-in that reads its document by itself. It offers to take the list of names, and is never given it. Its
/// models add the size of the document to a field `x`.

using namespace veltrane::tests::recording;
using MCVeltrane_900::DictVar;
using MCVeltrane_900::ScoreResult;
using MCVeltrane_900::ScoreValue;

namespace {

class NeighborModel : public RecordingModel {
public:
    NeighborModel(Lines lines, double size) : RecordingModel(std::move(lines)), fSize(size) {
        auto fields = std::make_unique<MCVeltrane_900::BaseDictionary>();
        fields->AddVar("x", new DictVar("x", MCVeltrane_900::ScoreDictVar::kNUMERIC_VAR));
        SetScoreDictionary(fields.release());
    }

    std::vector<std::string> GetInputNames() const override { return {"x"}; }
    ScoreResult* CreateResult() const override { return new veltrane::tests::SmallRegResult(1); }

    MCScore::MCStatus Score(const MCVeltrane_900::ScoreCaseRecord* record, ScoreResult* result) override {
        MCVeltrane_900::NumericValue sum(record->Get("x")->GetDouble() + fSize);
        result->SetResultValue(&sum);
        return {};
    }

private:
    double fSize;
};

class NeighborTranslator : public RecordingTranslator {
public:
    NeighborTranslator() : RecordingTranslator("NearestNeighborModel") {}

protected:
    ScoreModel* NewModel(Lines lines) const override {
        double size = 0;
        for (const auto& [key, value] : lines) {
            size = key == "size" ? std::stod(value) : size;
        }
        return new NeighborModel(std::move(lines), size);
    }
};

} // namespace

extern "C" {

VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new NeighborTranslator;
}

VELTRANE_API void PassModelNames(ScoreTranslator* translator, const std::vector<std::string>& names) {
    TakeNames(translator, names);
}
}
