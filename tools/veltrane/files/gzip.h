#ifndef VELTRANE_HOST_GZIP_H
#define VELTRANE_HOST_GZIP_H

#include "files/packing.h"
#include "files/unpacking.h"

namespace veltrane::host {

/// The format of gzip: members one behind the other, with zero bytes behind the last at most.
std::unique_ptr<Unpacker> MakeGzipUnpacker();

/// Writes one member.
std::unique_ptr<PackedSink> MakeGzipSink(ByteSink& sink);

} // namespace veltrane::host

#endif
