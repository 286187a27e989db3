#include "qt/icons.h"

#include "resources/icons.h"
#include "resources/menu.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QPixmap>

namespace vorn::qt {
namespace {

constexpr QRgb Nothing = 0;

QImage drawn(int icon, int side, bool enabled = true)
{
    QImage image(side + 8, side + 8, QImage::Format_ARGB32_Premultiplied);
    image.fill(Nothing);
    QPainter painter(&image);
    drawIcon(painter, QRectF(4, 4, side, side), icon, enabled);
    return image;
}

QRect painted(const QImage& image)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != Nothing)
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

// How many pixels are covered in part only.
int softPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int cover = qAlpha(image.pixel(x, y));
            count += cover != 0 && cover != 255 ? 1 : 0;
        }
    }
    return count;
}

TEST(Icons, everyButtonHasOne)
{
    for (const ToolbarSlot& slot : Toolbar) {
        if (slot.style != ButtonStyle::Separator) {
            EXPECT_NE(findIcon(slot.image), nullptr) << slot.image;
        }
    }
    for (const int icon : {IconCommit, IconCancel, IconQuickEntry, IconFunction, IconVorn})
        EXPECT_NE(findIcon(icon), nullptr) << icon;
}

TEST(Icons, thereIsNoneForOtherNumbers)
{
    for (const int icon : {-1, 17, 20, 109, 114, 127, 129}) {
        EXPECT_EQ(findIcon(icon), nullptr) << icon;
        EXPECT_TRUE(painted(drawn(icon, 16)).isEmpty()) << icon;
        EXPECT_TRUE(iconOf(icon).isNull()) << icon;
    }
}

TEST(Icons, noTwoAreAlike)
{
    for (const IconDrawing& one : IconDrawings) {
        for (const IconDrawing& other : IconDrawings) {
            if (one.icon < other.icon) {
                EXPECT_NE(drawn(one.icon, 16), drawn(other.icon, 16)) << one.icon << other.icon;
            }
        }
    }
}

TEST(Icons, fillTheirPlaceAndStayInside)
{
    for (const IconDrawing& drawing : IconDrawings) {
        for (const int side : {13, 15, 16, 20, 24, 32, 48, 128}) {
            const QRect area = painted(drawn(drawing.icon, side));
            EXPECT_TRUE(QRect(4, 4, side, side).contains(area)) << drawing.icon << ' ' << side;
            EXPECT_GT(area.width(), side / 2) << drawing.icon << ' ' << side;
            EXPECT_GT(area.height(), side / 2) << drawing.icon << ' ' << side;
        }
    }
}

TEST(Icons, whatRunsAlongAnAxisIsSharpAtEverySize)
{
    for (const int icon : {IconAlignLeft, IconAlignCenter, IconAlignRight, IconChart, IconCopy,
                           IconPaste, IconFullScreen}) {
        for (const int side : {13, 15, 16, 20, 24, 32, 40, 48})
            EXPECT_EQ(softPixels(drawn(icon, side)), 0) << icon << ' ' << side;
    }
}

TEST(Icons, areGreyAndPalerWhereTheyCannotBeUsed)
{
    for (const IconDrawing& drawing : IconDrawings) {
        const QImage image = drawn(drawing.icon, 32, false);
        EXPECT_NE(image, drawn(drawing.icon, 32, true)) << drawing.icon;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor colour = image.pixelColor(x, y);
                if (colour.alpha() != 255)
                    continue;
                ASSERT_EQ(colour.red(), colour.green()) << drawing.icon;
                ASSERT_EQ(colour.red(), colour.blue()) << drawing.icon;
                ASSERT_GE(colour.red(), 160) << drawing.icon;
            }
        }
    }
}

TEST(Icons, areTheSameThroughTheToolkit)
{
    const QImage direct = drawn(IconSave, 24).copy(4, 4, 24, 24);
    const QPixmap pixmap = iconOf(IconSave).pixmap(QSize(24, 24), 1.0);
    EXPECT_EQ(pixmap.toImage().convertToFormat(direct.format()), direct);
    const QPixmap pale = iconOf(IconSave).pixmap(QSize(24, 24), 1.0, QIcon::Disabled);
    EXPECT_EQ(pale.toImage().convertToFormat(direct.format()),
              drawn(IconSave, 24, false).copy(4, 4, 24, 24));
}

TEST(Icons, haveMorePixelsOnAFinerScreen)
{
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        const QPixmap pixmap = iconOf(IconSave).pixmap(QSize(16, 16), scale);
        const int side = static_cast<int>(16 * scale);
        EXPECT_EQ(pixmap.width(), side) << scale;
        EXPECT_EQ(pixmap.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied).copy(),
                  [&] {
                      QImage direct = drawn(IconSave, side).copy(4, 4, side, side);
                      direct.setDevicePixelRatio(scale);
                      return direct;
                  }())
            << scale;
    }
}

TEST(Icons, aPaintersScaleGivesMorePixelsToo)
{
    QImage scaled(32, 32, QImage::Format_ARGB32_Premultiplied);
    scaled.fill(Nothing);
    QPainter painter(&scaled);
    painter.scale(2, 2);
    drawIcon(painter, QRectF(0, 0, 16, 16), IconSave, true);
    painter.end();
    EXPECT_EQ(scaled, drawn(IconSave, 32).copy(4, 4, 32, 32));
}

TEST(Icons, thePainterIsLeftAsItWas)
{
    QImage image(32, 32, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setPen(Qt::red);
    painter.translate(3, 5);
    const QTransform before = painter.worldTransform();
    drawIcon(painter, QRectF(0, 0, 16, 16), IconSave, true);
    EXPECT_EQ(painter.worldTransform(), before);
    EXPECT_EQ(painter.pen().color(), QColor(Qt::red));
}

} // namespace
} // namespace vorn::qt
