#include "support/testplatform.h"

#include "core/error.h"
#include "core/workbook.h"
#include "numfmt/locale.h"

#include <cassert>

namespace vorn {

namespace {

LocalTime timeOf(std::string_view text)
{
    LocalTime time;
    [[maybe_unused]] const bool valid = parseIsoTime(text, time);
    assert(valid);
    return time;
}

} // namespace

TestPlatform::TestPlatform(std::string_view locale, std::string_view time)
    : clock_(timeOf(time)), localeSource_(locale), codePages_(Utf8Page), compoundFiles_(files_),
      former_(platform)
{
    platform = {&clock_, &localeSource_,  &textRules_,    &codePages_,
                &files_, &compoundFiles_, &userInterface, &clipboard};
    platform.textMeasure = &textMeasure;
    platform.settingsStore = &settings;
    clearError();
    loadLocale();
}

TestPlatform::~TestPlatform()
{
    platform = former_;
    clearError();
    if (platform.localeSource != nullptr)
        loadLocale();
}

TestDocument::TestDocument(std::string_view locale, std::string_view time) : machine(locale, time)
{
    startDocumentCore();
}

TestDocument::~TestDocument()
{
    stopDocumentCore();
}

} // namespace vorn
