// The verbs of scripts. A verb is one function and its row in the table at the end.
#include "cli/keyverbs.h"
#include "cli/penverbs.h"
#include "cli/place.h"
#include "cli/printing.h"
#include "cli/script.h"
#include "cli/shellverbs.h"
#include "cli/utf8.h"
#include "core/workbook.h"
#include "platform/textrules.h"
#include "shell/commands.h"
#include "shell/entry.h"
#include "shell/pointmode.h"
#include "shell/tabstrip.h"

#include <algorithm>

namespace vorn::cli {

namespace {

using Argument = std::u16string_view;

bool failAt(Script& script, std::string_view what, Argument argument)
{
    return script.fail(std::string(what) + " '" + toUtf8(argument) + '\'');
}

bool placeOf(Script& script, Argument argument, Place& out)
{
    return readPlace(argument, out) || failAt(script, "no reference:", argument);
}

// --- The document

bool newVerb(Script& script, Argument)
{
    script.app.newWorkbook();
    return true;
}

bool openVerb(Script& script, Argument argument)
{
    if (argument.empty())
        return script.fail("open needs a path");
    if (script.app.PromptSaveChanges())
        script.app.OpenDocument(argument);
    return true;
}

bool saveVerb(Script&, Argument)
{
    onCommand(CommandSave);
    return true;
}

bool saveasVerb(Script& script, Argument argument)
{
    if (argument.empty())
        return script.fail("saveas needs a path");
    std::deque<std::u16string>& answers = script.user.files;
    const std::size_t others = answers.size();
    answers.emplace_front(argument);
    onCommand(CommandSaveAs);
    // While the editor is open there is no such command, and nobody took the answer.
    if (answers.size() > others)
        answers.pop_front();
    return true;
}

bool sheetVerb(Script& script, Argument argument)
{
    Sheet* sheet = readSheet(argument);
    if (sheet == nullptr)
        return failAt(script, "no sheet:", argument);
    // A formula may go on with a cell of that sheet.
    selectTab(sheet->index);
    return true;
}

bool selectVerb(Script& script, Argument argument)
{
    Place place;
    if (!placeOf(script, argument, place))
        return false;
    // As a tap on the grid: a formula may point there, any other text is committed first.
    if (yieldToGrid()) {
        selectTab(place.sheet->index);
        script.app.activeSelection().select(place.first, place.second);
    }
    return true;
}

// A text that cannot be stored is the user's matter, not the script's: a box tells it.
bool enterVerb(Script& script, Argument argument)
{
    script.app.enterCell(argument);
    return true;
}

bool putVerb(Script& script, Argument argument)
{
    const Argument reference = takeReference(argument);
    // An entry below the keyboard has no part in what is being written, which ends before it.
    if (script.app.isEditing() && !commitEdit(StayAfterCommit))
        cancelEdit();
    return selectVerb(script, reference) && enterVerb(script, argument);
}

// --- Answers

bool answerFile(Script& script, Argument answer)
{
    if (answer.empty())
        return script.fail("answer file needs a path, or cancel");
    script.user.files.emplace_back(answer == u"cancel" ? Argument() : answer);
    return true;
}

bool answerVerb(Script& script, Argument argument)
{
    static constexpr struct {
        Argument name;
        BoxAnswer answer;
    } answers[] = {
        {u"box yes",    BoxAnswer::Yes   },
        {u"box no",     BoxAnswer::No    },
        {u"box cancel", BoxAnswer::Cancel},
        {u"box ok",     BoxAnswer::Ok    },
    };
    for (const auto& candidate : answers) {
        if (candidate.name == argument) {
            script.user.answers.push_back(candidate.answer);
            return true;
        }
    }
    if (!argument.empty() && isAsciiDigit(argument.front())) {
        DialogAnswer answer;
        if (!readDialogAnswer(argument, answer, script.reason))
            return false;
        script.user.dialogAnswers.add(std::move(answer));
        return true;
    }
    if (argument.starts_with(u"box"))
        return failAt(script, "no answer of a box:", argument);
    constexpr Argument File = u"file";
    if (argument == File || argument.starts_with(u"file "))
        return answerFile(script, argument.substr(std::min(File.size() + 1, argument.size())));
    if (argument.starts_with(u"tap "))
        return script.fail("answers to taps do not exist yet");
    return failAt(script, "no answer:", argument);
}

// --- Printing

template <CellForm form>
bool cellsVerb(Script& script, Argument argument)
{
    Place place;
    if (!placeOf(script, argument, place))
        return false;
    printCells(script.out, *place.sheet, place.range(), form);
    return true;
}

bool styleVerb(Script& script, Argument argument)
{
    Place place;
    if (!placeOf(script, argument, place))
        return false;
    printStyles(script.out, *place.sheet, place.range());
    return true;
}

bool formatsVerb(Script& script, Argument)
{
    printFormats(script.out);
    return true;
}

bool rowVerb(Script& script, Argument argument)
{
    const int row = readNumber(argument, RowCount);
    if (row == 0)
        return failAt(script, "no row:", argument);
    printRow(script.out, *workbook->currentSheet, row - 1);
    return true;
}

bool columnVerb(Script& script, Argument argument)
{
    Place place;
    if (!placeOf(script, argument, place))
        return false;
    printColumns(script.out, *place.sheet, place.range());
    return true;
}

bool sheetsVerb(Script& script, Argument)
{
    printSheets(script.out);
    return true;
}

bool selectionVerb(Script& script, Argument)
{
    printSelection(script.out);
    return true;
}

bool documentVerb(Script& script, Argument)
{
    printDocument(script.out, script.user.title);
    return true;
}

bool recentVerb(Script& script, Argument)
{
    printRecentFiles(script.out, script.app.recentFiles);
    return true;
}

// --- The table

using VerbFunction = bool (*)(Script& script, Argument argument);

// A verb that belongs to the language of scripts and cannot do anything so far.
constexpr VerbFunction NotYet = nullptr;

constexpr struct Verb {
    Argument name;
    VerbFunction run;
} Verbs[] = {
    {u"new",          newVerb                   },
    {u"open",         openVerb                  },
    {u"save",         saveVerb                  },
    {u"saveas",       saveasVerb                },
    {u"sheet",        sheetVerb                 },
    {u"select",       selectVerb                },
    {u"enter",        enterVerb                 },
    {u"put",          putVerb                   },
    {u"command",      commandVerb               },
    {u"answer",       answerVerb                },
    {u"deftask",      NotYet                    },
    {u"runtask",      NotYet                    },
    {u"key",          keyVerb                   },
    {u"type",         typeVerb                  },
    {u"tap",          tapVerb                   },
    {u"doubletap",    doubletapVerb             },
    {u"drag",         dragVerb                  },
    {u"tapcell",      tapcellVerb               },
    {u"filterbutton", NotYet                    },
    {u"clipboard",    NotYet                    },
    {u"size",         sizeVerb                  },
    {u"settings",     settingsVerb              },
    {u"text",         cellsVerb<CellForm::Text> },
    {u"input",        cellsVerb<CellForm::Input>},
    {u"value",        cellsVerb<CellForm::Value>},
    {u"style",        styleVerb                 },
    {u"formats",      formatsVerb               },
    {u"row",          rowVerb                   },
    {u"column",       columnVerb                },
    {u"sheets",       sheetsVerb                },
    {u"names",        namesVerb                 },
    {u"tasks",        NotYet                    },
    {u"selection",    selectionVerb             },
    {u"view",         viewVerb                  },
    {u"editor",       editorVerb                },
    {u"menu",         menuVerb                  },
    {u"history",      historyVerb               },
    {u"document",     documentVerb              },
    {u"recent",       recentVerb                },
    {u"lists",        listsVerb                 },
    {u"used",         usedVerb                  },
    {u"chart",        NotYet                    },
};

} // namespace

bool runStatement(Script& script, std::u16string_view line)
{
    const std::size_t blank = line.find(u' ');
    const Argument name = line.substr(0, blank);
    const Argument argument = blank == Argument::npos ? Argument() : line.substr(blank + 1);
    for (const Verb& verb : Verbs) {
        if (verb.name != name)
            continue;
        if (verb.run == NotYet)
            return failAt(script, "this verb does not exist yet:", name);
        return verb.run(script, argument);
    }
    return failAt(script, "unknown verb:", name);
}

} // namespace vorn::cli
