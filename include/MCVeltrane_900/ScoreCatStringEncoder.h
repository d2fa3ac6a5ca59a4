#ifndef MCVELTRANE_900_SCORECATSTRINGENCODER_H
#define MCVELTRANE_900_SCORECATSTRINGENCODER_H

#include <MCVeltrane_900/ScoreEncoder.h>

#include <functional>
#include <map>
#include <string_view>

namespace MCVeltrane_900 {

/// Codes texts in the order of their first appearance.
///
/// A text that isn't known as it stands is matched, and learned, without its trailing blanks; a text of blanks only is
/// taken for one blank, or for the empty text when that isn't a value. Setting "no space trim" switches this off.
class VELTRANE_API ScoreCatStringEncoder : public ScoreEncoder {
public:
    /// @param capacity number of categories to reserve room for
    explicit ScoreCatStringEncoder(int capacity);
    /// Encodes each text in order.
    explicit ScoreCatStringEncoder(const std::vector<std::string>& texts);
    /// Copies codes and flags, and no labels.
    ScoreCatStringEncoder(const ScoreCatStringEncoder& other);
    /// Copies the codes; flags and labels stay as they were.
    ScoreCatStringEncoder& operator=(const ScoreCatStringEncoder& other);
    ~ScoreCatStringEncoder() override;

    EncoderType GetEncoderType() const override;
    int GetNumberOfCategories() const override;
    int Encode(const ScoreValue* value) override;
    int Encode(const std::string& text) override;
    int EncodeConst(const std::string& text) const override;
    int EncodeConst(const ScoreValue* value) const override;
    std::string Decode(int code) const override;
    double DecodeNum(int code) const override;
    ScoreEncoder* Clone() const override;
    void SetValueLabels(const std::vector<std::string>& labels) override;
    void SetValueLabel(int code, const std::string& label) override;
    const std::vector<std::string>* GetValueLabels() const override;
    void Display(std::ostream& out) const override;

    bool GetEmptyStringOK() const { return fEmptyStringOK; }
    void SetEmptyStringOK(bool emptyStringOK) { fEmptyStringOK = emptyStringOK; }
    bool GetNoSpaceTrim() const { return fNoSpaceTrim; }
    void SetNoSpaceTrim(bool noSpaceTrim) { fNoSpaceTrim = noSpaceTrim; }

private:
    void CreateLinks();

    std::map<std::string, int, std::less<>> fCodes;
    /// The key of each code. The pointers are good for as long as the nodes of the map live.
    std::vector<const std::string*> fLinks;
    std::vector<std::string> fLabels;
    int fLastCode = -1;
    bool fNoSpaceTrim = false;
    bool fEmptyStringOK = true;
};

} // namespace MCVeltrane_900

#endif
