#ifndef MCVELTRANE_900_SCORERESULTFIELD_H
#define MCVELTRANE_900_SCORERESULTFIELD_H

#include <veltrane_export.h>

#include <map>
#include <string>
#include <vector>

namespace MCVeltrane_900 {

class ScoreValue;

/// The outputs of one scoring: values by the name of the output field.
class VELTRANE_API ScoreResultField {
public:
    /// What an output field gives; the `feature` of the document.
    enum ResultFeature : int {
        RF_NONE = 0,
        RF_PREDICTED_VALUE = 1,
        RF_PREDICTED_DISPLAY_VALUE = 2,
        RF_PROBABILITY = 3,
        RF_RESIDUAL = 4,
        RF_STANDARD_ERROR = 5,
        RF_CLUSTER_ID = 6,
        RF_CLUSTER_AFFINITY = 7,
        RF_ENTITY_ID = 8,
        RF_ENTITY_AFFINITY = 9,
        RF_WARNING = 10,
        RF_RULE_VALUE = 11,
        RF_STANDARD_DEVIATION = 12,
    };

    virtual ~ScoreResultField();

    /// Drops all entries without deleting their values and takes over the given ones, pointers and all: the values are
    /// shared from then on, and the caller decides which holder deletes them.
    virtual void SetMapResultValue(const std::map<std::string, ScoreValue*>& values) = 0;
    virtual const std::map<std::string, ScoreValue*>& GetMapResultValue() const = 0;

    /// The value of a field, or null; it stays the holder's.
    virtual const ScoreValue* GetResultValue(const std::string& name) const = 0;

    /// Stores a clone under a new name, or takes over the content of a text or number of the same kind.
    /// @param value stays the caller's
    /// @return false for a null value, for another kind than the stored one, and for a stored date-time
    virtual bool SetResultValue(const std::string& name, const ScoreValue* value) = 0;
    /// Stores a text under a new name or over a text.
    /// @return false, and no change, when a value of another kind is stored
    virtual bool SetResultValue(const std::string& name, const std::string& text) = 0;
    /// Stores a number under a new name or over a number.
    /// @return false, and no change, when a value of another kind is stored
    virtual bool SetResultValue(const std::string& name, double value) = 0;

    /// RF_NONE, whatever the name.
    virtual ResultFeature GetResultType(const std::string& name) const = 0;

    /// Adds a value under a new name. A known name keeps its value, and the new one is neither stored nor deleted.
    /// @param value becomes the holder's, unless the name is known already
    virtual void AddResultField(const std::string& name, ScoreValue* value) = 0;

    /// The names, sorted.
    virtual std::vector<std::string> GetResultFields() const = 0;
    /// The number of fields.
    virtual int GetResultSize() const = 0;
};

} // namespace MCVeltrane_900

#endif
