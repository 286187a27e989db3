// Runs every case of tests/scripts in a process of its own and compares what it prints.
//
// A case begins with "## its name". "%% OPTIONS" right behind it gives the options of the call;
// without it they are DefaultOptions. Lines that begin with "= ", or a lone "=", are the output of
// the whole case, in order; all others are the script. In both, $DATA stands for the folder of test
// data.
#include "support/program.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <vector>

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr const char* DefaultOptions = "--locale en_US --now 2001-03-04T05:06:07";

struct ScriptCase {
    std::string name;
    int line = 0;
    std::string options = DefaultOptions;
    std::string script;
    std::string expected;
};

void replaceAll(std::string& text, std::string_view what, std::string_view by)
{
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size())
        text.replace(at, what.size(), by);
}

void addLine(ScriptCase& scriptCase, const std::string& line)
{
    if (line.starts_with("%% "))
        scriptCase.options = line.substr(3);
    else if (line == "=")
        scriptCase.expected += '\n';
    else if (line.starts_with("= "))
        scriptCase.expected += line.substr(2) + '\n';
    else
        scriptCase.script += line + '\n';
}

std::vector<ScriptCase> readCases(const fs::path& file)
{
    std::vector<ScriptCase> cases;
    std::ifstream stream(file);
    int number = 0;
    for (std::string line; std::getline(stream, line);) {
        ++number;
        replaceAll(line, "$DATA", VORN_TEST_DATA);
        if (line.starts_with("## "))
            cases.push_back({line.substr(3), number, DefaultOptions, {}, {}});
        else if (!cases.empty())
            addLine(cases.back(), line);
        else
            EXPECT_TRUE(line.empty() || line.starts_with('#')) << file << ":" << number;
    }
    return cases;
}

class ScriptCases : public testing::TestWithParam<fs::path> {};

TEST_P(ScriptCases, printWhatStandsBesideThem)
{
    const TempFolder folder;
    const std::vector<ScriptCase> cases = readCases(GetParam());
    EXPECT_FALSE(cases.empty());
    for (const ScriptCase& scriptCase : cases) {
        folder.write("script.txt", scriptCase.script);
        const Outcome outcome = runProgram(folder, "script " + scriptCase.options + " script.txt");
        const std::string where = GetParam().filename().string() + ":" +
                                  std::to_string(scriptCase.line) + ": " + scriptCase.name;
        EXPECT_EQ(outcome.output, scriptCase.expected) << where;
        EXPECT_EQ(outcome.status, 0) << where;
        EXPECT_EQ(outcome.errors, "") << where;
    }
}

std::vector<fs::path> scriptFiles()
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(VORN_SOURCE_DIR "/tests/scripts")) {
        if (entry.path().extension() == ".txt")
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string suiteName(const testing::TestParamInfo<fs::path>& file)
{
    std::string name = file.param.stem().string();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Files, ScriptCases, testing::ValuesIn(scriptFiles()), suiteName);

} // namespace
} // namespace vorn
