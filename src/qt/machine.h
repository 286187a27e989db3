// The machine that the window runs on: the real files, locale, fonts and clipboard. Options fix
// what would differ from one run to the next.
#pragma once

#include <memory>
#include <string>

namespace vorn {
class UserInterface;
}

namespace vorn::qt {

struct MachineOptions {
    std::string locale;       // empty for the environment's
    std::string now;          // empty for the present time
    std::string settingsFile; // none: settings live in memory only
};

// In the user's configuration folder.
std::string defaultSettingsFile();

class Machine {
public:
    explicit Machine(UserInterface& user);
    ~Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    // Installs the platform; the toolkit stands. Answers false, with the reason, for an option that
    // has no meaning.
    bool install(const MachineOptions& options, std::string& reason);

private:
    struct Parts;
    UserInterface& user_;
    std::unique_ptr<Parts> parts_;
};

} // namespace vorn::qt
