#include "blocks/model_columns.h"

#include <MCVeltrane_900/ScoreModel.h>

#include <cstring>
#include <dlfcn.h>

namespace veltrane::host {
namespace {

struct Closer {
    void operator()(void* module) const { ::dlclose(module); }
};

/// The table of virtual operations of a model's class, which stands in the plug-in that made it.
const void* TableOf(const MCVeltrane_900::ScoreModel& model) {
    const void* table = nullptr;
    std::memcpy(&table, dynamic_cast<const void*>(&model), sizeof table);
    return table;
}

} // namespace

std::unique_ptr<ColumnScorer> MakeColumnScorer(MCVeltrane_900::ScoreModel& model) {
    Dl_info plugin{};
    if (::dladdr(TableOf(model), &plugin) == 0 || plugin.dli_fname == nullptr) {
        return nullptr;
    }
    const std::unique_ptr<void, Closer> module(::dlopen(plugin.dli_fname, RTLD_LAZY | RTLD_NOLOAD));
    void* const give = module ? ::dlsym(module.get(), "GiveMyColumnScorer") : nullptr;
    if (give == nullptr) {
        return nullptr;
    }
    return std::unique_ptr<ColumnScorer>(reinterpret_cast<GiveColumnScorer>(give)(&model, ColumnScorer::kVersion));
}

} // namespace veltrane::host
