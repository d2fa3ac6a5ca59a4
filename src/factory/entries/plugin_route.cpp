#include "factory/entries/plugin_route.h"

#include "diagnostics/raise.h"
#include "diagnostics/trace.h"
#include "factory/documents/subtree_nodes.h"
#include "factory/documents/xml_text.h"
#include "platform/platform.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/BaseTranslator.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/VTDynamicLoadedLibrary.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>

#include <algorithm>
#include <string_view>

namespace veltrane::factory {

namespace {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::BaseTranslator;
using MCVeltrane_900::ScoreDictionary;
using MCVeltrane_900::ScoreModel;
using MCVeltrane_900::ScoreTranslator;
using MCVeltrane_900::VTDynamicLoadedLibrary;
using translators::HasTag;

using GiveMyTranslator = ScoreTranslator* (*)();
using NameMySubtrees = const SubtreeKind* (*)(int);
using PassModelNames = void (*)(ScoreTranslator*, const std::vector<std::string>&);

VTDynamicLoadedLibrary LibraryOf(const std::string& modelName) {
    return VTDynamicLoadedLibrary(VTDynamicLoadedLibrary::MakeLibraryFileName(modelName + "900" + "r"));
}

template <typename Function>
Function FindFunction(VTDynamicLoadedLibrary& library, const char* symbol) {
    return reinterpret_cast<Function>(library.GetSymbolAddress(symbol));
}

/// A plug-in's translator must be a BaseTranslator: the plug-in contract says so, and the type can't be asked for in a
/// plug-in that is built without type information.
BaseTranslator* AskForTranslator(GiveMyTranslator give) {
    return static_cast<BaseTranslator*>(give());
}

template <Message kMessage>
[[noreturn]] void Fail(DocumentRoute& route, const std::string& parameter) {
    route.parser.reset();
    Raise<kMessage>(parameter);
}

/// The name that stands for all names in a search by tag.
constexpr std::u16string_view kEveryTag = u"*";

/// Whether a list isn't empty. Its length takes a walk to its end, its first element seldom does.
bool HasElements(const xercesc::DOMNodeList& list) {
    return list.item(0) != nullptr || list.getLength() > 0;
}

/// The plug-in of a lattice is that of the association model; only the library is named differently.
std::string LibraryNameOf(const std::string& modelName) {
    return modelName == "AssociationModelLattice" ? "AssociationModel" : modelName;
}

/// The kinds of subtree that the plug-in of a model reads by itself; null for none. The trace follows the documents,
/// not this, so the library's own operations are passed by.
const SubtreeKind* SubtreeKindsOf(const std::string& modelName) {
    int error = 0;
    std::string text;
    const std::string file = VTDynamicLoadedLibrary::MakeLibraryFileName(LibraryNameOf(modelName) + "900" + "r");
    void* module = platform::OpenSharedLibrary(file, error, text);
    if (module == nullptr) {
        return nullptr;
    }
    const auto name = reinterpret_cast<NameMySubtrees>(platform::FindSymbol(module, "NameMySubtrees", text));
    return name == nullptr ? nullptr : name(SubtreeKind::kVersion);
}

/// Puts nodes in place of all records of the document.
void Restore(DocumentRoute& route) {
    try {
        RestoreSubtrees(*route.root);
    } catch (const DocumentRefused&) {
        route.parser.reset();
        Raise<Message::CANNOT_OPEN_DOCUMENT>();
    }
}

/// Only the plug-in that was asked for its kinds of subtree reads records of them.
void RestoreForeignSubtrees(DocumentRoute& route, const std::string& modelName) {
    if (route.parser->HasSubtrees() && route.parser->HasSubtreesBeside(SubtreeKindsOf(modelName))) {
        Restore(route);
    }
}

/// Opens the plug-in and lets its translator build the model by `parse`. The parser stays the route's unless the
/// plug-in throws.
template <typename Parse>
ScoreModel* BuildModel(DocumentRoute& route, const std::string& modelName, Parse parse) {
    VTDynamicLoadedLibrary library = LibraryOf(LibraryNameOf(modelName));
    const auto give = FindFunction<GiveMyTranslator>(library, "GiveMyTranslator");
    if (give == nullptr) {
        Fail<Message::NO_MODEL_LIBRARY>(route, modelName);
    }
    RestoreForeignSubtrees(route, modelName);
    KeptOnFailure<BaseTranslator> translator(AskForTranslator(give), route.onFailure);
    if (translator.Get() == nullptr) {
        Fail<Message::NO_MODEL_LIBRARY>(route, modelName);
    }
    // Where nothing is kept the translator goes first, as it does when all goes well.
    const bool keeps = route.onFailure == OnFailure::KEEP;
    KeptOnFailure<DocumentParser> parser(keeps ? route.parser.release() : nullptr);
    if (const auto pass = FindFunction<PassModelNames>(library, "PassModelNames"); pass != nullptr) {
        pass(translator.Get(), route.names);
    }
    ScoreModel* model = parse(*translator.Get());
    translator.Delete();
    if (keeps) {
        route.parser.reset(parser.Release());
    }
    return model;
}

constexpr const char* kTraceName = "MCVeltrane_900::GetLibraryPath";

/// In the order in which they are tried.
constexpr RootKind kRootKinds[] = {
    {"PMML", nullptr, nullptr},         {"kord-ml", u"regression-model", "GeneralRegressionModel"},
    {"kord-ml", nullptr, nullptr},      {"Tree", nullptr, "TreeModel"},
    {"AssocLattice", nullptr, nullptr}, {"SequentialAssociationLattice", nullptr, nullptr},
};

} // namespace

void* FindPluginSymbol(const std::string& modelName, const char* symbol) {
    return LibraryOf(LibraryNameOf(modelName)).GetSymbolAddress(symbol);
}

DocumentRoute OpenRoute(std::unique_ptr<DocumentParser> parser, std::istream& in, const std::vector<std::string>& names,
                        const std::string& encoding) {
    parser->RecordSubtrees([&names](const std::string& model) -> const SubtreeKind* {
        const bool isListed = std::find(names.begin(), names.end(), model) != names.end();
        return isListed ? SubtreeKindsOf(model) : nullptr;
    });
    xercesc::DOMDocument* document = ParseDocument(parser, in);
    xercesc::DOMElement* root = document->getDocumentElement();
    if (root == nullptr) {
        parser.reset();
        Raise<Message::NO_ROOT>();
    }
    const XMLCh* tag = root->getTagName();
    if (tag == nullptr || *tag == 0) {
        parser.reset();
        Raise<Message::EMPTY_ROOT_TAG>();
    }
    return {names, encoding, std::move(parser), document, root};
}

const RootKind* FindRootKind(xercesc::DOMElement& root) {
    for (const RootKind& kind : kRootKinds) {
        if (HasTag(&root, kind.tag) &&
            (kind.descendant == nullptr || root.getElementsByTagName(kind.descendant)->getLength() > 0)) {
            return &kind;
        }
    }
    return nullptr;
}

std::string FindModelName(DocumentRoute& route) {
    const auto mayBeRecorded = [&](const std::string& name) {
        const std::u16string tag = ToUtf16(name);
        return tag == kEveryTag || route.parser->MayHaveRecorded(tag);
    };
    if (route.parser->HasSubtrees() && std::any_of(route.names.begin(), route.names.end(), mayBeRecorded)) {
        Restore(route);
    }
    const xercesc::DOMNodeList* found = nullptr;
    for (auto name = route.names.begin(); name != route.names.end() && found == nullptr; ++name) {
        const std::u16string tag = ToUtf16(*name);
        // Each list is a walk over the whole document.
        if (tag == kEveryTag || route.parser->MayHaveName(tag)) {
            const xercesc::DOMNodeList* list = route.root->getElementsByTagName(tag.c_str());
            found = HasElements(*list) ? list : nullptr;
        }
    }
    if (found == nullptr) {
        Fail<Message::UNSUPPORTED_MODEL>(route, std::string());
    }
    const xercesc::DOMNode* node = found->item(0);
    if (node == nullptr) {
        Fail<Message::NO_CHILD_ELEMENT>(route, ToUtf8(route.root->getTagName()));
    }
    return ToUtf8(node->getNodeName());
}

BaseTranslator* MakeTranslator(const std::vector<std::string>& names, const std::string& modelName) {
    if (std::find(names.begin(), names.end(), modelName) == names.end()) {
        Raise<Message::NO_MODEL_LIBRARY>(modelName);
    }
    VTDynamicLoadedLibrary library = LibraryOf(modelName);
    const auto give = FindFunction<GiveMyTranslator>(library, "GiveMyTranslator");
    if (give == nullptr) {
        Raise<Message::NO_MODEL_LIBRARY>(modelName);
    }
    return AskForTranslator(give);
}

ScoreModel* GetLibraryPath(DocumentRoute& route, ScoreDictionary* dict) {
    diagnostics::Trace(diagnostics::TRACE_PROGRESS, "Enter:%s", kTraceName);
    ScoreModel* model = BuildModel(route, FindModelName(route), [&](BaseTranslator& translator) {
        return translator.ParseFromTree(route.document, dict, route.encoding);
    });
    diagnostics::Trace(diagnostics::TRACE_PROGRESS, "%s", "Make Model End.");
    return model;
}

ScoreModel* GetLibraryPath(DocumentRoute& route, const char* modelName) {
    diagnostics::Trace(diagnostics::TRACE_PROGRESS, "Enter:%s", kTraceName);
    const std::string name = modelName != nullptr ? modelName : FindModelName(route);
    ScoreModel* model = BuildModel(route, name, [&](BaseTranslator& translator) {
        return translator.ParseFromTree(route.document, route.encoding);
    });
    route.parser.reset();
    diagnostics::Trace(diagnostics::TRACE_PROGRESS, "%s", "Make Model End.");
    return model;
}

} // namespace veltrane::factory
