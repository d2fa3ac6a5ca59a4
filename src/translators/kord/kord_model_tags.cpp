#include <MCVeltrane_900/KORDModelTags.h>

namespace MCVeltrane_900 {

#define VELTRANE_TAG(name, literal) char const KORDModelTags::name[] = literal;
#include <MCVeltrane_900/KORDModelTags.def>

} // namespace MCVeltrane_900
