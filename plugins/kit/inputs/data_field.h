#ifndef VELTRANE_PLUGINS_KIT_DATA_FIELD_H
#define VELTRANE_PLUGINS_KIT_DATA_FIELD_H

#include "kit/document/element.h"
#include "kit/expressions/tables.h"
#include "kit/values/frame.h"

#include <MCVeltrane_900/ScoreDictVar.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace veltrane_kit {

/// What a DataField says: its type, and which of its values are valid, invalid and missing.
struct DataField {
    std::string name;
    DataType type = DataType::STRING;
    MCVeltrane_900::ScoreDictVar::MeasureLevel level = MCVeltrane_900::ScoreDictVar::LEVEL_NOMINAL;
    std::vector<OwnedValue> valid;   ///< in the order of the document; with intervals beside, either will do
    std::vector<std::string> labels; ///< for each of them what people see; empty where that is the value itself
    std::vector<OwnedValue> invalid;
    std::vector<OwnedValue> missing;
    std::vector<std::string> missingTexts; ///< what a case may write for a missing value though it is none of the type
    std::vector<Interval> intervals;

    bool IsListed(const Value& value) const;

    /// The valid values in their order, for a field of that level; none unless it is ordinal. Their texts are borrowed.
    std::vector<Value> InOrder(MCVeltrane_900::ScoreDictVar::MeasureLevel ofLevel) const;
};

/// By name.
using DataFields = std::map<std::string, DataField, std::less<>>;

/// Reads the fields of a DataDictionary as the document has them.
/// @throws VTException 260120, 260285 and 260153 for attributes, 260202 for a name that comes twice
DataFields ReadDataFields(const Element& dictionary);

} // namespace veltrane_kit

#endif
