#ifndef MCVELTRANE_900_KORDMODELTAGS_H
#define MCVELTRANE_900_KORDMODELTAGS_H

#include <veltrane_export.h>

namespace MCVeltrane_900 {

/// The vocabulary of documents with the root "kord-ml", as PMMLModelTags is that of PMML. Families by the second word
/// of a name: XML_ELE_ elements and XML_ATT_ attributes of the dictionary, XML_VAL_ values of attributes, XML_MODEL_
/// the elements and attributes of models, which plug-ins read, XML_MODELTYPE_ the values of "model-type".
///
/// The rows stand in KORDModelTags.def.
class VELTRANE_API KORDModelTags {
public:
    KORDModelTags() = delete;

#define VELTRANE_TAG(name, literal) static char const name[];
#include <MCVeltrane_900/KORDModelTags.def>
};

} // namespace MCVeltrane_900

#endif
