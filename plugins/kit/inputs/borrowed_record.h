#ifndef VELTRANE_PLUGINS_KIT_BORROWED_RECORD_H
#define VELTRANE_PLUGINS_KIT_BORROWED_RECORD_H

#include <MCVeltrane_900/ScoreCaseRecord.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace veltrane_kit {

/// A case whose values belong to others: to the host's record, or to what stands in for its values. Its layout is
/// fixed, so what reads from it by position finds the same field there for every case. As a ScoreCaseRecord it is
/// read-only.
class BorrowedRecord : public MCVeltrane_900::ScoreCaseRecord {
public:
    /// @return the position of the new field
    int AddField(const std::string& name);

    /// Puts a value in its place for the case at hand.
    /// @param value borrowed until the next one; null for none
    void Borrow(int index, const MCVeltrane_900::ScoreValue* value) {
        fValues[static_cast<std::size_t>(index)] = const_cast<MCVeltrane_900::ScoreValue*>(value);
    }

    void Add(const std::string& name, MCVeltrane_900::ScoreValue* value) override;
    bool SetValue(int index, const std::string& text) override;
    bool SetValue(const std::string& name, const std::string& text) override;
    bool SetValue(int index, double value, MCVeltrane_900::ScoreDictVar::DateTimeType type) override;
    bool SetValue(const std::string& name, double value, MCVeltrane_900::ScoreDictVar::DateTimeType type) override;
    bool SetValue(int index, double value) override;
    bool SetValue(const std::string& name, double value) override;
    bool SetMissingValue(int index) override;
    bool SetMissingValue(const std::string& name) override;
    void Remove(const std::string& name) override;
    const MCVeltrane_900::ScoreValue* Get(int index) const override;
    const MCVeltrane_900::ScoreValue* Get(const std::string& name) const override;
    void SetUpNameIndexMap(const std::vector<std::string>& names) override;
    void SetUpNameIndexMap(const std::vector<MCVeltrane_900::ScoreDictVar*>& vars) override;
    bool HasMap() const override;
    int GetIndex(const std::string& name) const override;
    int Size() const override;
    std::vector<std::string> GetVarNames(bool byIndex) const override;
    const std::vector<MCVeltrane_900::ScoreValue*>& GetAllValues() const override;
    void Display(std::ostream& out) const override;

private:
    std::map<std::string, int, std::less<>> fPositions;
    std::vector<MCVeltrane_900::ScoreValue*> fValues;
};

} // namespace veltrane_kit

#endif
