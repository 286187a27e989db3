// Where the help is.
#pragma once

#include <QString>

#include <string_view>

class QWidget;

namespace vorn::qt {

// The help file of a program that stands in this folder: beside it, where an installation puts it,
// or in the tree that it was built from. Empty if there is none.
QString helpFile(const QString& programFolder);

// Opens that file as openHelp does.
void openHelpOf(const QString& programFolder, QWidget* parent, std::u16string_view anchor);

} // namespace vorn::qt
