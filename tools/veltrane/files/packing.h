#ifndef VELTRANE_HOST_PACKING_H
#define VELTRANE_HOST_PACKING_H

#include "files/byte_stream.h"

#include <memory>
#include <string>

namespace veltrane::host {

/// Packs what is written and writes that to another sink, in an amount of memory that doesn't depend on it.
class PackedSink : public ByteSink {
public:
    /// Writes what is still held and the end of the archive. Without it the archive is cut off.
    virtual void Finish() = 0;
};

/// The sink for an output of this name: `.gz` is packed by gzip, `.zst` by zstd, in whatever case.
/// @param sink borrowed; where the packed bytes go
/// @return null for any other name
std::unique_ptr<PackedSink> MakePackedSink(const std::string& name, ByteSink& sink);

} // namespace veltrane::host

#endif
