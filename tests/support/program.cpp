#include "support/program.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sys/wait.h>

namespace vorn {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = (fs::temp_directory_path() / "vorn-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        std::abort();
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

fs::path TemporaryFolder::write(std::string_view name, std::string_view content) const
{
    const fs::path file = path_ / name;
    std::ofstream(file, std::ios::binary) << content;
    return file;
}

std::string readWhole(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

Outcome runProgram(const TemporaryFolder& folder, const std::string& arguments)
{
    const std::string command = "cd '" + folder.path().string() +
                                "' && LC_ALL=C.UTF-8 '" VORN_CLI "' " + arguments +
                                " 2> errors.log";
    Outcome outcome;
    std::FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return outcome;
    std::array<char, 4096> buffer;
    std::size_t count = 0;
    while ((count = std::fread(buffer.data(), 1, buffer.size(), pipe)) != 0)
        outcome.output.append(buffer.data(), count);
    const int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    outcome.errors = readWhole(folder.path() / "errors.log");
    return outcome;
}

} // namespace vorn
