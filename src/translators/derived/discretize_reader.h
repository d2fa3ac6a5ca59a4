#ifndef VELTRANE_TRANSLATORS_DISCRETIZE_READER_H
#define VELTRANE_TRANSLATORS_DISCRETIZE_READER_H

#include "translators/frame/document_text.h"

#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/ScoreValueRange.h>

#include <memory>
#include <string>
#include <vector>

namespace veltrane::translators {

/// Reads the bins of a Discretize into two lists, of ranges and of values, and hands them to the derived field.
///
/// The lists grow separately: which of a bin's extensions stand in it, and whether ahead of its Interval, decides what
/// the bin adds to either. What then stands at one position of both lists is one bin of the field, also when the two
/// parts come from different bins of the document.
class DiscretizeReader {
public:
    /// @param var the derived field; it gets the bin values as labels when it has no labels yet
    DiscretizeReader(MCVeltrane_900::PMMLTranslator& translator, const DocumentText& text,
                     MCVeltrane_900::TransformVar& var);

    /// Reads the child elements.
    void Read(xercesc::DOMElement* discretize);

    /// Tests the ranges against each other and gives the bins to the field. A range without a value is dropped.
    /// @throws VTException 260293 when two ranges intersect, 260115 when there is a value without a range
    void GiveBins(const std::string& source);

private:
    /// What the children of one bin say.
    struct Bin {
        int intervals = 0;
        bool plain = true;
        unsigned flags = 0;
    };

    void ReadExtension(xercesc::DOMElement* extension);
    void ReadBin(xercesc::DOMElement* element);
    void ReadBinInterval(xercesc::DOMElement* interval, Bin& bin);
    void ReadBinExtension(xercesc::DOMElement* extension, Bin& bin);
    void AddLabel(const std::string& binValue);
    void AddRange(xercesc::DOMElement* interval);
    void AddValue(std::unique_ptr<MCVeltrane_900::ScoreValue> value);
    std::unique_ptr<MCVeltrane_900::ScoreValue> MakeBinValue(const std::string& binValue) const;
    void CheckIntersections(const std::string& source) const;

    MCVeltrane_900::PMMLTranslator& fTranslator;
    DocumentText fText;
    MCVeltrane_900::TransformVar& fVar;
    bool fCollectLabels;
    std::vector<std::unique_ptr<MCVeltrane_900::ScoreValueRange>> fRanges;
    std::vector<std::unique_ptr<MCVeltrane_900::ScoreValue>> fValues;
    int fBinCount = 0;
};

} // namespace veltrane::translators

#endif
