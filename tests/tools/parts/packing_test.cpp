#include "files/failure.h"
#include "files/packing.h"
#include "files/unpacking.h"
#include "tools/parts/string_sink.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <zlib.h>
#include <zstd.h>

namespace veltrane::host {
namespace {

/// Gives a few bytes at a time.
class SlowSource : public ByteSource {
public:
    SlowSource(std::string_view bytes, std::size_t step) : fBytes(bytes), fStep(step) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count = fBytes.copy(buffer, std::min(size, fStep));
        fBytes.remove_prefix(count);
        return count;
    }

    std::size_t Left() const { return fBytes.size(); }

private:
    std::string_view fBytes;
    std::size_t fStep;
};

std::string Packed(const std::string& name, std::string_view text, std::size_t step = 1'000'000) {
    StringSink sink;
    const std::unique_ptr<PackedSink> packed = MakePackedSink(name, sink);
    for (; !text.empty(); text.remove_prefix(std::min(step, text.size()))) {
        packed->Write(text.substr(0, step));
    }
    packed->Finish();
    return sink.text;
}

std::string Unpacked(std::string_view bytes, std::size_t step = 1'000'000, std::size_t bufferSize = 1000) {
    SlowSource source(bytes, step);
    UnpackedSource unpacked(source, "f");
    std::string text;
    std::string buffer(bufferSize, '\0');
    while (const std::size_t count = unpacked.Read(buffer.data(), buffer.size())) {
        text.append(buffer, 0, count);
    }
    EXPECT_EQ(unpacked.Read(buffer.data(), buffer.size()), 0U);
    return text;
}

/// The failure of unpacking; empty where there is none.
std::string FaultOf(std::string_view bytes, std::string* text = nullptr, std::size_t step = 1'000'000) {
    try {
        const std::string unpacked = Unpacked(bytes, step);
        if (text) {
            *text = unpacked;
        }
        return {};
    } catch (const Failure& failure) {
        return failure.what();
    }
}

std::string Sample() {
    std::mt19937 random(1);
    std::string text;
    while (text.size() < 300'000) {
        text += std::to_string(random() % 1000) + (random() % 8 == 0 ? "\n" : ",");
    }
    return text;
}

class Packings : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(All, Packings, testing::Values("x.gz", "x.zst"),
                         [](const auto& packing) { return std::string(packing.param).substr(2); });

TEST_P(Packings, GiveBackWhatWasPacked) {
    const std::string sample = Sample();
    for (const std::string& text : {std::string(), std::string("x"), sample, std::string(1'000'000, 'x')}) {
        for (const std::size_t step : {std::size_t{1} << 20, std::size_t{1000}}) {
            EXPECT_EQ(Unpacked(Packed(GetParam(), text, step)), text);
        }
    }
}

TEST_P(Packings, AreReadHoweverTheBytesCome) {
    const std::string sample = Sample();
    const std::string packed = Packed(GetParam(), sample);
    for (const std::size_t step : {1U, 2U, 3U, 5U, 1000U}) {
        for (const std::size_t bufferSize : {1U, 7U, 1U << 20}) {
            EXPECT_EQ(Unpacked(packed, step, bufferSize), sample) << step << " " << bufferSize;
        }
    }
}

TEST_P(Packings, AreOneWhenTheyStandOneBehindTheOther) {
    const std::string packed = Packed(GetParam(), "one,") + Packed(GetParam(), "") + Packed(GetParam(), "two");
    EXPECT_EQ(Unpacked(packed), "one,two");
    EXPECT_EQ(Unpacked(packed, 1), "one,two");
}

TEST_P(Packings, FailWhereverTheyAreCutOff) {
    const std::string packed = Packed(GetParam(), "one") + Packed(GetParam(), "two,three,two,three,two,three");
    const std::size_t first = Packed(GetParam(), "one").size();
    for (std::size_t size = 4; size < packed.size(); ++size) {
        if (size == first) {
            continue;
        }
        EXPECT_EQ(FaultOf(std::string_view(packed).substr(0, size)),
                  "f: the packed file ends too early; is it cut off?");
    }
    EXPECT_EQ(FaultOf(std::string_view(packed).substr(0, first)), "");
}

TEST_P(Packings, FailOrDoNotMindWhereABitIsFlipped) {
    const std::string text = "Age,Name\n1,x\n2,y\n3,Age,Name\n";
    const std::string packed = Packed(GetParam(), text);
    std::size_t faults = 0;
    for (std::size_t bit = 32; bit < packed.size() * 8; ++bit) {
        std::string damaged = packed;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
        std::string unpacked;
        const std::string fault = FaultOf(damaged, &unpacked);
        faults += fault.empty() ? 0 : 1;
        EXPECT_TRUE(!fault.empty() || unpacked == text) << bit;
    }
    EXPECT_GT(faults, packed.size() * 4);
}

TEST_P(Packings, FailWhereOtherBytesStandBehind) {
    EXPECT_NE(FaultOf(Packed(GetParam(), "one") + "two"), "");
    EXPECT_NE(FaultOf(Packed(GetParam(), "one") + "\x01"), "");
}

TEST_P(Packings, EndInAFailureWhateverTheBytes) {
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        std::string bytes = Packed(GetParam(), "some text, some text").substr(0, 4 + random() % 12);
        for (std::size_t size = random() % 200; size > 0; --size) {
            bytes += static_cast<char>(random() % (round % 2 == 0 ? 256 : 8));
        }
        FaultOf(bytes);
    }
}

TEST_P(Packings, OfADocumentMayNotGrowBeyondWhatItMayTake) {
    StringSink sink;
    const std::unique_ptr<PackedSink> packed = MakePackedSink(GetParam(), sink);
    const std::string blanks(1 << 20, ' ');
    for (int megabytes = 0; megabytes < 100; ++megabytes) {
        packed->Write(blanks);
    }
    packed->Finish();
    const std::size_t most = (std::size_t{48} << 20) + 80 * sink.text.size();
    ASSERT_LT(most, std::size_t{100} << 20);
    try {
        UnpackedDocument(sink.text, "d");
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.what(), "d: the document unpacks to more than " + std::to_string(most >> 20) +
                                      " MiB, which is too much for " + std::to_string(sink.text.size()) +
                                      " packed bytes; unpack it first if that is right");
    }
}

TEST_P(Packings, OfAnOrdinaryDocumentAreUnpacked) {
    std::string document = "<PMML>";
    while (document.size() < 30'000'000) {
        document += "<Node score=\"0\" recordCount=\"12\"><SimplePredicate field=\"x\"/></Node>";
    }
    const std::string packed = Packed(GetParam(), document);
    EXPECT_EQ(UnpackedDocument(packed, "d") == document, true);
    EXPECT_EQ(UnpackedDocument(document, "d") == document, true);
    EXPECT_EQ(UnpackedDocument("", "d"), "");
}

TEST(PackedNames, EndInTheSuffixInWhateverCase) {
    StringSink sink;
    for (const char* name : {"a.gz", "A.GZ", "a.csv.Gz", "b.zst", "B.ZST"}) {
        EXPECT_NE(MakePackedSink(name, sink), nullptr) << name;
    }
    for (const char* name : {"a.csv", "gz", ".gz", "a.gz.csv", "a.gzip", "a.zstd", "", "-"}) {
        EXPECT_EQ(MakePackedSink(name, sink), nullptr) << name;
    }
}

TEST(GzipFiles, MayEndInZeroBytes) {
    const std::string packed = Packed("x.gz", "text");
    EXPECT_EQ(Unpacked(packed + std::string(1000, '\0')), "text");
    EXPECT_EQ(Unpacked(packed + std::string(1000, '\0'), 1), "text");
    EXPECT_EQ(FaultOf(packed + std::string(1000, '\0') + "x"), "f: bytes that are none of gzip stand behind its data");
}

TEST(GzipFiles, EndInNothingElse) {
    const std::string told = "f: bytes that are none of gzip stand behind its data";
    const std::string packed = Packed("x.gz", "text");
    const std::string padding(1000, '\0');
    for (const std::string& rest : {std::string("x"), std::string("\x1E"), padding + "x", padding + packed}) {
        for (const std::size_t step : {1U, 4U, 1U << 20}) {
            EXPECT_EQ(FaultOf(packed + rest, nullptr, step), told) << rest.size() << " " << step;
        }
    }
}

TEST(GzipFiles, TellWhatIsDamaged) {
    std::string packed = Packed("x.gz", "text");
    packed[packed.size() - 6] ^= 1;
    EXPECT_EQ(FaultOf(packed), "f: the data of gzip are damaged: incorrect data check");
    EXPECT_EQ(FaultOf("\x1F\x8Bxxxxxxxxxxxx"), "f: the data of gzip are damaged: unknown compression method");
}

/// A frame that asks for a window of a size, whatever it holds.
std::string FrameOfWindow(int bits) {
    ZSTD_CCtx* context = ZSTD_createCCtx();
    ZSTD_CCtx_setParameter(context, ZSTD_c_windowLog, bits);
    std::string packed(1000, '\0');
    ZSTD_inBuffer in{"some text", 9, 0};
    ZSTD_outBuffer out{packed.data(), packed.size(), 0};
    ZSTD_compressStream2(context, &out, &in, ZSTD_e_continue);
    while (ZSTD_compressStream2(context, &out, &in, ZSTD_e_end) > 0) {
    }
    ZSTD_freeCCtx(context);
    packed.resize(out.pos);
    return packed;
}

TEST(ZstdFiles, MayNotNeedTooMuchMemory) {
    EXPECT_EQ(Unpacked(FrameOfWindow(27)), "some text");
    EXPECT_EQ(FaultOf(FrameOfWindow(28)),
              "f: the data of zstd cannot be unpacked: Frame requires too much memory for decoding");
}

TEST(ZstdFiles, MayHoldFramesThatAreSkipped) {
    const std::string skipped("\x5A\x2A\x4D\x18\x03\x00\x00\x00xyz", 11);
    EXPECT_EQ(Unpacked(skipped + Packed("x.zst", "text") + skipped), "text");
    EXPECT_EQ(Unpacked(skipped + Packed("x.zst", "text"), 1), "text");
    EXPECT_EQ(Unpacked(skipped), "");
}

TEST(ZstdFiles, AreKnownByAnyOfTheSixteenNumbersOfFramesThatAreSkipped) {
    const std::string rest("\x2A\x4D\x18\x01\x00\x00\x00x", 8);
    for (int first = 0; first < 256; ++first) {
        const std::string skipped = static_cast<char>(first) + rest;
        const bool isKnown = first >= 0x50 && first < 0x60;
        for (const std::size_t step : {1U, 2U, 3U, 1U << 20}) {
            EXPECT_EQ(Unpacked(skipped, step), isKnown ? "" : skipped) << first << " " << step;
        }
    }
}

TEST(ZstdFiles, HaveAChecksum) {
    std::string packed = Packed("x.zst", "text");
    packed.back() ^= 1;
    EXPECT_EQ(FaultOf(packed), "f: the data of zstd cannot be unpacked: Restored data doesn't match checksum");
}

TEST(PlainFiles, ArePassedOnAsTheyAre) {
    for (const std::string& text : {std::string(), std::string("A"), std::string("\x1F"), std::string("\x28\xB5"),
                                    std::string("P"), std::string("PK"), std::string("PKx"), std::string("BZh,x"),
                                    std::string("Z\x2A\x4D"), std::string("\3757z"), Sample()}) {
        for (const std::size_t step : {1U, 4U, 1U << 20}) {
            EXPECT_EQ(Unpacked(text, step), text);
        }
    }
}

TEST(PlainFiles, DoNotWaitForMoreThanTellsThemApart) {
    for (const char* text : {"x\nlater", "P\nlater", "Z\x4Dlater"}) {
        SlowSource source(text, 2);
        UnpackedSource unpacked(source, "f");
        char buffer[100];
        EXPECT_EQ(unpacked.Read(buffer, sizeof buffer), 2U) << text;
        EXPECT_EQ(source.Left(), 5U) << text;
    }
}

TEST(OtherArchives, AreNamed) {
    EXPECT_EQ(FaultOf("PK\x03\x04 and so on"),
              "f: the file is a ZIP archive, as spreadsheets are; of packed files those of gzip and zstd are read");
    EXPECT_EQ(FaultOf("BZh91AY&SY"),
              "f: the file is packed with bzip2; of packed files those of gzip and zstd are read");
    EXPECT_EQ(FaultOf(std::string("\3757zXZ\0", 6)),
              "f: the file is packed with xz; of packed files those of gzip and zstd are read");
    EXPECT_EQ(FaultOf("7z\xBC\xAF\x27\x1C"),
              "f: the file is a 7z archive; of packed files those of gzip and zstd are read");
}

} // namespace
} // namespace veltrane::host
