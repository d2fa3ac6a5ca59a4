#include "roads.h"

#include "kit/model/transformation_columns.h"
#include "kit/model/transformations.h"
#include "kit/results/typed_value.h"
#include "run.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/ScoreResult.h>
#include <MCVeltrane_900/ScoreResultField.h>

#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <sstream>

namespace veltrane::fuzz {

using namespace MCVeltrane_900;
using veltrane_kit::Transformations;

namespace {

std::string Told(const Cell& cell) {
    if (cell.kind == Cell::Kind::NUMBER) {
        char text[64];
        double number = 0;
        static_assert(sizeof number == sizeof cell.bits);
        std::memcpy(&number, &cell.bits, sizeof number);
        std::snprintf(text, sizeof text, "%.17g (%016llx)", number, static_cast<unsigned long long>(cell.bits));
        return text;
    }
    return cell.kind == Cell::Kind::TEXT ? "'" + cell.text + "'" : "missing";
}

std::string Told(const Answer& answer) {
    std::string text = answer.isScored ? "scored" : "not scored";
    for (const Cell& cell : answer.cells) {
        text += ", " + Told(cell);
    }
    return text;
}

void RequireSame(const Answer& found, const Answer& expected, std::size_t row, const char* road) {
    if (!(found == expected)) {
        std::fprintf(stderr, "row %zu, %s: %s\ncase: %s\n", row, road, Told(found).c_str(), Told(expected).c_str());
        Require(false);
    }
}

void RequireSame(const std::vector<Answer>& found, const std::vector<Answer>& expected, const char* road) {
    Require(found.size() == expected.size());
    for (std::size_t row = 0; row < found.size(); ++row) {
        RequireSame(found[row], expected[row], row, road);
    }
}

/// Every other result is asked for by nobody.
std::vector<Answer> Sparse(std::vector<Answer> answers) {
    for (Answer& answer : answers) {
        for (std::size_t i = 1; i < answer.cells.size(); i += 2) {
            answer.cells[i] = Cell();
        }
    }
    return answers;
}

/// A host's value as the cell of a column; a moment as one of its type.
Cell CellOf(const ScoreValue* value, const ColumnField& field) {
    std::string buffer;
    std::string unused;
    Value typed = value == nullptr ? Value() : veltrane_kit::TypedValue(*value, buffer);
    if (!typed.isMissing && veltrane_kit::IsMoment(typed.type)) {
        typed = veltrane_kit::CastValue(typed, field.type, unused);
    }
    if (typed.isMissing) {
        return {};
    }
    return field.type == DataType::STRING ? Cell::OfText(typed.text) : Cell::OfNumber(typed.number);
}

Answer ScoreCase(ScoreModel& model, ScoreResult& result, const CaseRecord& record,
                 const std::vector<ColumnField>& outputs) {
    Answer answer;
    answer.isScored = !model.Score(&record, &result).IsError();
    answer.cells.resize(outputs.size());
    for (std::size_t i = 0; answer.isScored && i < outputs.size(); ++i) {
        const ScoreValue* value =
            i == 0 ? result.GetResultValue() : result.GetResultFields()->GetResultValue(outputs[i].name);
        answer.cells[i] = CellOf(value, outputs[i]);
    }
    return answer;
}

/// What the plug-in that made a model exports.
GiveColumnScorer ExportOf(const ScoreModel& model) {
    Dl_info place{};
    const void* const* const vtable = *reinterpret_cast<const void* const* const*>(&model);
    Require(dladdr(vtable, &place) != 0);
    void* const library = dlopen(place.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    const auto give = reinterpret_cast<GiveColumnScorer>(dlsym(library, "GiveMyColumnScorer"));
    dlclose(library);
    return give;
}

} // namespace

void RequireSameRoads(const ColumnScorer& scorer, const CaseRoad& cases, std::string_view document) {
    Chance chance(document);
    Rows rows(scorer, document, chance);
    const bool hasDictionaries = chance.Below(2) == 0;
    const std::size_t length = 1 + chance.Below(chance.Below(2) == 0 ? ColumnScorer::kMostRows : 7);
    const auto state = scorer.NewState();
    const std::vector<Answer> first = rows.InBlocks(*state, length, hasDictionaries, false);
    if (rows.Count() > 0 && !scorer.NeedsOrder()) {
        const std::size_t row = chance.Below(rows.Count());
        RequireSame(first[row], cases(*rows.Record(row)), row, "block, beside the first of the cases");
    }
    std::vector<Answer> expected;
    for (std::size_t row = 0; row < rows.Count(); ++row) {
        expected.push_back(cases(*rows.Record(row)));
    }
    RequireSame(first, expected, "blocks");
    // What a state that looks back has seen shows in its results; any other gives the same again.
    const auto other = scorer.NewState();
    RequireSame(rows.InBlocks(scorer.NeedsOrder() ? *other : *state, ColumnScorer::kMostRows, !hasDictionaries, true),
                Sparse(expected), "whole blocks, with every other result");
}

void RequireSameRoads(ScoreModel& model, std::string_view document) {
    const GiveColumnScorer give = ExportOf(model);
    Require(give != nullptr);
    const std::unique_ptr<ColumnScorer> scorer(give(&model, ColumnScorer::kVersion));
    Require(scorer != nullptr);
    const std::unique_ptr<ScoreResult> result(model.CreateResult());
    const auto answer = [&](const CaseRecord& record) { return ScoreCase(model, *result, record, scorer->Outputs()); };
    RequireSameRoads(*scorer, answer, document);
}

void RequireSameTransformations(const std::string& document) {
    std::istringstream in(document);
    const std::shared_ptr<Transformations> cases = Transformations::Read(in, "UTF-8");
    if (cases == nullptr) {
        return;
    }
    const veltrane_kit::TransformationColumns scorer(cases);
    const std::vector<int> slots = cases->Derived().Slots();
    const auto answer = [&](const CaseRecord& record) {
        Answer computed;
        cases->Compute(record);
        for (std::size_t i = 0; i < slots.size(); ++i) {
            const Value& value = (*cases)[slots[i]];
            std::string buffer;
            computed.cells.push_back(value.isMissing ? Cell()
                                     : scorer.Outputs()[i].type == DataType::STRING
                                         ? Cell::OfText(veltrane_kit::TextOf(value, buffer))
                                         : Cell::OfNumber(value.number));
        }
        return computed;
    };
    RequireSameRoads(scorer, answer, document);
}

} // namespace veltrane::fuzz
