#include <MCXML_900/MCXInputSource.h>

#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <istream>

namespace MCXML_900 {

namespace {

/// The bytes of a standard stream, as the XML parser asks for them. A stream that is set to throw counts as one that
/// is not: the end of a stream is an answer here and not a failure.
class MCXBinInputStream : public xercesc::BinInputStream {
public:
    explicit MCXBinInputStream(std::istream* in) : fStream(in) {}

    XMLFilePos curPos() const override {
        try {
            return static_cast<XMLFilePos>(fStream->tellg());
        } catch (const std::ios_base::failure&) {
            return static_cast<XMLFilePos>(-1);
        }
    }

    XMLSize_t readBytes(XMLByte* const buffer, const XMLSize_t maxToRead) override {
        try {
            fStream->read(reinterpret_cast<char*>(buffer), static_cast<std::streamsize>(maxToRead));
        } catch (const std::ios_base::failure&) {
            // gcount tells what was read before
        }
        return static_cast<XMLSize_t>(fStream->gcount());
    }

    const XMLCh* getContentType() const override { return nullptr; }

private:
    std::istream* fStream;
};

} // namespace

MCXInputSource::MCXInputSource(std::istream& in)
    : xercesc::InputSource("istream", xercesc::XMLPlatformUtils::fgMemoryManager), fStream(in) {}

MCXInputSource::~MCXInputSource() = default;

xercesc::BinInputStream* MCXInputSource::makeStream() const {
    return new MCXBinInputStream(&fStream);
}

} // namespace MCXML_900
