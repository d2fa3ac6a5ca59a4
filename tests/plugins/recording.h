#ifndef VELTRANE_TESTS_PLUGINS_RECORDING_H
#define VELTRANE_TESTS_PLUGINS_RECORDING_H

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/BaseModel.h>
#include <MCVeltrane_900/BaseTranslator.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/XMLString.hpp>

#include <atomic>
#include <istream>
#include <iterator>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

/// What the test plug-ins share: a translator that writes down which of its operations was called and with what, and a
/// model that tells it through Display, one "key=value" a line. Each plug-in has its own copy of all of it.
namespace veltrane::tests::recording {

using MCVeltrane_900::BaseModel;
using MCVeltrane_900::BaseTranslator;
using MCVeltrane_900::ScoreDictionary;
using MCVeltrane_900::ScoreModel;
using MCVeltrane_900::ScoreTranslator;

inline std::atomic<int> translatorsMade{0};
inline std::atomic<int> translatorsDeleted{0};
inline std::atomic<int> listsPassed{0};

using Lines = std::vector<std::pair<std::string, std::string>>;

class RecordingModel : public BaseModel {
public:
    explicit RecordingModel(Lines lines) : fLines(std::move(lines)) {}

    bool SetOption(const std::string&, const std::string&) override { return false; }
    std::vector<std::string> GetInputNames() const override { return {}; }
    MCVeltrane_900::ScoreResult* CreateResult() const override { return nullptr; }
    MCScore::MCStatus Score(const MCVeltrane_900::ScoreCaseRecord*, MCVeltrane_900::ScoreResult*) override {
        return {};
    }
    bool SkipsCategoryProbabilities() override { return false; }

    void Display(std::ostream& out) const override {
        for (const auto& [key, value] : fLines) {
            out << key << '=' << value << '\n';
        }
        out << "made=" << translatorsMade << "\ndeleted=" << translatorsDeleted << '\n';
    }

private:
    Lines fLines;
};

inline std::string Text(const void* pointer) {
    std::ostringstream text;
    text << pointer;
    return text.str();
}

inline std::string Text(const XMLCh* text) {
    char* bytes = xercesc::XMLString::transcode(text);
    std::string result = bytes;
    xercesc::XMLString::release(&bytes);
    return result;
}

/// Answers every operation with a model that names it.
class RecordingTranslator : public BaseTranslator {
public:
    explicit RecordingTranslator(std::string plugin) : fPlugin(std::move(plugin)) { ++translatorsMade; }
    ~RecordingTranslator() override { ++translatorsDeleted; }

    void TakeNames(const std::vector<std::string>& names) {
        for (const std::string& name : names) {
            fNames += name + ";";
        }
        fNamesAt = &names;
        fListTaken = true;
    }

    ScoreModel* ParseFromTree(xercesc::DOMElement* element, ScoreModel* base, const std::string& text) override {
        return Make("element+model", {{"element", Text(element->getNodeName())}, {"base", Text(base)}, {"text", text}});
    }

    ScoreModel* ParseFromTree(xercesc::DOMElement* element, ScoreDictionary* first, ScoreDictionary* second,
                              const std::string& text) override {
        return Make("element+dictionaries", {{"element", Text(element->getNodeName())},
                                             {"first", Text(first)},
                                             {"second", Text(second)},
                                             {"text", text}});
    }

    ScoreModel* ParseFromTree(const std::string&, const std::string&) override { return Make("strings", {}); }
    ScoreModel* ParseFromTree(std::istream&, const std::string&) override { return Make("stream", {}); }

    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override {
        return Make("document", {{"root", Text(document->getDocumentElement()->getTagName())}, {"encoding", encoding}});
    }

    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, ScoreDictionary* dictionary,
                              const std::string& encoding) override {
        return Make("document+dictionary", {{"root", Text(document->getDocumentElement()->getTagName())},
                                            {"dictionary", Text(dictionary)},
                                            {"encoding", encoding}});
    }

    ScoreModel* ParseFromTree(std::istream& stream, const std::string& second, const std::string& auxPath) override {
        const auto position = std::to_string(stream.tellg());
        const std::string content(std::istreambuf_iterator<char>(stream), {});
        return Make("stream+path", {{"position", position},
                                    {"size", std::to_string(content.size())},
                                    {"second", second},
                                    {"auxPath", auxPath}});
    }

protected:
    virtual ScoreModel* NewModel(Lines lines) const { return new RecordingModel(std::move(lines)); }

private:
    ScoreModel* Make(const std::string& operation, Lines lines) {
        lines.insert(lines.begin(), {{"plugin", fPlugin}, {"operation", operation}});
        lines.emplace_back("names", fListTaken ? fNames : "not passed");
        lines.emplace_back("namesAt", Text(fNamesAt));
        return NewModel(std::move(lines));
    }

    std::string fPlugin;
    std::string fNames;
    const void* fNamesAt = nullptr;
    bool fListTaken = false;
};

inline void TakeNames(ScoreTranslator* translator, const std::vector<std::string>& names) {
    ++listsPassed;
    static_cast<RecordingTranslator*>(translator)->TakeNames(names);
}

} // namespace veltrane::tests::recording

// What the tests ask a plug-in for; it consists of one source, which includes this.
extern "C" {

VELTRANE_API int TranslatorsMade() {
    return veltrane::tests::recording::translatorsMade;
}
VELTRANE_API int TranslatorsDeleted() {
    return veltrane::tests::recording::translatorsDeleted;
}
VELTRANE_API int ListsPassed() {
    return veltrane::tests::recording::listsPassed;
}
}

#endif
