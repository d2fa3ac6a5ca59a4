#ifndef VELTRANE_TESTS_TRANSLATORS_TEST_TRANSLATOR_H
#define VELTRANE_TESTS_TRANSLATORS_TEST_TRANSLATOR_H

#include <MCVeltrane_900/PMMLTranslator.h>

namespace veltrane::tests {

/// A translator as a plug-in derives it, with what only derived classes reach.
class TestTranslator : public MCVeltrane_900::PMMLTranslator {
public:
    using PMMLTranslator::fConstant;
    using PMMLTranslator::fEncoding;
    using PMMLTranslator::fFunctionMap;
    using PMMLTranslator::fNodeCounter;
    using PMMLTranslator::fWord;
    using PMMLTranslator::GetTranscoder;
    using PMMLTranslator::PMMLTranslator;
    using PMMLTranslator::ToString;
};

} // namespace veltrane::tests

#endif
