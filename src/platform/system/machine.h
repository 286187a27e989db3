// The machine that the program runs on: the real files, locale and code pages, and a user without a
// window. Options fix what would differ from one run to the next.
#pragma once

#include <memory>
#include <string>

namespace vorn::cli {

class ScriptUser;

struct MachineOptions {
    std::string locale;       // empty for the environment's
    std::string now;          // empty for the present time
    int codePage = 0;         // 0 for the environment's
    std::string settingsFile; // none: settings live in memory only
};

class Machine {
public:
    explicit Machine(ScriptUser& user);
    ~Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    // Installs the platform. Answers false, with the reason, for an option that has no meaning.
    bool install(const MachineOptions& options, std::string& reason);

private:
    struct Parts;
    ScriptUser& user_;
    std::unique_ptr<Parts> parts_;
};

} // namespace vorn::cli
