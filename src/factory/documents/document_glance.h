#ifndef VELTRANE_FACTORY_DOCUMENT_GLANCE_H
#define VELTRANE_FACTORY_DOCUMENT_GLANCE_H

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

namespace veltrane::factory {

/// A look at the bytes of a document, which spares most documents the scan for an element that they don't hold.
///
/// A name can only stand in a document without its letters standing there too when the document has an encoding in
/// which ASCII isn't itself, or a document type declaration, whose entities spell it by numbers. What isn't sure to be
/// neither, or holds the letters anywhere, is left to the scan. The bytes are read as the XML parser reads them, and no
/// further than up to where they leave a doubt. There a stream that can is brought back to where it stood, so that
/// large documents needn't be kept; of another one the scan goes on from there.
class DocumentGlance {
public:
    /// Reads the stream from where it stands: to its end, or to where it can't be told.
    DocumentGlance(std::istream& in, std::string_view element);

    /// False when the document surely has no element of that name.
    bool MayHoldElement() const { return fMayHold; }

    /// What was read of the stream and stands in front of what is left in it.
    std::string_view Head() const { return fHead; }

private:
    static bool IsDoubtful(std::string_view bytes, std::string_view element);

    std::string fHead;
    bool fMayHold = false;
};

} // namespace veltrane::factory

#endif
