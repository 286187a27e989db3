// Files of a POSIX system. A path becomes UTF-8.
//
// Errors: none are told apart; the operations answer whether they were possible. For every user
//         alike, the system's own included, a file that nobody may read or write is refused, and so
//         is a change to the names in a folder that nobody may write.
#pragma once

#include "platform/files.h"

namespace vorn {

class PosixFiles : public Files {
public:
    std::unique_ptr<File> openToRead(std::u16string_view path) override;
    std::unique_ptr<File> openToWrite(std::u16string_view path) override;
    std::unique_ptr<File> create(std::u16string_view path) override;
    CreateNew createNew(std::u16string_view path) override;
    bool exists(std::u16string_view path) override;
    bool remove(std::u16string_view path) override;
    bool makeFolder(std::u16string_view path) override;

    // The folder that the desktop's settings of the user name (user-dirs.dirs), else "Documents" in
    // the home folder, else the home folder itself.
    std::u16string documentsFolder() override;
};

} // namespace vorn
