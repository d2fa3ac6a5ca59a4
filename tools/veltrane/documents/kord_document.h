#ifndef VELTRANE_HOST_KORD_DOCUMENT_H
#define VELTRANE_HOST_KORD_DOCUMENT_H

#include <memory>
#include <string>

namespace MCVeltrane_900 {
class ScoreDictionary;
} // namespace MCVeltrane_900

namespace veltrane::host {

class DocumentFile;

/// Reads the dictionary of a document with the root "kord-ml", its texts in the named encoding; null for any other
/// root.
/// @param document one that the library has parsed before, and found within its bounds
/// @throws VTException for a dictionary that cannot be read, `Failure` for a document that cannot be read once more
std::unique_ptr<MCVeltrane_900::ScoreDictionary> ReadKordDictionary(DocumentFile& document,
                                                                    const std::string& encoding);

} // namespace veltrane::host

#endif
