// The two dialogs in which a user makes a number format.
#pragma once

namespace vorn {

// Begins with the settings of `format`, which may be NoFormat. The index of the format that was
// made, NoFormat if none was.
int askNumberFormat(int format);
int askDateFormat(int format);

} // namespace vorn
