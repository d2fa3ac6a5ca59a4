#include "documents/explanation.h"

#include "documents/document_file.h"
#include "documents/document_outline.h"
#include "documents/library_functions.h"
#include "documents/model_list.h"
#include "run/report.h"

#include <MCVeltrane_900/Messages.h>
#include <MCVeltrane_900/VTDynamicLoadedLibrary.h>
#include <MCVeltrane_900/VTException.h>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <strings.h>

namespace veltrane::host {

using MCVeltrane_900::Message;
using MCVeltrane_900::VTDynamicLoadedLibrary;
using MCVeltrane_900::VTException;

namespace {

constexpr std::string_view kWhiteSpace = " \t\r\n";
constexpr std::size_t kShownStart = 20;
constexpr std::size_t kShownKinds = 10;

/// What the library says of a document that it cannot parse, and of one without a root.
constexpr std::array kUnreadable{Message::CANNOT_OPEN_DOCUMENT, Message::CANNOT_PARSE_TO_TREE, Message::CANNOT_PARSE,
                                 Message::NO_ROOT, Message::EMPTY_ROOT_TAG};

/// Byte order marks, and "<?xm" in EBCDIC, which XML may begin with in place of "<".
constexpr std::string_view kMarks[] = {"\xEF\xBB\xBF", "\xFE\xFF", "\xFF\xFE", "\x4C\x6F\xA7\x94"};

/// UTF-16 has a zero byte beside each ASCII character.
bool MayBeXml(std::string_view bytes) {
    for (const std::string_view mark : kMarks) {
        if (bytes.starts_with(mark)) {
            return true;
        }
    }
    const std::size_t first = bytes.find_first_not_of(std::string_view(" \t\r\n\0", 5));
    return first != bytes.npos && bytes[first] == '<';
}

/// The first bytes of a file that may hold anything.
std::string Start(std::string_view bytes) {
    std::string shown;
    for (const char c : bytes.substr(0, kShownStart)) {
        if (static_cast<unsigned char>(c) < 0x80) {
            shown += Escaped({&c, 1});
        } else {
            shown += fmt::format("\\x{:02X}", static_cast<unsigned>(static_cast<unsigned char>(c)));
        }
    }
    return bytes.size() > kShownStart ? shown + "..." : shown;
}

/// The beginnings of what the parser says of bytes that are no UTF-8.
constexpr std::string_view kBadBytes[] = {"invalid byte", "irregular bytes", "exceeded byte limit",
                                          "invalid multi-byte sequence"};

/// Whether the parser reads a document as UTF-8: by its declaration, or for lack of one.
bool IsReadAsUtf8(std::string_view bytes) {
    if (std::any_of(std::begin(kMarks) + 1, std::end(kMarks),
                    [&](std::string_view mark) { return bytes.starts_with(mark); }) ||
        bytes.substr(0, 4).find('\0') != bytes.npos) {
        return false;
    }
    const std::string_view declaration = bytes.substr(0, bytes.find("?>"));
    const std::size_t encoding = declaration.find("encoding");
    if (declaration.find("<?xml") == declaration.npos || encoding == declaration.npos) {
        return true;
    }
    const std::size_t quote = declaration.find_first_of("'\"", encoding);
    const std::string_view name = quote == declaration.npos ? "" : declaration.substr(quote + 1, 5);
    return name.size() == 5 && ::strncasecmp(name.data(), "UTF-8", 5) == 0;
}

/// The parser finds bytes that are no UTF-8 block by block, and tells the place where the block begins; which byte it
/// is it shows where that is ASCII only.
void FindBadBytes(std::string_view bytes, DocumentFault& fault) {
    if (std::none_of(std::begin(kBadBytes), std::end(kBadBytes),
                     [&](std::string_view words) { return fault.text.starts_with(words); }) ||
        !IsReadAsUtf8(bytes)) {
        return;
    }
    std::uint64_t line = 1;
    std::uint64_t column = 1;
    for (std::size_t at = bytes.starts_with(kMarks[0]) ? kMarks[0].size() : 0; at < bytes.size(); ++column) {
        const std::size_t start = at;
        UChar32 character;
        U8_NEXT(bytes.data(), at, bytes.size(), character);
        if (character < 0) {
            fault.line = line;
            fault.column = column;
            fault.text += fmt::format("; the byte \\x{:02X} here is no UTF-8, as which the document is read",
                                      static_cast<unsigned>(static_cast<unsigned char>(bytes[start])));
            return;
        }
        if (character == '\n' || (character == '\r' && bytes.substr(at, 1) != "\n")) {
            ++line;
            column = 0;
        }
    }
}

std::string RootText(const DocumentOutline& outline) {
    const bool hasPrefix = outline.root.ends_with(":PMML");
    return fmt::format("the root element is \"{}\"{}", outline.root,
                       hasPrefix ? ", and names with a prefix are not read" : "");
}

/// The kinds of the models in a document, each once: `"TreeModel", "Scorecard"`.
std::string KindsText(const DocumentOutline& outline) {
    std::vector<std::string> kinds;
    for (const OutlinedModel& model : outline.models) {
        const std::string kind = '"' + model.element + '"';
        if (kinds.size() <= kShownKinds && std::find(kinds.begin(), kinds.end(), kind) == kinds.end()) {
            kinds.push_back(kind);
        }
    }
    if (kinds.size() > kShownKinds) {
        kinds.back() = "...";
    }
    return fmt::format("{}{}", kinds.size() == 1 ? "a " : "of the kinds ", fmt::join(kinds, ", "));
}

/// The name of the model whose plug-in the library looks for, by its own rules; empty where it looks for none.
std::string SearchedModel(const DocumentOutline& outline, const ModelList& list) {
    const auto holds = [&](const std::string& name) { return outline.elements.contains(name); };
    if (holds("NearestNeighborModel")) {
        return "NearestNeighborModel";
    }
    if (outline.root == "Tree") {
        return "TreeModel";
    }
    if (outline.root == "kord-ml" && holds("regression-model")) {
        return "GeneralRegressionModel";
    }
    const auto name = std::find_if(list.names.begin(), list.names.end(), holds);
    return name == list.names.end() ? "" : *name;
}

/// The function that an Apply names may be one of the document's own.
std::string ExplainUnknownFunction(const DocumentFile& document, const DocumentOutline& outline) {
    if (!outline.elements.contains("DefineFunction")) {
        return {};
    }
    return document.Name() + ": the library alone reads no functions that a document defines itself (DefineFunction)";
}

/// A function that is none in PMML may be one of the library's.
std::string ExplainForeignFunction(const DocumentFile& document, std::string_view function) {
    if (function.empty()) {
        return {};
    }
    return fmt::format("{}: PMML has no function \"{}\", but the library alone does: \"veltrane transform --plain\" "
                       "computes it",
                       document.Name(), function);
}

} // namespace

std::string ToldText(const VTException& failure) {
    return fmt::format("error {}: {}", failure.GetErrorCode(), failure.GetErrorMessage());
}

std::string ToldText(int code, const std::string& parameter) {
    VTException failure;
    failure.PutErrorMessage(code, parameter.c_str());
    return ToldText(failure);
}

std::string ExplainUnreadable(const DocumentFile& document, const DocumentOutline& outline) {
    const std::string_view bytes = document.Bytes();
    const std::string& name = document.Name();
    if (bytes.empty()) {
        return name + ": the file is empty";
    }
    if (bytes.find_first_not_of(kWhiteSpace) == bytes.npos) {
        return name + ": the file holds nothing but white space";
    }
    if (!MayBeXml(bytes)) {
        return fmt::format("{}: the file is no XML: it starts with \"{}\"", name, Start(bytes));
    }
    if (!outline.fault) {
        return {};
    }
    DocumentFault fault = *outline.fault;
    FindBadBytes(bytes, fault);
    if (fault.line == 0) {
        return fmt::format("{}: {}", name, fault.text);
    }
    return fmt::format("{}:{}:{}: {}", name, fault.line, fault.column, fault.text);
}

std::string PluginsText(const ModelList& list) {
    return fmt::format("there are plug-ins for {} (by {})", list.Text(), list.path);
}

std::string ExplainUnsupported(const DocumentFile& document, const DocumentOutline& outline, const ModelList& list) {
    if (!outline.IsPmml()) {
        return fmt::format("{}: {}, not PMML", document.Name(), RootText(outline));
    }
    if (outline.models.empty()) {
        return fmt::format("{}: the document holds no model{}", document.Name(),
                           outline.elements.contains("DerivedField")
                               ? "; its derived fields are computed by \"veltrane transform\""
                               : "");
    }
    for (const OutlinedModel& model : outline.models) {
        if (list.Has(model.element)) {
            return {};
        }
    }
    return fmt::format("{}: the document's model is {}; {}", document.Name(), KindsText(outline), PluginsText(list));
}

// Who wants the derived fields of a document of another kind may want its predictions.
std::string ExplainMissingNode(const DocumentFile& document, const DocumentOutline& outline) {
    if (outline.elements.contains("TransformationDictionary")) {
        return {};
    }
    if (outline.models.empty()) {
        return document.Name() + ": the document has no derived fields, and no model either";
    }
    return fmt::format("{}: the document has no derived fields outside of its model; \"veltrane score\" scores that",
                       document.Name());
}

std::string ExplainMissingPlugin(const std::string& model) {
    if (model.empty()) {
        return {};
    }
    const std::string kind = model == "AssociationModelLattice" ? "AssociationModel" : model;
    VTDynamicLoadedLibrary library(VTDynamicLoadedLibrary::MakeLibraryFileName(kind + "900r"));
    const bool hasEntry = library.GetSymbolAddress("GiveMyTranslator") != nullptr;
    return "the plug-in cannot be used: " + (hasEntry ? "it gives no translator" : library.GetErrorText());
}

std::string Explain(const VTException& failure, DocumentFile& document, const ModelList& list) {
    const auto message = static_cast<Message>(failure.GetErrorCode());
    if (std::find(kUnreadable.begin(), kUnreadable.end(), message) != kUnreadable.end()) {
        return ExplainUnreadable(document, ReadOutline(document.Stream()));
    }
    if (message == Message::UNSUPPORTED_MODEL) {
        return ExplainUnsupported(document, ReadOutline(document.Stream()), list);
    }
    if (message == Message::NO_MODEL_LIBRARY) {
        return ExplainMissingPlugin(SearchedModel(ReadOutline(document.Stream()), list));
    }
    if (message == Message::MISSING_NODE &&
        failure.GetErrorMessage().find("'TransformationDictionary'") != std::string::npos) {
        return ExplainMissingNode(document, ReadOutline(document.Stream()));
    }
    if (message == Message::UNSUPPORTED_VALUE && failure.GetErrorMessage().find("'function'") != std::string::npos) {
        return ExplainUnknownFunction(document, ReadOutline(document.Stream()));
    }
    if (message == Message::INVALID_ATTRIBUTE_VALUE_IN) {
        return ExplainForeignFunction(document, LibraryFunctionIn(failure.GetErrorMessage()));
    }
    return {};
}

} // namespace veltrane::host
