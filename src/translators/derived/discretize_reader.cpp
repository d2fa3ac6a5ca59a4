#include "translators/derived/discretize_reader.h"

#include "diagnostics/raise.h"
#include "translators/derived/recode_attributes.h"
#include "translators/dictionary/range_overlap.h"
#include "translators/frame/element_walk.h"
#include "translators/frame/field_lookup.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformVar.h>

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace veltrane::translators {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::BaseTranslator;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::PMMLModelTags;
using MCVeltrane_900::PMMLTranslator;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::StringValue;
using MCVeltrane_900::TransformVar;
using xercesc::DOMElement;

namespace {

enum BinFlag : unsigned {
    MAP_SYSMIS_TO = 1,
    TARGET_SYSMIS = 2,
    INTERVAL_COPY = 4,
    ELSE_COPY = 8,
    MISSING_COPY = 16,
};

/// A recode extension of a bin. Those that are about the whole field go on to the field.
struct BinExtension {
    const char* name;
    BinFlag flag;
    bool setsField;
};
constexpr BinExtension kBinExtensions[] = {
    {PMMLModelTags::XML_ATT_TRAN_EXT_NAME_MAPSYSMISTO, MAP_SYSMIS_TO, true},
    {PMMLModelTags::XML_ATT_TRAN_EXT_NAME_RECODETARGETSYSMIS, TARGET_SYSMIS, false},
    {PMMLModelTags::XML_ATT_TRAN_EXT_NAME_INTERVALCOPY, INTERVAL_COPY, false},
    {PMMLModelTags::XML_ATT_TRAN_EXT_NAME_ELSECOPY, ELSE_COPY, false},
    {PMMLModelTags::XML_ATT_TRAN_EXT_NAME_MISSINGCOPY, MISSING_COPY, true},
};

const BinExtension* FindBinExtension(const DOMElement* extension) {
    const XMLCh* name = BaseTranslator::GetAttribute(extension, PMMLModelTags::XML_ATT_EXT_NAME);
    const auto* found = std::find_if(std::begin(kBinExtensions), std::end(kBinExtensions),
                                     [name](const BinExtension& row) { return Equals(name, row.name); });
    return found == std::end(kBinExtensions) ? nullptr : found;
}

std::unique_ptr<ScoreValue> MakeSysmis() {
    return std::make_unique<NumericValue>(NumericValue::SYSMIS);
}

[[noreturn]] void RaiseMissingInterval() {
    Raise<Message::MISSING_NODE_IN>(PMMLModelTags::XML_ELE_INTERVAL, PMMLModelTags::XML_ELE_DISCRETIZEBIN);
}

} // namespace

DiscretizeReader::DiscretizeReader(PMMLTranslator& translator, const DocumentText& text, TransformVar& var)
    : fTranslator(translator), fText(text), fVar(var), fCollectLabels(var.GetValueLabels() == nullptr) {}

void DiscretizeReader::Read(DOMElement* discretize) {
    for (DOMElement* child : ChildElements(discretize)) {
        if (HasTag(child, PMMLModelTags::XML_ELE_DISCRETIZEBIN)) {
            ReadBin(child);
        } else if (HasTag(child, PMMLModelTags::XML_ELE_EXTENSION)) {
            ReadExtension(child);
        } else {
            Raise<Message::UNEXPECTED_NODE_IN>(fText.Tag(child), "Extension, DiscretizeBin",
                                               PMMLModelTags::XML_ELE_DISCRETIZEBIN);
        }
    }
}

// An extension beside the bins is a bin of its own when it says where its interval is recoded to.
void DiscretizeReader::ReadExtension(DOMElement* extension) {
    const BinExtension* row = FindBinExtension(extension);
    if (row == nullptr || (row->flag != TARGET_SYSMIS && row->flag != INTERVAL_COPY)) {
        fTranslator.HandleKORDExtensions(extension, &fVar);
        return;
    }
    DOMElement* interval = FirstChildElement(extension);
    if (interval == nullptr) {
        RaiseMissingInterval();
    }
    AddRange(interval);
    AddValue(row->flag == TARGET_SYSMIS ? MakeSysmis() : nullptr);
}

void DiscretizeReader::ReadBin(DOMElement* element) {
    const std::string binValue = fText.Forced(element, PMMLModelTags::XML_ATT_BINVALUE);
    AddLabel(binValue);
    Bin bin;
    for (DOMElement* child : ChildElements(element)) {
        if (HasTag(child, PMMLModelTags::XML_ELE_INTERVAL)) {
            ReadBinInterval(child, bin);
        } else if (HasTag(child, PMMLModelTags::XML_ELE_EXTENSION)) {
            ReadBinExtension(child, bin);
        } else {
            Raise<Message::UNEXPECTED_NODE_IN>(fText.Tag(child), "Extension, Interval",
                                               PMMLModelTags::XML_ELE_DISCRETIZEBIN);
        }
    }
    if ((bin.flags & TARGET_SYSMIS) != 0) {
        AddValue(MakeSysmis());
    }
    if ((bin.flags & (INTERVAL_COPY | ELSE_COPY)) != 0) {
        AddValue(nullptr);
    }
    if (bin.plain) {
        AddValue(MakeBinValue(binValue));
    }
    if (bin.intervals == 0) {
        RaiseMissingInterval();
    }
}

// An extension that is about missing values makes the intervals behind it no bins; one ahead of it has become one.
void DiscretizeReader::ReadBinInterval(DOMElement* interval, Bin& bin) {
    if (bin.intervals > 0) {
        Raise<Message::MORE_THAN_ONE>(PMMLModelTags::XML_ELE_INTERVAL, PMMLModelTags::XML_ELE_DISCRETIZEBIN);
    }
    ++bin.intervals;
    if ((bin.flags & (MISSING_COPY | MAP_SYSMIS_TO)) == 0) {
        AddRange(interval);
    }
}

void DiscretizeReader::ReadBinExtension(DOMElement* extension, Bin& bin) {
    bin.plain = false;
    if (const BinExtension* row = FindBinExtension(extension)) {
        bin.flags |= row->flag;
        if (row->setsField) {
            fTranslator.HandleKORDExtensions(extension, &fVar);
        }
    }
}

void DiscretizeReader::AddLabel(const std::string& binValue) {
    if (!fCollectLabels || binValue.empty()) {
        return;
    }
    if (ScoreValue* value = fTranslator.CarefullyMakeVarValue(&fVar, binValue)) {
        fVar.AddScoreValueLabel(value, binValue);
    }
}

void DiscretizeReader::AddRange(DOMElement* interval) {
    fRanges.emplace_back(fTranslator.HandleDiscretizeBinInterVal(interval, fBinCount));
}

void DiscretizeReader::AddValue(std::unique_ptr<ScoreValue> value) {
    fValues.push_back(std::move(value));
    ++fBinCount;
}

std::unique_ptr<ScoreValue> DiscretizeReader::MakeBinValue(const std::string& binValue) const {
    if (fVar.GetVarType() == ScoreDictVar::kNUMERIC_VAR) {
        return std::make_unique<NumericValue>(BaseTranslator::VerifyDouble(binValue));
    }
    return std::make_unique<StringValue>(binValue);
}

void DiscretizeReader::CheckIntersections(const std::string& source) const {
    std::vector<BinRange> ranges;
    ranges.reserve(fRanges.size());
    for (const auto& range : fRanges) {
        ranges.push_back(
            {range->GetMin()->GetDouble(), range->GetMax()->GetDouble(), range->GetLowEnd(), range->GetHighEnd()});
    }
    if (AnyIntersect(ranges)) {
        Raise<Message::VALUE_RANGE_INTERSECTS>(source);
    }
}

// Extensions of one bin can add more values than ranges. A value that is left without a range has no bin to be the
// value of, so the document lacks an interval.
void DiscretizeReader::GiveBins(const std::string& source) {
    CheckIntersections(source);
    if (fValues.size() > fRanges.size()) {
        RaiseMissingInterval();
    }
    for (std::size_t i = 0; i < fValues.size(); ++i) {
        fVar.AddBinningValue(fRanges[i].release(), fValues[i].release(), source);
    }
}

} // namespace veltrane::translators

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;

std::string PMMLTranslator::HandleDiscritize(xercesc::DOMElement* element, ScoreDictVar* var,
                                             const ScoreDictionary* dictionary, const ScoreDictionary* derived) {
    const DocumentText text(*this, &PMMLTranslator::ToString);
    std::string source = text.Forced(element, PMMLModelTags::XML_ATT_FIELD);
    FieldLookup(dictionary, derived).Require(source);
    TransformVar& target = AsTransformVar(var);
    ReadMapMissingTo(*this, text, element, target);
    ReadDefaultValue(*this, text, element, target);
    if (!HasDescendants(element, PMMLModelTags::XML_ELE_DISCRETIZEBIN, 1)) {
        Raise<Message::MISSING_NODE_IN>(PMMLModelTags::XML_ELE_DISCRETIZEBIN, PMMLModelTags::XML_ELE_DERIVEDFIELD);
    }
    DiscretizeReader reader(*this, text, target);
    reader.Read(element);
    reader.GiveBins(source);
    return source;
}

} // namespace MCVeltrane_900
