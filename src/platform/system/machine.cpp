#include "platform/system/machine.h"

#include "platform/glib/settingsfile.h"
#include "platform/gsf/compoundfiles.h"
#include "platform/headless/clock.h"
#include "platform/headless/settingsstore.h"
#include "platform/icu/codepages.h"
#include "platform/icu/localesource.h"
#include "platform/icu/textrules.h"
#include "platform/platform.h"
#include "platform/posix/clock.h"
#include "platform/posix/files.h"

namespace vorn {

struct SystemMachine::Parts {
    explicit Parts(const MachineOptions& options)
        : localeSource(options.locale), codePages(options.codePage)
    {
    }

    std::unique_ptr<Clock> clock;
    IcuLocaleSource localeSource;
    IcuTextRules textRules;
    IcuCodePages codePages;
    PosixFiles files;
    GsfCompoundFiles compoundFiles{files};
    std::unique_ptr<SettingsStore> settings;
};

SystemMachine::SystemMachine(UserInterface& user, Clipboard& clipboard, TextMeasure& textMeasure)
    : user_(user), clipboard_(clipboard), textMeasure_(textMeasure)
{
}

SystemMachine::~SystemMachine()
{
    platform = {};
}

bool SystemMachine::install(const MachineOptions& options, std::string& reason)
{
    parts_ = std::make_unique<Parts>(options);
    if (options.codePage != 0 && !parts_->codePages.isKnown(options.codePage)) {
        reason = "--code-page: unknown code page " + std::to_string(options.codePage);
        return false;
    }
    if (options.now.empty()) {
        parts_->clock = std::make_unique<SystemClock>();
    } else {
        LocalTime time;
        if (!parseIsoTime(options.now, time)) {
            reason = "--now: no time of the form YYYY-MM-DDThh:mm:ss: '" + options.now + '\'';
            return false;
        }
        parts_->clock = std::make_unique<FixedClock>(time);
    }
    if (options.settingsFile.empty())
        parts_->settings = std::make_unique<MemorySettings>();
    else
        parts_->settings = std::make_unique<SettingsFile>(options.settingsFile);
    platform = {parts_->clock.get(),
                &parts_->localeSource,
                &parts_->textRules,
                &parts_->codePages,
                &parts_->files,
                &parts_->compoundFiles,
                &user_,
                &clipboard_};
    platform.textMeasure = &textMeasure_;
    platform.settingsStore = parts_->settings.get();
    return true;
}

} // namespace vorn
