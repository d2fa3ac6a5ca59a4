#include "documents/model_choice.h"

#include "files/failure.h"
#include "run/report.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

namespace veltrane::host {
namespace {

/// A message names this many models.
constexpr std::size_t kShownModels = 10;

std::string ModelsText(const DocumentOutline& outline, std::optional<std::size_t> except) {
    std::string text;
    std::size_t shown = 0;
    for (std::size_t place = 0; place < outline.models.size(); ++place) {
        if (place == except) {
            continue;
        }
        if (++shown > kShownModels) {
            return text + ", ...";
        }
        text += (text.empty() ? "" : ", ") + ModelText(outline, place);
    }
    return text;
}

/// The place of the model with a name; nothing when there is none.
std::optional<std::size_t> PlaceOfName(const DocumentOutline& outline, const std::string& name,
                                       const std::string& document) {
    std::optional<std::size_t> found;
    for (std::size_t place = 0; place < outline.models.size(); ++place) {
        if (outline.models[place].name != name) {
            continue;
        }
        if (found) {
            throw Failure(fmt::format("{}: several models are named \"{}\"; choose one by its number: {}", document,
                                      name, ModelsText(outline, std::nullopt)));
        }
        found = place;
    }
    return found;
}

std::optional<std::size_t> PlaceOfNumber(const DocumentOutline& outline, const std::string& text) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isPlace = error == std::errc() && end == text.data() + text.size() && number >= 1;
    return isPlace && number <= outline.models.size() ? std::optional<std::size_t>(number - 1) : std::nullopt;
}

std::size_t WantedModel(const DocumentOutline& outline, const std::string& wanted, const std::string& document) {
    if (outline.models.empty()) {
        throw Failure(document + ": the document holds no models to choose from");
    }
    std::optional<std::size_t> place = PlaceOfName(outline, wanted, document);
    if (!place) {
        place = PlaceOfNumber(outline, wanted);
    }
    if (!place) {
        throw Failure(fmt::format("{}: there is no model \"{}\"; the document holds {}", document, wanted,
                                  ModelsText(outline, std::nullopt)));
    }
    return *place;
}

} // namespace

std::optional<std::size_t> ChooseModel(const DocumentOutline& outline, const ModelList& list,
                                       const std::optional<std::string>& wanted, const std::string& document) {
    if (wanted) {
        return WantedModel(outline, *wanted, document);
    }
    const auto hasPlugin = [&](const OutlinedModel& model) { return list.Has(model.element); };
    const auto canBeScored = [&](const OutlinedModel& model) { return model.isScorable && hasPlugin(model); };
    auto found = std::find_if(outline.models.begin(), outline.models.end(), canBeScored);
    if (found == outline.models.end()) { // its plug-in tells why not
        found = std::find_if(outline.models.begin(), outline.models.end(), hasPlugin);
    }
    if (found == outline.models.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - outline.models.begin());
}

std::string ModelText(const DocumentOutline& outline, std::size_t place) {
    const OutlinedModel& model = outline.models[place];
    const std::string name = model.name.empty() ? "" : " \"" + model.name + '"';
    return fmt::format("{}{} ({})", place + 1, name, model.element);
}

std::string ChoiceText(const DocumentOutline& outline, std::size_t chosen, const std::string& document) {
    return fmt::format("{}: of its {} models, {} is used; the others: {}; choose with --model", document,
                       outline.models.size(), ModelText(outline, chosen), ModelsText(outline, chosen));
}

} // namespace veltrane::host
