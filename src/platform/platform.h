// The machine outside, as one set of interfaces. The set is installed once, before the Application
// is made; whoever installs it owns the parts and keeps them alive for as long as the system runs.
#pragma once

namespace vorn {

class Clipboard;
class Clock;
class CodePages;
class CompoundFiles;
class Files;
class LocaleSource;
class SettingsStore;
class TextMeasure;
class TextRules;
class UserInterface;

struct Platform {
    Clock* clock = nullptr;
    LocaleSource* localeSource = nullptr;
    TextRules* textRules = nullptr;
    CodePages* codePages = nullptr;
    Files* files = nullptr;
    CompoundFiles* compoundFiles = nullptr;
    UserInterface* userInterface = nullptr;
    Clipboard* clipboard = nullptr;
    TextMeasure* textMeasure = nullptr;
    SettingsStore* settingsStore = nullptr; // null: nothing is remembered
};

// The installed set.
extern Platform platform;

} // namespace vorn
