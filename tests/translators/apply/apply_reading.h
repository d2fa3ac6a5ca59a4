#ifndef VELTRANE_TESTS_TRANSLATORS_APPLY_READING_H
#define VELTRANE_TESTS_TRANSLATORS_APPLY_READING_H

#include "support/dom.h"
#include "translators/frame/test_translator.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/FunctionTree.h>
#include <MCVeltrane_900/ScoreDictionary.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace veltrane::tests {

/// Reads single Apply elements over the inputs of derived_fields.h.
class ApplyReading : public testing::Test {
protected:
    ApplyReading();

    /// Reads an Apply for the target, as the child of `parent` if there is one.
    /// @return the node; the caller owns it when there is no parent
    MCVeltrane_900::FunctionTree* Handle(const xercesc::DOMElement* apply,
                                         MCVeltrane_900::FunctionTree* parent = nullptr);

    /// Reads the Apply of this text; the tree lives as long as the fixture.
    const MCVeltrane_900::FunctionTree& Tree(const std::string& apply);

    TestTranslator translator{"UTF-8"};
    std::unique_ptr<MCVeltrane_900::ScoreDictionary> dictionary;

    /// A continuous number, named "z".
    MCVeltrane_900::DictVar target{"z", MCVeltrane_900::ScoreDictVar::kNUMERIC_VAR};

private:
    std::vector<std::unique_ptr<MCVeltrane_900::FunctionTree>> fTrees;
};

} // namespace veltrane::tests

#endif
