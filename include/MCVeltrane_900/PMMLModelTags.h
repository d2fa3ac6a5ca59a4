#ifndef MCVELTRANE_900_PMMLMODELTAGS_H
#define MCVELTRANE_900_PMMLMODELTAGS_H

#include <veltrane_export.h>

namespace MCVeltrane_900 {

/// The vocabulary of model documents: every element name, attribute name and keyword value that a reader of this
/// library or of a plug-in compares with, as one exported constant each, so that all of them use one spelling. Families
/// by the second word of a name: XML_ATT_ attribute names, XML_ELE_ and XML_ELM_ element names, XML_VAL_ keyword
/// values, XML_EXT_ names inside Extension content, XML_MSTAT_ univariate statistics, XML_KORD_TRANFUNC_ functions of
/// Apply.
///
/// The rows stand in PMMLModelTags.def. Compare document text with BaseTranslator::IsEqual and GetChildByTag.
class VELTRANE_API PMMLModelTags {
public:
    PMMLModelTags() = delete;

#define VELTRANE_TAG(name, literal) static char const name[];
#include <MCVeltrane_900/PMMLModelTags.def>
};

} // namespace MCVeltrane_900

#endif
