#ifndef VELTRANE_TESTS_FACTORY_FACTORY_SUPPORT_H
#define VELTRANE_TESTS_FACTORY_FACTORY_SUPPORT_H

#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/ScoreModel.h>

#include <filesystem>
#include <map>
#include <memory>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

/// What the factory's tests share.
namespace veltrane::tests {

using Names = std::vector<std::string>;
using Record = std::map<std::string, std::string>;
using ModelPointer = std::unique_ptr<MCVeltrane_900::ScoreModel>;

/// What a recording plug-in's model tells about the call that made it; empty for null.
Record RecordOf(const MCVeltrane_900::ScoreModel* model);

/// Builds a model from a document by the main stream overload, and gives its record.
Record Build(const std::string& document, const Names& names, const std::string& encoding = {},
             const std::string& auxPath = {});

/// Builds a model by the dictionary overload, and gives its record.
Record BuildWithDictionary(const std::string& document, MCVeltrane_900::ScoreDictionary* dictionary, const Names& names,
                           const std::string& encoding = {});

/// A PMML document with this text in its root.
std::string Pmml(const std::string& content);

/// A counter that a recording plug-in exports: "TranslatorsMade", "TranslatorsDeleted" or "ListsPassed".
int Counter(const std::string& plugin, const std::string& counter);

/// The pointer as the recording plug-ins write it.
std::string PointerText(const void* pointer);

std::string Repeat(const std::string& text, std::size_t count);

/// Runs the test that is running once more, in a process of its own.
/// @param settings of its environment, as a shell takes them
/// @return 0 when it passed there
int RunAgain(const std::string& settings);

/// A stream that can't be rewound, as a pipe.
class OneWayBuffer : public std::streambuf {
public:
    explicit OneWayBuffer(std::string text) : fText(std::move(text)) {
        setg(fText.data(), fText.data(), fText.data() + fText.size());
    }

private:
    std::string fText;
};

/// An empty folder that is the working directory while it lives.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return fPath; }
    void Write(const std::string& name, const std::string& content) const;

private:
    std::filesystem::path fPath;
    std::filesystem::path fBefore;
};

} // namespace veltrane::tests

#endif
