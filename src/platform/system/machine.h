// The machine that a program runs on: the real files, clock, locale and code pages. What differs
// from program to program, its user, the clipboard and the fonts, it is given. Options fix what
// would differ from one run to the next.
#pragma once

#include <memory>
#include <string>

namespace vorn {

class Clipboard;
class TextMeasure;
class UserInterface;

struct MachineOptions {
    std::string locale;       // empty for the environment's
    std::string now;          // empty for the present time
    int codePage = 0;         // 0 for the environment's
    std::string settingsFile; // none: settings live in memory only
};

class SystemMachine {
public:
    // Borrows what it is given.
    SystemMachine(UserInterface& user, Clipboard& clipboard, TextMeasure& textMeasure);

    // Takes the platform back.
    ~SystemMachine();
    SystemMachine(const SystemMachine&) = delete;
    SystemMachine& operator=(const SystemMachine&) = delete;

    // Installs the platform. Answers false, with the reason, for an option that has no meaning.
    bool install(const MachineOptions& options, std::string& reason);

private:
    struct Parts;
    UserInterface& user_;
    Clipboard& clipboard_;
    TextMeasure& textMeasure_;
    std::unique_ptr<Parts> parts_;
};

} // namespace vorn
