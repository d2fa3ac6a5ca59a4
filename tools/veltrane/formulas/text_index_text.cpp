#include "formulas/text_index_text.h"

#include "formulas/formula_parts.h"

#include <fmt/format.h>

namespace veltrane::host {
namespace {

const std::string& ValueOr(const XmlNode& node, const char* attribute, const std::string& fallback) {
    return node.Has(attribute) ? node[attribute] : fallback;
}

/// What the texts of an index and those of a normalisation are compared by.
std::string ComparisonText(const XmlNode& node) {
    std::string text;
    if (node.Has("isCaseSensitive")) {
        text += IsTrue(node["isCaseSensitive"]) ? "; case sensitive" : "; case insensitive";
    }
    if (node.Has("maxLevenshteinDistance")) {
        text += "; distance " + node["maxLevenshteinDistance"];
    }
    if (node.Has("wordSeparatorCharacterRE")) {
        text += fmt::format("; words parted by /{}/", node["wordSeparatorCharacterRE"]);
    }
    if (node.Has("tokenize")) {
        text += IsTrue(node["tokenize"]) ? "; tokens" : "; no tokens";
    }
    return text;
}

std::string ContentOf(const XmlNode& row, const std::string& column) {
    const XmlNode* cell = CellOf(row, column);
    return cell == nullptr ? "" : cell->text;
}

/// What a regular expression is stands between slashes.
std::string ReplacementText(const XmlNode& row, const XmlNode& normalization) {
    const char* quote = IsTrue(ContentOf(row, ValueOr(normalization, "regexField", "regex"))) ? "/" : "\"";
    return fmt::format("{}{}{} -> \"{}\"", quote, ContentOf(row, ValueOr(normalization, "inField", "string")), quote,
                       ContentOf(row, ValueOr(normalization, "outField", "stem")));
}

std::string NormalizationText(const XmlNode& normalization) {
    Entries rows;
    for (const XmlNode* row : normalization.Child("InlineTable").Children("row")) {
        if (rows.IsShown()) {
            rows.Add(ReplacementText(*row, normalization));
        } else {
            rows.AddUnshown();
        }
    }
    return fmt::format("; replaces{}({}{})", IsTrue(normalization["recursive"]) ? "AgainAndAgain" : "", rows.Text(),
                       ComparisonText(normalization));
}

} // namespace

std::string TextIndexSettings(const XmlNode& textIndex) {
    std::string text;
    for (const char* attribute : {"localTermWeights", "countHits"}) {
        if (textIndex.Has(attribute)) {
            text += "; " + textIndex[attribute];
        }
    }
    text += ComparisonText(textIndex);
    for (const XmlNode* normalization : textIndex.Children("TextIndexNormalization")) {
        text += NormalizationText(*normalization);
    }
    return text;
}

} // namespace veltrane::host
