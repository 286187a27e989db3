#include "support/program.h"

#include <array>
#include <cstdio>
#include <sys/wait.h>

namespace vorn {

Outcome runProgram(const TempFolder& folder, const std::string& arguments)
{
    const std::string command = "cd '" + folder.file("") + "' && LC_ALL=C.UTF-8 '" VORN_CLI "' " +
                                arguments + " 2> errors.log";
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
    outcome.errors = folder.read("errors.log");
    return outcome;
}

} // namespace vorn
