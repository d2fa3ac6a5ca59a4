#ifndef MCXML_900_MCX_INPUT_SOURCE_H
#define MCXML_900_MCX_INPUT_SOURCE_H

#include <veltrane_export.h>

#include <xercesc/sax/InputSource.hpp>

#include <iosfwd>

namespace MCXML_900 {

/// Lets the XML parser read a document from a standard stream.
///
/// The stream is read raw from its current position; finding out the encoding is left to the parser.
class VELTRANE_API MCXInputSource : public xercesc::InputSource {
public:
    /// @param in borrowed; it must outlive the source and what makeStream returns
    explicit MCXInputSource(std::istream& in);
    ~MCXInputSource() override;

    /// @return a new byte stream over the stream, owned by the caller
    xercesc::BinInputStream* makeStream() const override;

private:
    std::istream& fStream;
};

} // namespace MCXML_900

#endif
