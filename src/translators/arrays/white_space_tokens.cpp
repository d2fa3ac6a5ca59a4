#include "translators/arrays/white_space_tokens.h"

#include <algorithm>

namespace veltrane::translators {

namespace {

constexpr XMLCh kWhiteSpace[] = {' ', '\t', '\r', '\n', 0};

} // namespace

WhiteSpaceTokens::WhiteSpaceTokens(const XMLCh* text) : fText(text), fRest(fText) {}

std::size_t WhiteSpaceTokens::Count() const {
    std::size_t count = 0;
    for (View rest = fText; !Take(rest).empty();) {
        ++count;
    }
    return count;
}

const XMLCh* WhiteSpaceTokens::Next() {
    fToken = Take(fRest);
    return fToken.empty() ? nullptr : fToken.c_str();
}

/// The first token of a text, cut off it; empty when it has none.
WhiteSpaceTokens::View WhiteSpaceTokens::Take(View& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(kWhiteSpace), rest.size()));
    const View token = rest.substr(0, rest.find_first_of(kWhiteSpace));
    rest.remove_prefix(token.size());
    return token;
}

} // namespace veltrane::translators
