#include "window/process.h"

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace vorn {
namespace {

constexpr std::chrono::milliseconds BetweenQuestions{4};
constexpr std::chrono::seconds Patience{20};

// Once a test has failed, what it waits for may well never come.
constexpr std::chrono::seconds PatienceAfterFailure{2};

// What a shell answers for a program that it does not find.
constexpr int NotFound = 127;

[[noreturn]] void becomeProgram(const std::vector<std::string>& command, const Variables& variables,
                                const std::string& folder, const std::string& logName)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::chdir(folder.c_str()) != 0)
        ::_exit(NotFound);
    for (const auto& [name, value] : variables) {
        if (value.empty())
            ::unsetenv(name.c_str());
        else
            ::setenv(name.c_str(), value.c_str(), 1);
    }
    const int log = ::open(logName.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    ::dup2(log, STDOUT_FILENO);
    ::dup2(log, STDERR_FILENO);
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    ::execvp(arguments[0], arguments.data());
    ::_exit(NotFound);
}

} // namespace

bool waitUntil(const std::function<bool()>& condition)
{
    const auto end = std::chrono::steady_clock::now() +
                     (testing::Test::HasFailure() ? PatienceAfterFailure : Patience);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(BetweenQuestions);
    }
    return true;
}

Process::Process(const std::vector<std::string>& command, const Variables& variables,
                 const std::string& folder, const std::string& log)
{
    id_ = ::fork();
    if (id_ == 0)
        becomeProgram(command, variables, folder, log);
}

Process::~Process()
{
    if (id_ > 0 && isRunning()) {
        ::kill(id_, SIGKILL);
        ::waitpid(id_, nullptr, 0);
    }
}

bool Process::isRunning()
{
    if (status_ || id_ <= 0)
        return false;
    int status = 0;
    if (::waitpid(id_, &status, WNOHANG) != id_)
        return true;
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return false;
}

bool Process::isIdle() const
{
    std::error_code gone;
    const std::string threads = "/proc/" + std::to_string(id_) + "/task";
    for (const auto& thread : std::filesystem::directory_iterator(threads, gone)) {
        std::string status;
        std::getline(std::ifstream(thread.path() / "stat"), status);
        // The state stands behind the name, which is in parentheses and may hold some.
        const std::size_t name = status.rfind(") ");
        if (name != std::string::npos && status[name + 2] != 'S')
            return false;
    }
    return true;
}

std::optional<int> Process::waitForEnd()
{
    waitUntil([this] { return !isRunning(); });
    return status_;
}

} // namespace vorn
