// The folders of src are layers, and their include lines are the arrows between them. No arrow
// points up, and no library is known outside of the folders that are made for libraries.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace vorn {
namespace {

// A folder may include those of its own level and of those below. `platform` is its headers alone,
// which are pure interfaces; `platform/` stands for the folders of implementations within it.
const std::map<std::string, int> Levels = {
    {"resources", 0},
    {"platform",  0},
    {"core",      1},
    {"formula",   1},
    {"functions", 1},
    {"numfmt",    1},
    {"files",     2},
    {"tasks",     2},
    {"charts",    2},
    {"editing",   2},
    {"shell",     3},
    {"qt",        4},
    {"cli",       4},
    {"platform/", 4},
};

// The folders at the top, which nothing but the programs themselves and the tests includes.
const std::set<std::string> Programs = {"qt", "cli"};

std::string folderOf(const std::string& path)
{
    const std::size_t slash = path.find('/');
    std::string folder = path.substr(0, slash);
    if (folder == "platform" && path.find('/', slash + 1) != std::string::npos)
        return "platform/";
    return folder;
}

// Standard headers are the only ones whose names have neither a dot nor a slash.
bool isLibraryHeader(const std::string& name)
{
    return name.find_first_of("./") != std::string::npos;
}

// What is wrong with `file`, a path below src, including `name`; empty if nothing is.
std::string fault(const std::string& file, const std::string& name, bool angled)
{
    const std::string from = folderOf(file);
    const bool mayUseLibraries = Levels.at(from) == 4;
    if (angled)
        return isLibraryHeader(name) && !mayUseLibraries ? "a library" : "";
    const std::string to = folderOf(name);
    if (Levels.count(to) == 0)
        return "a folder without a level";
    if (to == from)
        return "";
    if (to == "platform/")
        return Programs.count(from) == 0 ? "an implementation" : "";
    if (Programs.count(to) != 0)
        return "a program";
    if (from == "platform/" && Levels.at(to) > 0)
        return "more than an interface";
    return Levels.at(to) > Levels.at(from) ? "an arrow that points up" : "";
}

struct Include {
    std::string name;
    bool angled;
};

// The name in an include line; empty if the line is none.
Include readInclude(const std::string& line)
{
    const std::size_t hash = line.find_first_not_of(" \t");
    if (hash == std::string::npos || line[hash] != '#')
        return {};
    const std::size_t word = line.find_first_not_of(" \t", hash + 1);
    if (word == std::string::npos || line.compare(word, 7, "include") != 0)
        return {};
    const std::size_t open = line.find_first_of("\"<", word + 7);
    if (open == std::string::npos)
        return {};
    const bool angled = line[open] == '<';
    const std::size_t close = line.find(angled ? '>' : '"', open + 1);
    if (close == std::string::npos)
        return {};
    return {line.substr(open + 1, close - open - 1), angled};
}

TEST(Architecture, tellsArrowsUpFromArrowsDown)
{
    const struct {
        const char* behaviour;
        const char* file;
        const char* name;
        bool angled;
        const char* fault;
    } cases[] = {
        {"a unit includes its own header",     "core/value.cpp",        "core/value.h",      false, ""                       },
        {"the core is one knot",               "core/sheet.cpp",        "formula/machine.h", false, ""                       },
        {"files stand on it",                  "files/csv.cpp",         "core/input.h",      false, ""                       },
        {"and it not on files",                "core/input.cpp",        "files/csv.h",       false, "an arrow that points up"},
        {"nothing below knows the shell",      "files/openflow.cpp",    "shell/x.h",         false,
         "an arrow that points up"                                                                                           },
        {"the interfaces are for all",         "numfmt/locale.cpp",     "platform/files.h",  false, ""                       },
        {"and know nobody",                    "platform/files.h",      "core/error.h",      false, "an arrow that points up"},
        {"nor do the tables of texts",         "resources/menus.h",     "core/error.h",      false,
         "an arrow that points up"                                                                                           },
        {"programs choose implementations",    "cli/main.cpp",          "platform/icu/x.h",  false, ""                       },
        {"nobody else does",                   "shell/application.cpp", "platform/icu/x.h",  false,
         "an implementation"                                                                                                 },
        {"not even their interface",           "platform/platform.cpp", "platform/icu/x.h",  false,
         "an implementation"                                                                                                 },
        {"an implementation knows interfaces", "platform/icu/x.cpp",    "platform/files.h",  false, ""                       },
        {"and its siblings",                   "platform/icu/x.cpp",    "platform/icu/x.h",  false, ""                       },
        {"and nothing of the system",          "platform/icu/x.cpp",    "core/value.h",      false,
         "more than an interface"                                                                                            },
        {"a program includes no other",        "cli/main.cpp",          "qt/window.h",       false, "a program"              },
        {"a new folder needs a level",         "core/value.cpp",        "tools/x.h",         false,
         "a folder without a level"                                                                                          },
        {"everybody has the standard library", "core/value.cpp",        "cstring",           true,  ""                       },
        {"but not the machine's headers",      "core/value.cpp",        "unistd.h",          true,  "a library"              },
        {"nor those of libraries",             "shell/application.cpp", "unicode/uchar.h",   true,  "a library"              },
        {"which implementations may use",      "platform/icu/x.cpp",    "unicode/uchar.h",   true,  ""                       },
        {"and programs",                       "cli/main.cpp",          "CLI/CLI.hpp",       true,  ""                       },
    };
    for (const auto& c : cases)
        EXPECT_EQ(fault(c.file, c.name, c.angled), c.fault) << c.behaviour;
}

TEST(Architecture, findsIncludesHoweverTheyAreSpaced)
{
    const struct {
        const char* line;
        const char* name;
        bool angled;
    } cases[] = {
        {"#include \"core/value.h\"",  "core/value.h", false},
        {"  #  include <vector> // x", "vector",       true },
        {"#if defined(x)",             "",             false},
        {"text \"core/value.h\"",      "",             false},
        {"",                           "",             false},
    };
    for (const auto& c : cases) {
        const Include found = readInclude(c.line);
        EXPECT_EQ(found.name, c.name) << c.line;
        EXPECT_EQ(found.angled, c.angled) << c.line;
    }
}

TEST(Architecture, holdsInEverySourceFile)
{
    const std::filesystem::path source = std::filesystem::path(VORN_SOURCE_DIR) / "src";
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(source)) {
        const std::string extension = entry.path().extension();
        if (extension != ".h" && extension != ".cpp" && extension != ".def")
            continue;
        ++files;
        const std::string file = std::filesystem::relative(entry.path(), source).generic_string();
        ASSERT_EQ(Levels.count(folderOf(file)), 1U) << file << " is in a folder without a level";
        std::ifstream stream(entry.path());
        for (std::string line; std::getline(stream, line);) {
            const Include include = readInclude(line);
            if (include.name.empty())
                continue;
            EXPECT_EQ(fault(file, include.name, include.angled), "")
                << file << " includes " << include.name;
            EXPECT_TRUE(include.angled || std::filesystem::exists(source / include.name))
                << file << " includes " << include.name << ", which is not there";
        }
    }
    EXPECT_GT(files, 30) << "the source folder was not found whole";
}

} // namespace
} // namespace vorn
