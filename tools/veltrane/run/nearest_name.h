#ifndef VELTRANE_HOST_NEAREST_NAME_H
#define VELTRANE_HOST_NEAREST_NAME_H

#include <string>
#include <string_view>
#include <vector>

namespace veltrane::host {

/// The name that a person most likely meant by a word that is none: the same but for case and blanks around it, one
/// that the word begins, or one that few slips of the keyboard turn into it.
/// @return one of the names, the first of those that are equally near; empty when none is near
std::string NearestName(std::string_view word, const std::vector<std::string>& names);

/// A name as the end of a sentence: `; did you mean "score"?`; nothing where there is none.
std::string DidYouMean(std::string_view nearest);

/// The nearest name as the end of a sentence.
std::string Suggestion(std::string_view word, const std::vector<std::string>& names);

} // namespace veltrane::host

#endif
