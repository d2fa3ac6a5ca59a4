#include "factory/entries/factory_support.h"
#include "support/dom.h"
#include "support/faults/failure.h"

#include <MCXML_900/MCXInputSource.h>

#include <gtest/gtest.h>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

#include <sstream>

using namespace veltrane::tests;
using MCXML_900::MCXInputSource;

namespace {

constexpr XMLFilePos kNowhere = static_cast<XMLFilePos>(-1);

std::string ReadBytes(xercesc::BinInputStream& stream, std::size_t count) {
    std::string buffer(count, '\0');
    buffer.resize(stream.readBytes(reinterpret_cast<XMLByte*>(buffer.data()), count));
    return buffer;
}

class InputSource : public testing::Test {
protected:
    InputSource() { StartXml(); }

    std::unique_ptr<xercesc::BinInputStream> Stream() {
        return std::unique_ptr<xercesc::BinInputStream>(MCXInputSource(fIn).makeStream());
    }
    std::istringstream fIn{std::string("ab\0\r\ncd", 7)};
};

TEST_F(InputSource, IsNamedIstream) {
    const MCXInputSource source(fIn);
    char* name = xercesc::XMLString::transcode(source.getSystemId());
    EXPECT_STREQ(name, "istream");
    xercesc::XMLString::release(&name);
}

TEST_F(InputSource, GivesTheBytesAsTheyAre) {
    const auto stream = Stream();
    EXPECT_EQ(ReadBytes(*stream, 4), std::string("ab\0\r", 4));
    EXPECT_EQ(ReadBytes(*stream, 100), "\ncd");
    EXPECT_EQ(ReadBytes(*stream, 100), "");
}

TEST_F(InputSource, HasThePositionOfTheStream) {
    const auto stream = Stream();
    EXPECT_EQ(stream->curPos(), 0u);
    ReadBytes(*stream, 3);
    EXPECT_EQ(stream->curPos(), 3u);
}

TEST_F(InputSource, KnowsNoContentType) {
    EXPECT_EQ(Stream()->getContentType(), nullptr);
}

TEST_F(InputSource, ReadsFromWhereTheStreamStands) {
    fIn.seekg(5);
    EXPECT_EQ(ReadBytes(*Stream(), 10), "cd");
}

TEST_F(InputSource, GivesNewStreamsOverTheSameStream) {
    const MCXInputSource source(fIn);
    const std::unique_ptr<xercesc::BinInputStream> first(source.makeStream());
    const std::unique_ptr<xercesc::BinInputStream> second(source.makeStream());
    EXPECT_EQ(ReadBytes(*first, 2), "ab");
    EXPECT_EQ(ReadBytes(*second, 1), std::string(1, '\0'));
}

TEST_F(InputSource, HasNothingInAFailedStream) {
    for (const auto state : {std::ios::eofbit, std::ios::failbit, std::ios::badbit}) {
        fIn.clear();
        fIn.seekg(0);
        fIn.setstate(state);
        const auto stream = Stream();
        EXPECT_EQ(ReadBytes(*stream, 10), "");
        EXPECT_EQ(stream->curPos(), kNowhere);
    }
}

TEST_F(InputSource, TakesAStreamThatThrowsLikeOneThatDoesNot) {
    fIn.exceptions(std::ios::eofbit | std::ios::failbit | std::ios::badbit);
    const auto stream = Stream();
    EXPECT_EQ(ReadBytes(*stream, 100).size(), 7u);
    EXPECT_EQ(ReadBytes(*stream, 100), "");
    EXPECT_EQ(stream->curPos(), kNowhere);
}

TEST(DocumentStream, MayBeSetToThrow) {
    std::istringstream in(Pmml("<TreeModel/>"));
    in.exceptions(std::ios::eofbit | std::ios::failbit | std::ios::badbit);
    const ModelPointer model(ModelFactory::MakeModelFromXML(in, Names{"TreeModel"}, ""));
    EXPECT_EQ(RecordOf(model.get()).at("plugin"), "TreeModel");
}

TEST(DocumentStream, ThatCannotBeRewoundHasNothingLeftToParse) {
    for (const auto mask : {std::ios::goodbit, std::ios::failbit}) {
        OneWayBuffer buffer(Pmml("<TreeModel/>"));
        std::istream in(&buffer);
        in.exceptions(mask);
        ExpectFailure([&] { ModelFactory::MakeModelFromXML(in, Names{"TreeModel"}, ""); }, {CANNOT_OPEN_DOCUMENT});
    }
}

} // namespace
