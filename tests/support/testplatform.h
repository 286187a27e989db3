// The machine as tests want it: the same on every run. A test that touches texts, numbers or dates
// holds a TestPlatform; one that touches cells holds a TestDocument.
#pragma once

#include "platform/gsf/compoundfiles.h"
#include "platform/headless/clipboard.h"
#include "platform/headless/clock.h"
#include "platform/headless/settingsstore.h"
#include "platform/headless/textmeasure.h"
#include "platform/headless/userinterface.h"
#include "platform/icu/codepages.h"
#include "platform/icu/localesource.h"
#include "platform/icu/textrules.h"
#include "platform/platform.h"
#include "platform/posix/files.h"

#include <string_view>

namespace vorn {

constexpr std::string_view TestLocale = "en_US";
constexpr std::string_view TestTime = "2001-03-04T05:06:07"; // a Sunday

// Installs a whole platform, with its locale loaded, and puts the former one back at its end.
class TestPlatform {
public:
    explicit TestPlatform(std::string_view locale = TestLocale, std::string_view time = TestTime);
    ~TestPlatform();
    TestPlatform(const TestPlatform&) = delete;
    TestPlatform& operator=(const TestPlatform&) = delete;

    SilentUserInterface userInterface;
    MemoryClipboard clipboard;
    FixedTextMeasure textMeasure;
    MemorySettings settings;

private:
    FixedClock clock_;
    IcuLocaleSource localeSource_;
    IcuTextRules textRules_;
    IcuCodePages codePages_;
    PosixFiles files_;
    GsfCompoundFiles compoundFiles_;
    Platform former_;
};

// A platform and, on it, a new document of three sheets.
class TestDocument {
public:
    explicit TestDocument(std::string_view locale = TestLocale, std::string_view time = TestTime);
    ~TestDocument();
    TestDocument(const TestDocument&) = delete;
    TestDocument& operator=(const TestDocument&) = delete;

    TestPlatform machine;
};

} // namespace vorn
