#include "diagnostics/raise.h"

#include <MCVeltrane_900/VTException.h>
#include <veltrane/c_api.h>
#include <veltrane/document.h>

#include <new>
#include <string>

using veltrane::ColumnField;
using veltrane::Document;
using veltrane::DocumentOptions;
using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using Content = DocumentOptions::Content;

struct veltrane_options {
    DocumentOptions options;
};

struct veltrane_document {
    Document document;
};

struct veltrane_state {
    Document document;
    Document::State state;
};

namespace {

static_assert(static_cast<int>(veltrane::DataType::DATE_TIME_SECONDS_SINCE_1980) ==
              VELTRANE_DATE_TIME_SECONDS_SINCE_1980);
static_assert(static_cast<int>(veltrane::DataType::DATE) == VELTRANE_DATE);
static_assert(static_cast<int>(Message::NULL_ARGUMENT) == VELTRANE_NULL_POINTER);
static_assert(static_cast<int>(Message::NO_SUCH_PLACE) == VELTRANE_NO_SUCH_PLACE);
static_assert(static_cast<int>(Message::OUT_OF_MEMORY) == VELTRANE_OUT_OF_MEMORY);
static_assert(static_cast<int>(Message::UNEXPECTED_ERROR) == VELTRANE_UNEXPECTED);

/// Of this thread's last call.
thread_local std::string gErrorText;

/// Notes a failure of the library; a text for which there is no memory is left out.
template <Message kMessage>
std::int32_t Fail() {
    try {
        Raise<kMessage>();
    } catch (const MCVeltrane_900::VTException& failure) {
        try {
            gErrorText = failure.GetErrorMessage();
        } catch (...) {
            gErrorText.clear();
        }
    } catch (...) {
        gErrorText.clear();
    }
    return static_cast<std::int32_t>(kMessage);
}

std::int32_t Fail(const MCVeltrane_900::VTException& failure) {
    try {
        gErrorText = failure.GetErrorMessage();
    } catch (...) {
        return Fail<Message::OUT_OF_MEMORY>();
    }
    // Nothing but a message of the catalogue has its number here.
    const int number = failure.GetErrorCode();
    return number == VELTRANE_OK ? VELTRANE_UNEXPECTED : number;
}

/// Runs a call. No exception leaves it.
template <typename Action>
std::int32_t Run(Action action) {
    gErrorText.clear();
    try {
        action();
        return VELTRANE_OK;
    } catch (const MCVeltrane_900::VTException& failure) {
        return Fail(failure);
    } catch (const std::bad_alloc&) {
        return Fail<Message::OUT_OF_MEMORY>();
    } catch (...) {
        return Fail<Message::UNEXPECTED_ERROR>();
    }
}

/// What a pointer points to.
template <typename Each>
Each& At(Each* pointer, const char* name) {
    if (pointer == nullptr) {
        Raise<Message::NULL_ARGUMENT>(name);
    }
    return *pointer;
}

std::string TextOf(const char* text, const char* name) {
    return std::string(&At(text, name));
}

const DocumentOptions& OptionsOf(const veltrane_options* options) {
    static const DocumentOptions kFirst;
    return options == nullptr ? kFirst : options->options;
}

template <typename Each>
const Each& PlaceOf(const std::vector<Each>& all, std::size_t place, const char* what) {
    if (place >= all.size()) {
        Raise<Message::NO_SUCH_PLACE>(std::to_string(place), std::to_string(all.size()), what);
    }
    return all[place];
}

void Show(const ColumnField& shown, veltrane_field& field) {
    field.name = shown.name.c_str();
    field.type = static_cast<std::int32_t>(shown.type);
    field.is_needed = shown.isNeeded ? 1 : 0;
    field.category_count = shown.categories.size();
}

struct ContentName {
    const char* name;
    Content content;
};
constexpr ContentName kContents[] = {
    {"automatic", Content::AUTOMATIC}, {"model", Content::MODEL}, {"derivedFields", Content::DERIVED_FIELDS}};

/// @return false for an option or a value that isn't one
bool Set(DocumentOptions& options, const std::string& name, const std::string& value) {
    if (name == "content") {
        for (const ContentName& content : kContents) {
            if (value == content.name) {
                options.content = content.content;
                return true;
            }
        }
        return false;
    }
    if (name == "wholeNumbersAsDoubles") {
        options.wholeNumbersAsDoubles = value == "true";
        return value == "true" || value == "false";
    }
    struct Text {
        const char* name;
        std::string DocumentOptions::*text;
    };
    constexpr Text kTexts[] = {{"model", &DocumentOptions::model},
                               {"modelList", &DocumentOptions::modelList},
                               {"encoding", &DocumentOptions::encoding}};
    for (const Text& text : kTexts) {
        if (name == text.name) {
            options.*text.text = value;
            return true;
        }
    }
    return false;
}

} // namespace

const char* veltrane_error_text(void) {
    return gErrorText.c_str();
}

std::int32_t veltrane_options_new(veltrane_options** options) {
    return Run([&] {
        veltrane_options*& made = At(options, "options"); // ahead of the allocation, which nobody would free
        made = new veltrane_options();
    });
}

std::int32_t veltrane_options_set(veltrane_options* options, const char* name, const char* value) {
    return Run([&] {
        const std::string nameText = TextOf(name, "name");
        const std::string valueText = TextOf(value, "value");
        if (!Set(At(options, "options").options, nameText, valueText)) {
            Raise<Message::NO_SUCH_OPTION>(nameText, valueText);
        }
    });
}

std::int32_t veltrane_options_add_model_option(veltrane_options* options, const char* name, const char* value) {
    return Run([&] {
        At(options, "options").options.modelOptions.emplace_back(TextOf(name, "name"), TextOf(value, "value"));
    });
}

std::int32_t veltrane_options_free(veltrane_options* options) {
    return Run([&] { delete options; });
}

std::int32_t veltrane_document_open(const void* bytes, size_t size, const veltrane_options* options,
                                    veltrane_document** document) {
    return Run([&] {
        veltrane_document*& opened = At(document, "document");
        if (bytes == nullptr && size > 0) {
            Raise<Message::NULL_ARGUMENT>("bytes");
        }
        const std::string_view text(static_cast<const char*>(bytes), size);
        opened = new veltrane_document{Document::OfBytes(text, OptionsOf(options))};
    });
}

std::int32_t veltrane_document_open_file(const char* path, const veltrane_options* options,
                                         veltrane_document** document) {
    return Run([&] {
        veltrane_document*& opened = At(document, "document");
        opened = new veltrane_document{Document::OfFile(TextOf(path, "path"), OptionsOf(options))};
    });
}

std::int32_t veltrane_document_free(veltrane_document* document) {
    return Run([&] { delete document; });
}

std::int32_t veltrane_document_input_count(const veltrane_document* document, size_t* count) {
    return Run([&] { At(count, "count") = At(document, "document").document.Inputs().size(); });
}

std::int32_t veltrane_document_input(const veltrane_document* document, size_t place, veltrane_field* field) {
    return Run([&] { Show(PlaceOf(At(document, "document").document.Inputs(), place, "inputs"), At(field, "field")); });
}

std::int32_t veltrane_document_output_count(const veltrane_document* document, size_t* count) {
    return Run([&] { At(count, "count") = At(document, "document").document.Outputs().size(); });
}

std::int32_t veltrane_document_output(const veltrane_document* document, size_t place, veltrane_field* field) {
    return Run(
        [&] { Show(PlaceOf(At(document, "document").document.Outputs(), place, "outputs"), At(field, "field")); });
}

std::int32_t veltrane_document_category(const veltrane_document* document, size_t output, size_t place,
                                        const char** category) {
    return Run([&] {
        const ColumnField& field = PlaceOf(At(document, "document").document.Outputs(), output, "outputs");
        At(category, "category") = PlaceOf(field.categories, place, "categories").c_str();
    });
}

std::int32_t veltrane_document_input_schema(const veltrane_document* document, ArrowSchema* schema) {
    return Run([&] {
        At(schema, "schema").release = nullptr;
        At(document, "document").document.InputSchema(schema);
    });
}

std::int32_t veltrane_document_output_schema(const veltrane_document* document, ArrowSchema* schema) {
    return Run([&] {
        At(schema, "schema").release = nullptr;
        At(document, "document").document.OutputSchema(schema);
    });
}

std::int32_t veltrane_document_needs_order(const veltrane_document* document, std::int32_t* needs_order) {
    return Run([&] { At(needs_order, "needs_order") = At(document, "document").document.NeedsOrder() ? 1 : 0; });
}

std::int32_t veltrane_state_new(const veltrane_document* document, veltrane_state** state) {
    return Run([&] {
        veltrane_state*& made = At(state, "state");
        const Document& shared = At(document, "document").document;
        made = new veltrane_state{shared, shared.NewState()};
    });
}

std::int32_t veltrane_state_free(veltrane_state* state) {
    return Run([&] { delete state; });
}

/// What is handed over is consumed without a state too.
std::int32_t veltrane_score(veltrane_state* state, ArrowArray* array, const ArrowSchema* schema, ArrowArray* results,
                            ArrowSchema* result_schema) {
    return Run([&] {
        if (state != nullptr) {
            state->document.Score(array, schema, state->state, results, result_schema);
            return;
        }
        if (array != nullptr && array->release != nullptr) {
            array->release(array);
            array->release = nullptr; // whatever the producer's function left there: it was handed over
        }
        if (results != nullptr) {
            results->release = nullptr;
        }
        if (result_schema != nullptr) {
            result_schema->release = nullptr;
        }
        Raise<Message::NULL_ARGUMENT>("state");
    });
}
