#include "shell/pen.h"

namespace vorn {

Place placeAt(int, int, Pointer)
{
    return {};
}

bool handleRect(Rect&)
{
    return false;
}

void penDown(int, int, KeyModifiers, Pointer) {}
void penMove(int, int) {}
void penUp(int, int) {}
void penTimer() {}
void doubleTap(int, int) {}

} // namespace vorn
