#include <MCVeltrane_900/PMMLModelTags.h>

namespace MCVeltrane_900 {

#define VELTRANE_TAG(name, literal) char const PMMLModelTags::name[] = literal;
#include <MCVeltrane_900/PMMLModelTags.def>

} // namespace MCVeltrane_900
