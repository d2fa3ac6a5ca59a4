#ifndef VELTRANE_TRANSLATORS_WHITE_SPACE_TOKENS_H
#define VELTRANE_TRANSLATORS_WHITE_SPACE_TOKENS_H

#include <xercesc/util/XercesDefs.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace veltrane::translators {

/// The tokens of a text between blanks, tabs and line ends: what XMLStringTokenizer gives, at a cost that doesn't grow
/// with what is left of the text. Borrows the text.
class WhiteSpaceTokens {
public:
    explicit WhiteSpaceTokens(const XMLCh* text);

    /// How many tokens the whole text has.
    std::size_t Count() const;

    /// The next token, valid until the next call; null when there is none left.
    const XMLCh* Next();

private:
    using View = std::basic_string_view<XMLCh>;

    static View Take(View& rest);

    View fText;
    View fRest;
    std::basic_string<XMLCh> fToken;
};

} // namespace veltrane::translators

#endif
