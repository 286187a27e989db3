#include "qt/strings.h"

#include <gtest/gtest.h>

namespace vorn::qt {
namespace {

TEST(Strings, goToTheToolkitAndBackAsTheyAre)
{
    const std::u16string cases[] = {
        u"", u"Sheet1", u"Größe", u"\U0001F4C8", std::u16string(1, u'\xD800'), {u'a', u'\0', u'b'},
    };
    for (const std::u16string& text : cases)
        EXPECT_EQ(fromQt(toQt(text)), text);
}

} // namespace
} // namespace vorn::qt
