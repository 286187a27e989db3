// Where the help is.
#pragma once

#include <QString>

namespace vorn::qt {

// The help file of a program that stands in this folder: beside it, where an installation puts it,
// or in the tree that it was built from. Empty if there is none.
QString helpFile(const QString& programFolder);

} // namespace vorn::qt
