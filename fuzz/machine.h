// The machine of the fuzz targets: the same on every run, with no files but those in memory.
#pragma once

#include "core/workbook.h"
#include "platform/headless/clock.h"
#include "platform/headless/userinterface.h"
#include "platform/icu/codepages.h"
#include "platform/icu/localesource.h"
#include "platform/icu/textrules.h"
#include "platform/platform.h"

namespace vorn {

// Makes a document on a machine of its own. One object lives as long as the process does.
class FuzzMachine {
public:
    FuzzMachine()
    {
        platform.clock = &clock_;
        platform.localeSource = &localeSource_;
        platform.textRules = &textRules_;
        platform.codePages = &codePages_;
        platform.userInterface = &userInterface_;
        startDocumentCore();
    }
    ~FuzzMachine() { stopDocumentCore(); }
    FuzzMachine(const FuzzMachine&) = delete;
    FuzzMachine& operator=(const FuzzMachine&) = delete;

private:
    FixedClock clock_{LocalTime{}};
    IcuLocaleSource localeSource_{"en_US"};
    IcuTextRules textRules_;
    IcuCodePages codePages_{Utf8Page};
    SilentUserInterface userInterface_;
};

} // namespace vorn
