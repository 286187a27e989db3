// The look of everything that the toolkit draws itself: one style, whatever the desktop, in the
// colours of what the system paints between.
#pragma once

namespace vorn::qt {

// The program stands.
void useWindowLook();

} // namespace vorn::qt
