// TextIndex: how often a term stands in a text.
#include "kit/expressions/expression_reader.h"
#include "kit/expressions/leaves.h"
#include "kit/functions/text_index.h"

namespace veltrane_kit {

namespace {

constexpr Word<TextIndex::Weight> kWeights[] = {
    {u"termFrequency", TextIndex::Weight::TERM_FREQUENCY},
    {u"binary", TextIndex::Weight::BINARY},
    {u"logarithmic", TextIndex::Weight::LOGARITHMIC},
    {u"augmentedNormalizedTermFrequency", TextIndex::Weight::AUGMENTED},
};

constexpr Word<bool> kCountHits[] = {{u"allHits", false}, {u"bestHits", true}};

std::optional<DataType> TypeOf(TextIndex::Weight weight) {
    const bool counts = weight == TextIndex::Weight::TERM_FREQUENCY || weight == TextIndex::Weight::BINARY;
    return counts ? DataType::INTEGER : DataType::DOUBLE;
}

class TextIndexExpression final : public Expression {
public:
    TextIndexExpression(const TextIndex::Settings& settings, const std::string& encoding, ExpressionPtr text,
                        ExpressionPtr term)
        : Expression(TypeOf(settings.weight)), fIndex(settings, encoding), fText(std::move(text)),
          fTerm(std::move(term)) {
        DependOn(*fText);
        DependOn(*fTerm);
        AddCost(kCostOfText);
    }

    using Expression::Evaluate;
    Value Evaluate(Frame& frame) const override {
        return fIndex.Evaluate(fText->Evaluate(frame), fTerm->Evaluate(frame));
    }

protected:
    Column ComputeColumn(Block& block) const override {
        ColumnBuilder builder(block, Type());
        const Block::Scratch scratch(block);
        const Column text = fText->Evaluate(block);
        const Column term = fTerm->Evaluate(block);
        for (std::size_t row = 0; row < block.Count(); ++row) {
            builder.Set(row, fIndex.Evaluate(text.At(row), term.At(row)));
        }
        return builder.Get();
    }

private:
    TextIndex fIndex;
    ExpressionPtr fText;
    ExpressionPtr fTerm;
};

/// What an element states of the comparison, and for the rest what stands above it.
TextIndex::Comparison ReadComparison(const Element& element, TextIndex::Comparison comparison) {
    comparison.isCaseSensitive = element.FlagOr(u"isCaseSensitive", comparison.isCaseSensitive);
    comparison.mostDistance = element.IntegerOr(u"maxLevenshteinDistance", comparison.mostDistance);
    if (comparison.mostDistance < 0) {
        element.RaiseInvalid(u"maxLevenshteinDistance");
    }
    comparison.separator = element.TextOr(u"wordSeparatorCharacterRE", comparison.separator);
    comparison.isCutIntoTokens = element.FlagOr(u"tokenize", comparison.isCutIntoTokens);
    return comparison;
}

TextIndex::Normalization ReadNormalization(const Element& element, const TextIndex::Comparison& above) {
    TextIndex::Normalization normalization;
    normalization.comparison = ReadComparison(element, above);
    normalization.isRecursive = element.FlagOr(u"recursive", false);
    const std::string what = LocalName(element.TextOr(u"inField", "string"));
    const std::string by = LocalName(element.TextOr(u"outField", "stem"));
    const std::string regex = LocalName(element.TextOr(u"regexField", "regex"));
    for (std::map<std::string, std::string>& row : ReadRows(element)) {
        normalization.rows.push_back({row[what], row[by], row[regex] == "true" || row[regex] == "1"});
    }
    return normalization;
}

} // namespace

ExpressionPtr ExpressionReader::ReadTextIndex(const Element& element) {
    TextIndex::Settings settings;
    settings.weight = element.OneOfOr(u"localTermWeights", kWeights, TextIndex::Weight::TERM_FREQUENCY);
    settings.countsBestHits = element.OneOfOr(u"countHits", kCountHits, false);
    settings.comparison = ReadComparison(element, {});
    ExpressionPtr text = AsType(ReadField(element, u"textField"), DataType::STRING, fLayout);
    for (const Element child : element.Children()) {
        if (child.Is(u"TextIndexNormalization")) {
            settings.normalizations.push_back(ReadNormalization(child, settings.comparison));
        }
    }
    ExpressionPtr termExpression = AsType(ReadAmong(element, DataType::STRING), DataType::STRING, fLayout);
    return std::make_unique<TextIndexExpression>(settings, fLayout.encoding, std::move(text),
                                                 std::move(termExpression));
}

} // namespace veltrane_kit
