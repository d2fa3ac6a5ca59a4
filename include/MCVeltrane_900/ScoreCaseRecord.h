#ifndef MCVELTRANE_900_SCORECASERECORD_H
#define MCVELTRANE_900_SCORECASERECORD_H

#include <MCVeltrane_900/ScoreDictVar.h>

#include <vector>

namespace MCVeltrane_900 {

/// One row of input to a model: named values, each reached by name and by position. A host may supply its own.
///
/// Who reads a variable from a record first asks, when HasMap() is true, for the position in the variable's value
/// index, and then, when that gave null, for its name. A value index that is set has to be the record's position for
/// that variable: nothing compares the two.
class VELTRANE_API ScoreCaseRecord {
public:
    virtual ~ScoreCaseRecord();

    /// Adds a value at the next position, or puts it in the place of a known name, where the old value isn't deleted.
    /// @param value becomes the record's; may be null
    virtual void Add(const std::string& name, ScoreValue* value) = 0;

    /// The setters overwrite a value of their own kind or fill an empty slot.
    /// @return false, and no change, for a bad position or name, or a value of another kind
    virtual bool SetValue(int index, const std::string& text) = 0;
    virtual bool SetValue(const std::string& name, const std::string& text) = 0;
    /// @param value number in the unit and from the epoch of type
    virtual bool SetValue(int index, double value, ScoreDictVar::DateTimeType type) = 0;
    virtual bool SetValue(const std::string& name, double value, ScoreDictVar::DateTimeType type) = 0;
    virtual bool SetValue(int index, double value) = 0;
    virtual bool SetValue(const std::string& name, double value) = 0;

    /// Makes a number or date-time SYSMIS and a text empty.
    /// @return false for a bad position or name, or an empty slot
    virtual bool SetMissingValue(int index) = 0;
    virtual bool SetMissingValue(const std::string& name) = 0;

    /// Deletes a value; its name and its position, then empty, stay.
    virtual void Remove(const std::string& name) = 0;

    /// The value at a position, or null; it stays the record's.
    virtual const ScoreValue* Get(int index) const = 0;
    /// The value of a name, or null; it stays the record's.
    virtual const ScoreValue* Get(const std::string& name) const = 0;

    /// Prepares the record for a number of values; positions are still given out by Add alone.
    virtual void SetUpNameIndexMap(const std::vector<std::string>& names) = 0;
    virtual void SetUpNameIndexMap(const std::vector<ScoreDictVar*>& vars) = 0;

    /// Whether the record's values can be read by position.
    virtual bool HasMap() const = 0;
    /// The position of a name, or -1.
    virtual int GetIndex(const std::string& name) const = 0;
    /// The number of positions, empty ones included.
    virtual int Size() const = 0;

    /// The names, Size() of them.
    /// @param byIndex true for the order of the positions, false for sorted names
    virtual std::vector<std::string> GetVarNames(bool byIndex) const = 0;

    /// The values by position; they stay the record's, and an entry may be null.
    virtual const std::vector<ScoreValue*>& GetAllValues() const = 0;

    /// Writes a debug dump.
    virtual void Display(std::ostream& out) const = 0;
};

} // namespace MCVeltrane_900

#endif
