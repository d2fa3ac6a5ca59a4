#ifndef VELTRANE_PLUGINS_KIT_ATTRIBUTE_CHECK_H
#define VELTRANE_PLUGINS_KIT_ATTRIBUTE_CHECK_H

#include "kit/document/checks/element_table.h"
#include "kit/document/element.h"
#include "kit/document/known_texts.h"

#include <cstdint>

namespace veltrane_kit {

/// Checks the attributes of elements against their rows.
class AttributeCheck {
public:
    /// @param root whose version decides what may lack
    explicit AttributeCheck(const Element& root);

    /// @throws VTException 260120, 260285 or 260153
    void Check(const Element& element, const ElementRow& row);

private:
    static constexpr std::size_t kNoRow = 32; ///< more attributes than a row has

    std::uint32_t CheckInTree(const Element& element, const ElementRow& row);
    std::uint32_t CheckRecorded(const Element& element, const ElementRow& row);
    std::size_t PlaceOf(const XMLCh* name, const ElementRow& row);
    bool IsWrongRecord(const AttributeRow& row, const XMLCh* text);
    void CheckLacking(const ElementRow& row, std::uint32_t seen) const;

    /// The attributes of one document that have the same name share its text, so that the text's place tells the name.
    struct Known {
        const XMLCh* name = nullptr;
        const ElementRow* row = nullptr;
        std::size_t place = kNoRow;
    };
    static constexpr std::size_t kKnown = 256;

    bool fIsOld;
    Known fKnown[kKnown];
    KnownTexts<const AttributeRow*, 64> fRight; ///< words, and the attributes that they are right for
};

} // namespace veltrane_kit

#endif
