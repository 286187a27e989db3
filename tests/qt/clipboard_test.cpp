#include "qt/clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <gtest/gtest.h>

namespace vorn::qt {
namespace {

TEST(QtClipboard, numbersItsFormats)
{
    QtClipboard clipboard;
    const unsigned cells = clipboard.registerFormat(u"CF_VORN");
    EXPECT_NE(cells, 0U);
    EXPECT_NE(clipboard.registerFormat(u"CF_OTHER"), cells);
    EXPECT_EQ(clipboard.registerFormat(u"CF_VORN"), cells);
    EXPECT_NE(clipboard.typeOf(cells), clipboard.typeOf(clipboard.registerFormat(u"CF_OTHER")));
    for (const unsigned never : {0U, 3U, ~0U}) {
        EXPECT_TRUE(clipboard.typeOf(never).isEmpty()) << never;
        EXPECT_FALSE(clipboard.holds(never)) << never;
    }
}

TEST(QtClipboard, holdsTheTextThatAnybodyPut)
{
    QtClipboard clipboard;
    QClipboard& desktop = *QGuiApplication::clipboard();
    desktop.clear();
    EXPECT_FALSE(clipboard.holdsText());
    EXPECT_EQ(clipboard.text(), u"");
    clipboard.putText(u"1\t\u20ac\U0001F600\n");
    EXPECT_TRUE(clipboard.holdsText());
    EXPECT_EQ(desktop.text(), QString::fromUtf8("1\t€😀\n"));
    desktop.setText("other");
    EXPECT_EQ(clipboard.text(), u"other");
}

TEST(QtClipboard, findsAFormatOfTheSystem)
{
    QtClipboard clipboard;
    const unsigned cells = clipboard.registerFormat(u"CF_VORN");
    clipboard.putText(u"text");
    EXPECT_FALSE(clipboard.holds(cells));
    auto* content = new QMimeData; // which the desktop takes
    content->setData(clipboard.typeOf(cells), "cells");
    QGuiApplication::clipboard()->setMimeData(content);
    EXPECT_TRUE(clipboard.holds(cells));
    EXPECT_FALSE(clipboard.holdsText());
}

} // namespace
} // namespace vorn::qt
