// A program that runs beside the test, and ends with it at the latest.
//
// Shape:  what it says goes to a file, both streams into the same one.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace vorn {

// Asks again and again until the answer is yes; false if it never is within a time that is long
// even for a slow and busy machine, and a short one in a test that has failed already.
bool waitUntil(const std::function<bool()>& condition);

using Variables = std::map<std::string, std::string>;

class Process {
public:
    // Starts the program, which is looked for as a shell does, in the folder, where `log` is made.
    // `variables` are added to the environment; an empty one is taken away.
    Process(const std::vector<std::string>& command, const Variables& variables,
            const std::string& folder, const std::string& log);

    // Kills what is still running.
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    bool isRunning();

    // Does it wait for something to happen, with all of its threads?
    bool isIdle() const;

    // The exit status once it has ended; -1 if a signal has ended it.
    std::optional<int> waitForEnd();

    pid_t id() const { return id_; }

private:
    pid_t id_ = -1;
    std::optional<int> status_;
};

} // namespace vorn
