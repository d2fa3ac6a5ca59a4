#ifndef VELTRANE_HOST_ZSTD_FRAMES_H
#define VELTRANE_HOST_ZSTD_FRAMES_H

#include "files/packing.h"
#include "files/unpacking.h"

namespace veltrane::host {

/// The format of zstd: frames one behind the other. One that needs a window of more than 128 MiB is refused.
std::unique_ptr<Unpacker> MakeZstdUnpacker();

/// Writes one frame, with a checksum.
std::unique_ptr<PackedSink> MakeZstdSink(ByteSink& sink);

} // namespace veltrane::host

#endif
