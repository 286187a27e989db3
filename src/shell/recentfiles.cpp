#include "shell/recentfiles.h"

#include "core/value.h"
#include "platform/platform.h"
#include "platform/userinterface.h"
#include "shell/application.h"

#include <algorithm>

namespace vorn {

namespace {

// Characters of a path that a menu entry shows.
constexpr std::size_t ShownPathMax = 30;

} // namespace

void addRecentFile(std::u16string_view path)
{
    auto& files = application->recentFiles;
    const std::u16string added(path);
    const auto isSame = [&added](const std::u16string& file) {
        return compareTexts(file.c_str(), added.c_str(), IgnoreCase) == 0;
    };
    if (added.size() <= RecentFileMax && std::none_of(files.begin(), files.end(), isSame)) {
        std::rotate(files.begin(), files.end() - 1, files.end());
        files.front() = added;
    }
    platform.userInterface->noteDocument(added);
}

std::u16string recentFileText(int slot, std::u16string_view path)
{
    std::u16string text = u"&";
    text += static_cast<char16_t>(u'1' + slot);
    text += u' ';
    if (path.size() > ShownPathMax) {
        text += u"...";
        path.remove_prefix(path.size() - ShownPathMax);
    }
    text += path;
    return text;
}

} // namespace vorn
