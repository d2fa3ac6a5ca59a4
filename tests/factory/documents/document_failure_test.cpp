#include "factory/documents/xml_faults.h"
#include "factory/entries/factory_support.h"
#include "support/dom.h"
#include "support/faults/failure.h"
#include "support/rows.h"

#include <MCVeltrane_900/ScoreDictionary.h>

#include <gtest/gtest.h>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/RuntimeException.hpp>

#include <functional>
#include <istream>
#include <sstream>
#include <streambuf>

using namespace veltrane::tests;

namespace {

const Names kNames = {"TreeModel"};
constexpr Failure kNotWellFormed{CANNOT_OPEN_DOCUMENT};

void ReadDictionaries(std::istream& in) {
    ScoreDictionary* dictionary = nullptr;
    ModelFactory::GetTransformationDictionaryFromXML(in, dictionary, "");
}

/// Every entry that parses a document, by name.
struct Entry {
    const char* name;
    std::function<void(std::istream&)> call;
};

void PrintTo(const Entry& entry, std::ostream* out) {
    *out << entry.name;
}

const Entry kEntries[] = {
    {"Main", [](std::istream& in) { ModelFactory::MakeModelFromXML(in, kNames, "", ""); }},
    {"Short", [](std::istream& in) { ModelFactory::MakeModelFromXML(in, kNames, ""); }},
    {"Dictionary", [](std::istream& in) { ModelFactory::MakeModelFromXML(in, nullptr, kNames, ""); }},
    {"Transformation", [](std::istream& in) { ReadDictionaries(in); }},
};

class BadDocument : public testing::TestWithParam<Entry> {
protected:
    static void Call(const std::string& document) {
        std::istringstream in(document);
        GetParam().call(in);
    }
};

INSTANTIATE_TEST_SUITE_P(Entries, BadDocument, testing::ValuesIn(kEntries), NameOfRow());

TEST_P(BadDocument, NotWellFormed) {
    for (const char* const document : {"", " ", "PMML", "<PMML>", "<PMML><a></PMML>", "<PMML/><PMML/>", "<PMML a='/>",
                                       "<PMML>&undeclared;</PMML>", "<!-- only a comment -->", "<?xml version='1.0'?>",
                                       "<?xml version='1.0' encoding='no such'?><PMML/>", "<PMML a='' a=''/>"}) {
        ExpectFailureWithDetail([&] { Call(document); }, kNotWellFormed, "");
    }
}

TEST_P(BadDocument, ParserThrows) {
    const SetXmlFault fault(XmlFault::PARSE_FAILS);
    ExpectFailureWithDetail([] { Call("<PMML><TreeModel/></PMML>"); }, {CANNOT_PARSE}, kXmlFaultMessage);
}

/// A stream whose buffer throws what it is told to, once it has given `good` bytes after the last rewinding. The
/// parser sees it when the stream passes exceptions on.
class ThrowingBuffer : public std::streambuf {
public:
    ThrowingBuffer(std::string text, int rewindings, std::function<void()> fail)
        : fText(std::move(text)), fRewindings(rewindings), fFail(std::move(fail)) {
        Show();
    }

protected:
    int_type underflow() override {
        if (fRewindings <= 0) {
            fFail();
        }
        return traits_type::eof();
    }

    pos_type seekpos(pos_type, std::ios_base::openmode) override { return Rewind(); }
    pos_type seekoff(off_type, std::ios_base::seekdir, std::ios_base::openmode) override { return Rewind(); }

private:
    pos_type Rewind() {
        --fRewindings;
        Show();
        return pos_type(0);
    }
    void Show() { setg(fText.data(), fText.data(), fText.data() + fText.size()); }

    std::string fText;
    int fRewindings;
    std::function<void()> fFail;
};

/// Calls the entry with a stream that fails in its last pass: the model overloads read a document twice.
void CallWithThrowingStream(const Entry& entry, const std::string& text, const std::function<void()>& fail) {
    const bool readsTwice = std::string(entry.name) != "Transformation";
    ThrowingBuffer buffer(text, readsTwice ? 1 : 0, fail);
    std::istream in(&buffer);
    in.exceptions(std::ios::badbit);
    entry.call(in);
}

TEST_P(BadDocument, StreamThrowsADomException) {
    ExpectFailureWithDetail(
        [] {
            CallWithThrowingStream(GetParam(), "<PMML>", [] {
                throw xercesc::DOMException(xercesc::DOMException::SYNTAX_ERR, 0,
                                            xercesc::XMLPlatformUtils::fgMemoryManager);
            });
        },
        {CANNOT_PARSE}, "invalid or illegal string");
}

TEST_P(BadDocument, StreamThrowsSomethingElse) {
    ExpectFailure([] { CallWithThrowingStream(GetParam(), "<PMML>", [] { throw 1; }); }, kNotWellFormed);
}

/// A warning of the parser's own ends the parse without being reported.
[[noreturn]] void ThrowAWarning() {
    throw xercesc::RuntimeException(__FILE__, __LINE__, xercesc::XMLExcepts::Scan_CouldNotOpenSource_Warning);
}

TEST_P(BadDocument, GivesNoDocument) {
    ExpectFailure([] { CallWithThrowingStream(GetParam(), "", ThrowAWarning); }, {CANNOT_PARSE_TO_TREE});
}

TEST_P(BadDocument, HasNoRoot) {
    // The parser has read its first buffer of the comment when the stream fails.
    ExpectFailure([] { CallWithThrowingStream(GetParam(), "<!--" + Repeat(" ", 100000), ThrowAWarning); }, {NO_ROOT});
}

class EmptyTag : public testing::TestWithParam<Entry> {};

INSTANTIATE_TEST_SUITE_P(Entries, EmptyTag, testing::ValuesIn(kEntries, kEntries + 3), NameOfRow());

TEST_P(EmptyTag, OfTheRootFails) {
    for (const XmlFault kind : {XmlFault::TAG_IS_EMPTY, XmlFault::TAG_IS_NULL}) {
        const SetXmlFault fault(kind);
        std::istringstream in("<PMML/>");
        ExpectFailure([&] { GetParam().call(in); }, {EMPTY_ROOT_TAG});
    }
}

TEST(ElementList, WithoutAnElementFailsWithTheRootsTag) {
    const SetXmlFault fault(XmlFault::LIST_HAS_NO_ELEMENT);
    ExpectFailure([] { Build(Pmml("<TreeModel/>"), kNames); }, {NO_CHILD_ELEMENT, "PMML"});
    ExpectFailure([] { BuildWithDictionary("<Forest><TreeModel/></Forest>", nullptr, kNames); },
                  {NO_CHILD_ELEMENT, "Forest"});
}

} // namespace
