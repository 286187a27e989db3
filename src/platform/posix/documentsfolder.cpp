#include "platform/posix/documentsfolder.h"

#include <cstdlib>
#include <fstream>
#include <string_view>
#include <sys/stat.h>

namespace vorn {

namespace {

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

bool isFolder(const std::string& path)
{
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// What a line XDG_DOCUMENTS_DIR="$HOME/Papers" of the desktop's settings names; a folder is given
// from the home folder or from the root, and anything else is none.
std::string namedFolder(std::string_view line, const std::string& home)
{
    constexpr std::string_view Key = "XDG_DOCUMENTS_DIR=\"";
    constexpr std::string_view Home = "$HOME/";
    if (!line.starts_with(Key) || !line.ends_with('"') || line.size() == Key.size())
        return {};
    line.remove_prefix(Key.size());
    line.remove_suffix(1);
    if (line.starts_with(Home))
        return home + '/' + std::string(line.substr(Home.size()));
    return line.starts_with('/') ? std::string(line) : std::string();
}

std::string settingOfDesktop(const std::string& home)
{
    std::string settings = environment("XDG_CONFIG_HOME");
    if (settings.empty())
        settings = home + "/.config";
    std::ifstream stream(settings + "/user-dirs.dirs");
    for (std::string line; std::getline(stream, line);) {
        const std::string folder = namedFolder(line, home);
        if (!folder.empty())
            return folder;
    }
    return {};
}

} // namespace

std::string documentsFolderBytes()
{
    const std::string home = environment("HOME");
    if (home.empty())
        return {};
    for (std::string folder : {settingOfDesktop(home), home + "/Documents", home}) {
        if (folder.empty() || !isFolder(folder))
            continue;
        if (!folder.ends_with('/'))
            folder += '/';
        return folder;
    }
    return {};
}

} // namespace vorn
