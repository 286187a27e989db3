// The page of functions says what the program says.
#include "support/tempfolder.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace vorn {
namespace {

std::string contentOf(const std::string& path)
{
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

TEST(FunctionDocs, areWhatTheScriptWrites)
{
    const TempFolder folder;
    const std::string source = VORN_SOURCE_DIR;
    const std::string written = folder.file("functions.md");
    const std::string command =
        "'" + source + "/scripts/make-function-docs.sh' '" VORN_CLI "' > '" + written + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const std::string expected = contentOf(written);
    EXPECT_GT(expected.size(), 10000U);
    EXPECT_EQ(contentOf(source + "/docs/functions.md"), expected)
        << "run scripts/make-function-docs.sh";
}

} // namespace
} // namespace vorn
