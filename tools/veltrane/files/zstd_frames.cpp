#include "files/failure.h"
#include "files/packed_formats.h"

#include <new>
#include <vector>
#include <zstd.h>

namespace veltrane::host {
namespace {

/// The window of 128 MiB, beyond which the tool of zstd itself asks for leave.
constexpr int kLargestWindow = 27;

struct ContextFree {
    void operator()(ZSTD_DCtx* context) const { ::ZSTD_freeDCtx(context); }
    void operator()(ZSTD_CCtx* context) const { ::ZSTD_freeCCtx(context); }
};

std::size_t Checked(std::size_t result) {
    if (::ZSTD_isError(result)) {
        throw Failure(std::string("the data of zstd cannot be unpacked: ") + ::ZSTD_getErrorName(result));
    }
    return result;
}

class ZstdUnpacker : public Unpacker {
public:
    ZstdUnpacker() : fContext(::ZSTD_createDCtx()) {
        if (!fContext) {
            throw std::bad_alloc();
        }
        Checked(::ZSTD_DCtx_setParameter(fContext.get(), ZSTD_d_windowLogMax, kLargestWindow));
    }

    bool IsComplete() const override { return fIsComplete; }

    std::size_t Unpack(std::string_view& input, char* buffer, std::size_t size) override {
        if (input.empty() && fIsComplete) {
            return 0;
        }
        ZSTD_inBuffer in{input.data(), input.size(), 0};
        ZSTD_outBuffer out{buffer, size, 0};
        fIsComplete = Checked(::ZSTD_decompressStream(fContext.get(), &out, &in)) == 0;
        input.remove_prefix(in.pos);
        return out.pos;
    }

private:
    std::unique_ptr<ZSTD_DCtx, ContextFree> fContext;
    bool fIsComplete = false;
};

class ZstdSink : public PackedSink {
public:
    explicit ZstdSink(ByteSink& sink) : fSink(sink), fContext(::ZSTD_createCCtx()), fBuffer(::ZSTD_CStreamOutSize()) {
        if (!fContext) {
            throw std::bad_alloc();
        }
        Checked(::ZSTD_CCtx_setParameter(fContext.get(), ZSTD_c_checksumFlag, 1));
    }

    void Write(std::string_view bytes) override {
        for (ZSTD_inBuffer in{bytes.data(), bytes.size(), 0}; in.pos < in.size;) {
            Step(in, ZSTD_e_continue);
        }
    }

    void Finish() override {
        ZSTD_inBuffer none{nullptr, 0, 0};
        while (Step(none, ZSTD_e_end) > 0) {
        }
    }

private:
    /// @return how much there is still to be written at least
    std::size_t Step(ZSTD_inBuffer& in, ZSTD_EndDirective directive) {
        ZSTD_outBuffer out{fBuffer.data(), fBuffer.size(), 0};
        const std::size_t left = Checked(::ZSTD_compressStream2(fContext.get(), &out, &in, directive));
        fSink.Write({fBuffer.data(), out.pos});
        return left;
    }

    ByteSink& fSink;
    std::unique_ptr<ZSTD_CCtx, ContextFree> fContext;
    std::vector<char> fBuffer;
};

} // namespace

std::unique_ptr<Unpacker> MakeZstdUnpacker() {
    return std::make_unique<ZstdUnpacker>();
}

std::unique_ptr<PackedSink> MakeZstdSink(ByteSink& sink) {
    return std::make_unique<ZstdSink>(sink);
}

} // namespace veltrane::host
