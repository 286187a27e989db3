// Case and classes of characters from ICU. Its property tables are part of its code, so the first
// question costs no more than the last.
#pragma once

#include "platform/textrules.h"

namespace vorn {

class IcuTextRules : public TextRules {
public:
    char16_t lower(char16_t unit) override;
    char16_t upper(char16_t unit) override;
    bool isLetter(char16_t unit) override;
    bool isSpace(char16_t unit) override;
};

} // namespace vorn
