#include "columns/interface/opened_document.h"

#include "columns/opening/model_source.h"
#include "columns/rows/row_scorer.h"
#include "diagnostics/raise.h"
#include "factory/documents/xml_platform_guard.h"
#include "factory/entries/plugin_route.h"

#include <MCVeltrane_900/ScoreModel.h>

#include <unicode/ucnv.h>

#include <istream>
#include <mutex>

namespace veltrane::columns {

namespace {

using diagnostics::Message;
using diagnostics::Raise;

/// The plug-in of documents without a model stands beside those of models and in no list.
constexpr const char* kTransformations = "Transformations";

using GiveTransformations = ColumnScorer* (*)(std::istream& document, const std::string& encoding, int version);

/// The plug-in starts the XML platform by itself, which only one thread may do at a time.
OpenedDocument OpenDerivedFields(const ModelSource& source) {
    const auto give =
        reinterpret_cast<GiveTransformations>(factory::FindPluginSymbol(kTransformations, "GiveMyTransformations"));
    if (give == nullptr) {
        Raise<Message::NO_MODEL_LIBRARY>(kTransformations);
    }
    if (!source.Options().modelOptions.empty()) {
        const auto& [name, value] = source.Options().modelOptions.front();
        Raise<Message::NO_SUCH_OPTION>(name, value);
    }
    OpenedDocument opened;
    {
        const std::scoped_lock lock(factory::ModelMutex());
        source.Read([&](std::istream& in) {
            opened.scorer.reset(give(in, source.Options().encoding, ColumnScorer::kVersion));
        });
    }
    if (opened.scorer == nullptr || opened.scorer->Outputs().empty()) {
        Raise<Message::NOTHING_TO_SCORE>("derived fields");
    }
    return opened;
}

} // namespace

OpenedDocument::OpenedDocument() = default;
OpenedDocument::OpenedDocument(OpenedDocument&&) noexcept = default;
OpenedDocument::~OpenedDocument() = default;

OpenedDocument OpenInColumns(std::istream& in, const DocumentOptions& options) {
    auto source = std::make_unique<ModelSource>(in, options);
    BuiltModel built = source->Build();
    if (built.model == nullptr) {
        return OpenDerivedFields(*source);
    }
    OpenedDocument opened;
    const auto give = reinterpret_cast<GiveColumnScorer>(factory::FindPluginSymbol(built.kind, "GiveMyColumnScorer"));
    if (give != nullptr) {
        opened.scorer.reset(give(built.model.get(), ColumnScorer::kVersion));
    }
    if (opened.scorer == nullptr) {
        source->Keep();
        opened.scorer = std::make_unique<RowScorer>(std::move(source), std::move(built));
    } else {
        opened.model = std::move(built.model);
    }
    return opened;
}

bool IsUtf8(const std::string& encoding) {
    UErrorCode status = U_ZERO_ERROR;
    UConverter* const converter = encoding.empty() ? nullptr : ucnv_open(encoding.c_str(), &status);
    if (converter == nullptr || U_FAILURE(status)) {
        ucnv_close(converter);
        Raise<Message::UNKNOWN_ENCODING>(encoding);
    }
    const bool isUtf8 = ucnv_getType(converter) == UCNV_UTF8;
    ucnv_close(converter);
    return isUtf8;
}

} // namespace veltrane::columns
