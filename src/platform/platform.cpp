#include "platform/platform.h"

#include "platform/textrules.h"

namespace vorn {

Platform platform;

TextRules& textRules()
{
    return *platform.textRules;
}

} // namespace vorn
