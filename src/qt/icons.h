// The system's icons (resources/icons.h) as the toolkit wants them, sharp at any size and scale.
#pragma once

#include <QIcon>
#include <QRectF>

class QPainter;

namespace vorn::qt {

QIcon iconOf(int icon);

// As large as fits in the middle of the area.
void drawIcon(QPainter& painter, const QRectF& area, int icon, bool enabled);

} // namespace vorn::qt
