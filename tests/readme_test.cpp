// What README.md points to is there, and every picture in it can be made anew.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace vorn {
namespace {

const std::string Tree = VORN_SOURCE_DIR "/";

std::string contentOf(const std::string& path)
{
    std::ostringstream content;
    content << std::ifstream(Tree + path, std::ios::binary).rdbuf();
    return content.str();
}

// What stands behind each "[...]" of the page in parentheses, up to a place within that page.
std::vector<std::string> linksOf(const std::string& page)
{
    const std::string begin = "](";
    std::vector<std::string> links;
    for (std::size_t at = page.find(begin); at != std::string::npos; at = page.find(begin, at)) {
        at += begin.size();
        links.push_back(page.substr(at, page.find_first_of("#)", at) - at));
    }
    return links;
}

TEST(Readme, pointsToWhatIsThere)
{
    const std::vector<std::string> links = linksOf(contentOf("README.md"));
    EXPECT_GT(links.size(), 5U);
    for (const std::string& link : links)
        EXPECT_TRUE(std::filesystem::exists(Tree + link)) << link;
}

TEST(Readme, showsPicturesThatAScriptMakes)
{
    const std::string script = contentOf("scripts/make-pictures.sh");
    int pictures = 0;
    for (const std::string& link : linksOf(contentOf("README.md"))) {
        const std::filesystem::path path = link;
        if (path.extension() != ".png")
            continue;
        ++pictures;
        EXPECT_EQ(path.parent_path(), "docs/pictures");
        EXPECT_NE(script.find("\npicture " + path.stem().string() + " "), std::string::npos)
            << link;
    }
    EXPECT_GE(pictures, 2);
}

} // namespace
} // namespace vorn
