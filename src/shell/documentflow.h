// Around a document: how it is saved, what asks before it goes, and what comes with the start of
// the program.
//
// Errors: the sticky code. Whatever a save meets, the document stays as it is.
#pragma once

#include <string_view>

namespace vorn {

// What came of a save.
enum class SaveOutcome {
    NotSaved,       // it was cancelled, or an error stands
    NothingWritten, // the name was one of a text file, which a save accepts and leaves empty
    Written
};

// Writes to the document's path; without one, or if a name is asked for, to one that the user is
// asked for. Only a save to the known path clears the modified flag.
SaveOutcome saveDocument(bool askName);

// Asks about the changes of a document that is about to be replaced. True if it may go.
bool promptSaveChanges();

// Opens the file at the path if there is one, and otherwise says that there is none.
void openExistingFile(std::u16string_view path);

// The path of a command line in quotes; any other line, and one that is too long, as it stands.
std::u16string_view withoutQuotes(std::u16string_view commandLine);

// Opens the file that the program was started with, if any: a path, which may stand in quotes.
void openFromCommandLine(std::u16string_view commandLine);

} // namespace vorn
