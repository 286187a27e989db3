// The benchmarks run on an American machine whose clock stands still, on a document of their own.
// Figures are read, never asserted.

#include "core/workbook.h"
#include "platform/gsf/compoundfiles.h"
#include "platform/headless/clipboard.h"
#include "platform/headless/clock.h"
#include "platform/headless/textmeasure.h"
#include "platform/headless/userinterface.h"
#include "platform/icu/codepages.h"
#include "platform/icu/localesource.h"
#include "platform/icu/textrules.h"
#include "platform/platform.h"
#include "platform/posix/files.h"

#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    using namespace vorn;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;

    FixedClock clock{LocalTime{}};
    IcuLocaleSource localeSource("en_US");
    IcuTextRules textRules;
    IcuCodePages codePages(Utf8Page);
    PosixFiles files;
    GsfCompoundFiles compoundFiles(files);
    SilentUserInterface userInterface;
    MemoryClipboard clipboard;
    FixedTextMeasure textMeasure;
    platform = {&clock, &localeSource,  &textRules,     &codePages,
                &files, &compoundFiles, &userInterface, &clipboard};
    platform.textMeasure = &textMeasure;
    startDocumentCore();
    benchmark::RunSpecifiedBenchmarks();
    stopDocumentCore();
    benchmark::Shutdown();
    return 0;
}
