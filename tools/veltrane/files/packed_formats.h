#ifndef VELTRANE_HOST_PACKED_FORMATS_H
#define VELTRANE_HOST_PACKED_FORMATS_H

#include "files/packing.h"
#include "files/unpacking.h"

namespace veltrane::host {

/// The format of gzip: members one behind the other, with zero bytes behind the last at most. One is written.
std::unique_ptr<Unpacker> MakeGzipUnpacker();
std::unique_ptr<PackedSink> MakeGzipSink(ByteSink& sink);

/// The format of zstd: frames one behind the other. One that needs a window of more than 128 MiB is refused. One is
/// written, with a checksum.
std::unique_ptr<Unpacker> MakeZstdUnpacker();
std::unique_ptr<PackedSink> MakeZstdSink(ByteSink& sink);

} // namespace veltrane::host

#endif
