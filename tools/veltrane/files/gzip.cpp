#include "files/failure.h"
#include "files/packed_formats.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <zlib.h>

namespace veltrane::host {
namespace {

/// zlib's code for "a window of 32 KiB, and gzip's header and trailer around the data".
constexpr int kGzipWindow = 15 + 16;

/// The first byte of a member.
constexpr char kGzipStart = '\x1F';

/// zlib doesn't change its input, and doesn't say so.
Bytef* Bytes(const char* bytes) {
    return reinterpret_cast<Bytef*>(const_cast<char*>(bytes));
}

uInt Count(std::size_t size) {
    return static_cast<uInt>(std::min<std::size_t>(size, std::numeric_limits<uInt>::max()));
}

class GzipUnpacker : public Unpacker {
public:
    GzipUnpacker() {
        if (::inflateInit2(&fStream, kGzipWindow) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~GzipUnpacker() override { ::inflateEnd(&fStream); }
    GzipUnpacker(const GzipUnpacker&) = delete;
    GzipUnpacker& operator=(const GzipUnpacker&) = delete;

    bool IsComplete() const override { return fState != State::MEMBER; }

    std::size_t Unpack(std::string_view& input, char* buffer, std::size_t size) override {
        if (fState == State::BETWEEN && !input.empty()) {
            BeginMember(input.front());
        }
        if (fState == State::PADDING) {
            SkipPadding(input);
        }
        return fState == State::MEMBER ? Inflate(input, buffer, size) : 0;
    }

private:
    enum class State { MEMBER, BETWEEN, PADDING };

    void BeginMember(char first) {
        fState = first == kGzipStart ? State::MEMBER : State::PADDING;
        ::inflateReset(&fStream);
    }

    static void SkipPadding(std::string_view& input) {
        if (input.find_first_not_of('\0') != input.npos) {
            throw Failure("bytes that are none of gzip stand behind its data");
        }
        input = {};
    }

    std::size_t Inflate(std::string_view& input, char* buffer, std::size_t size) {
        fStream.next_in = Bytes(input.data());
        fStream.avail_in = Count(input.size());
        fStream.next_out = Bytes(buffer);
        fStream.avail_out = Count(size);
        const uInt room = fStream.avail_out;
        const int status = ::inflate(&fStream, Z_NO_FLUSH);
        input.remove_prefix(static_cast<std::size_t>(reinterpret_cast<const char*>(fStream.next_in) - input.data()));
        if (status == Z_MEM_ERROR) {
            throw std::bad_alloc();
        }
        if (status != Z_OK && status != Z_STREAM_END && status != Z_BUF_ERROR) {
            throw Failure(std::string("the data of gzip are damaged: ") + (fStream.msg ? fStream.msg : "unknown form"));
        }
        if (status == Z_STREAM_END) {
            fState = State::BETWEEN;
        }
        return room - fStream.avail_out;
    }

    z_stream fStream{};
    State fState = State::MEMBER;
};

class GzipSink : public PackedSink {
public:
    explicit GzipSink(ByteSink& sink) : fSink(sink) {
        constexpr int kMemoryLevel = 8;
        if (::deflateInit2(&fStream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, kGzipWindow, kMemoryLevel,
                           Z_DEFAULT_STRATEGY) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~GzipSink() override { ::deflateEnd(&fStream); }
    GzipSink(const GzipSink&) = delete;
    GzipSink& operator=(const GzipSink&) = delete;

    void Write(std::string_view bytes) override {
        while (!bytes.empty()) {
            const uInt count = Count(bytes.size());
            Deflate(bytes.substr(0, count), Z_NO_FLUSH);
            bytes.remove_prefix(count);
        }
    }

    void Finish() override { Deflate({}, Z_FINISH); }

private:
    void Deflate(std::string_view bytes, int flush) {
        fStream.next_in = Bytes(bytes.data());
        fStream.avail_in = static_cast<uInt>(bytes.size());
        int status = Z_OK;
        do {
            fStream.next_out = Bytes(fBuffer.data());
            fStream.avail_out = static_cast<uInt>(fBuffer.size());
            status = ::deflate(&fStream, flush);
            fSink.Write({fBuffer.data(), fBuffer.size() - fStream.avail_out});
        } while (fStream.avail_out == 0 || (flush == Z_FINISH && status == Z_OK));
    }

    ByteSink& fSink;
    z_stream fStream{};
    std::array<char, std::size_t{64} << 10> fBuffer;
};

} // namespace

std::unique_ptr<Unpacker> MakeGzipUnpacker() {
    return std::make_unique<GzipUnpacker>();
}

std::unique_ptr<PackedSink> MakeGzipSink(ByteSink& sink) {
    return std::make_unique<GzipSink>(sink);
}

} // namespace veltrane::host
