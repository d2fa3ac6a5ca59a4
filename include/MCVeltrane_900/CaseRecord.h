#ifndef MCVELTRANE_900_CASERECORD_H
#define MCVELTRANE_900_CASERECORD_H

#include <MCVeltrane_900/Owned.h>
#include <MCVeltrane_900/ScoreCaseRecord.h>

#include <functional>
#include <map>

namespace MCVeltrane_900 {

/// The library's record: filled once by Add, then overwritten by SetValue case after case. A position, once given out,
/// never changes.
class VELTRANE_API CaseRecord : public ScoreCaseRecord {
public:
    /// @param capacity number of values to reserve room for
    explicit CaseRecord(int capacity = 10);
    /// Clones the values.
    CaseRecord(const CaseRecord& other);
    /// Deletes the own values, then clones the other's.
    CaseRecord& operator=(const CaseRecord& other);
    ~CaseRecord() override;

    void Add(const std::string& name, ScoreValue* value) override;
    bool SetValue(int index, const std::string& text) override;
    bool SetValue(const std::string& name, const std::string& text) override;
    bool SetValue(int index, double value, ScoreDictVar::DateTimeType type) override;
    bool SetValue(const std::string& name, double value, ScoreDictVar::DateTimeType type) override;
    bool SetValue(int index, double value) override;
    bool SetValue(const std::string& name, double value) override;
    bool SetMissingValue(int index) override;
    bool SetMissingValue(const std::string& name) override;
    void Remove(const std::string& name) override;
    const ScoreValue* Get(int index) const override;
    const ScoreValue* Get(const std::string& name) const override;
    void SetUpNameIndexMap(const std::vector<std::string>& names) override;
    void SetUpNameIndexMap(const std::vector<ScoreDictVar*>& vars) override;
    bool HasMap() const override;
    int GetIndex(const std::string& name) const override;
    int Size() const override;
    std::vector<std::string> GetVarNames(bool byIndex) const override;
    const std::vector<ScoreValue*>& GetAllValues() const override;
    void Display(std::ostream& out) const override;

private:
    std::map<std::string, int, std::less<>> fNameIndexMap;
    OwnedVector<ScoreValue> fValues;
};

} // namespace MCVeltrane_900

#endif
