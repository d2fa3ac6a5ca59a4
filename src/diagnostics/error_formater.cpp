#include <MCVeltrane_900/ErrorFormater.h>

#include <iterator>

namespace MCVeltrane_900 {

namespace {

ScoreContext::MessageItem gCatalogue[] = {
#define VELTRANE_MESSAGE(id, name, pattern) {id, const_cast<char*>(pattern)},
#include <MCVeltrane_900/Messages.def>
#undef VELTRANE_MESSAGE
};

} // namespace

ScoreContext::VTErrorFormater gErrorFormater(static_cast<int>(std::size(gCatalogue)), gCatalogue);

} // namespace MCVeltrane_900
