#include "qt/machine.h"

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
#include "qt/clipboard.h"
#include "qt/fonts.h"

#include <QFile>
#include <QStandardPaths>

namespace vorn::qt {

struct Machine::Parts {
    explicit Parts(const MachineOptions& options) : localeSource(options.locale) {}

    std::unique_ptr<Clock> clock;
    IcuLocaleSource localeSource;
    IcuTextRules textRules;
    IcuCodePages codePages;
    PosixFiles files;
    GsfCompoundFiles compoundFiles{files};
    QtClipboard clipboard;
    QtTextMeasure textMeasure;
    std::unique_ptr<SettingsStore> settings;
};

std::string defaultSettingsFile()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return folder.isEmpty() ? std::string()
                            : QFile::encodeName(folder + "/vorn/settings").toStdString();
}

Machine::Machine(UserInterface& user) : user_(user) {}

Machine::~Machine()
{
    platform = {};
}

bool Machine::install(const MachineOptions& options, std::string& reason)
{
    parts_ = std::make_unique<Parts>(options);
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
                &parts_->clipboard};
    platform.textMeasure = &parts_->textMeasure;
    platform.settingsStore = parts_->settings.get();
    return true;
}

} // namespace vorn::qt
