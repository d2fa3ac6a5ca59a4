#include "transform/apply/child_values.h"
#include "transform/functions/rules.h"
#include "transform/functions/texts/text_limits.h"

#include <MCVeltrane_900/TransformationDictionary.h>

#include <algorithm>
#include <cstddef>
#include <limits>

namespace veltrane::functions {

/// The texts of all arguments, each with its stored length as its width.
const ScoreValue* Concat(ApplyNode& node) {
    for (const Argument& argument : node.GetArguments()) {
        node.Widths().push_back(transform::LengthOf(argument.value));
        node.Texts().push_back(transform::TextOfChild(argument.value));
    }
    int length = 0;
    const std::string text = MCVeltrane_900::TransformationDictionary::Concat(node.Texts(), node.Widths(), length);
    return node.Text(text, length);
}

} // namespace veltrane::functions

namespace MCVeltrane_900 {

using veltrane::functions::kLongestText;

/// Each argument fills exactly its field's width: longer ones are cut, shorter ones filled up with blanks. A negative
/// width is that of a field without one, which is never cut; it counts into the length as it is.
std::string TransformationDictionary::Concat(const std::vector<std::string>& texts, const std::vector<int>& widths,
                                             int& length) {
    std::string whole;
    long long total = 0;
    for (std::size_t i = 0; i < std::min(texts.size(), widths.size()); ++i) {
        total += widths[i];
        const std::size_t width = widths[i] < 0 ? texts[i].size() : static_cast<std::size_t>(widths[i]);
        whole.append(texts[i], 0, std::min(width, kLongestText - whole.size()));
        if (width > texts[i].size()) {
            whole.append(std::min(width - texts[i].size(), kLongestText - whole.size()), ' ');
        }
    }
    constexpr long long kLeast = std::numeric_limits<int>::min();
    constexpr long long kMost = std::numeric_limits<int>::max();
    length = static_cast<int>(std::clamp(total, kLeast, kMost));
    return whole;
}

} // namespace MCVeltrane_900
