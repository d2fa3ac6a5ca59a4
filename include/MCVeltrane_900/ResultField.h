#ifndef MCVELTRANE_900_RESULTFIELD_H
#define MCVELTRANE_900_RESULTFIELD_H

#include <MCVeltrane_900/ScoreResultField.h>

namespace MCVeltrane_900 {

/// The library's map of outputs. Its destructor deletes the values.
///
/// Copies share the values with the original, and each would delete them: a copy must outlive no owner, and before its
/// end all holders but one have to be emptied with SetMapResultValue({}), which deletes nothing.
class VELTRANE_API ResultField : public ScoreResultField {
public:
    ResultField();
    /// Copies the pointers; the values are shared.
    ResultField(const ResultField& other);
    /// Drops the own entries without deleting them, then copies the pointers; the values are shared.
    ResultField& operator=(const ResultField& other);
    ~ResultField() override;

    void SetMapResultValue(const std::map<std::string, ScoreValue*>& values) override;
    const std::map<std::string, ScoreValue*>& GetMapResultValue() const override;
    const ScoreValue* GetResultValue(const std::string& name) const override;
    bool SetResultValue(const std::string& name, const ScoreValue* value) override;
    bool SetResultValue(const std::string& name, const std::string& text) override;
    bool SetResultValue(const std::string& name, double value) override;
    ResultFeature GetResultType(const std::string& name) const override;
    void AddResultField(const std::string& name, ScoreValue* value) override;
    std::vector<std::string> GetResultFields() const override;
    int GetResultSize() const override;

private:
    std::map<std::string, ScoreValue*> fValues;
};

} // namespace MCVeltrane_900

#endif
