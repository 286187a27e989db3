#include "qt/keyboard.h"

#include <gtest/gtest.h>

namespace vorn::qt {
namespace {

TEST(Keyboard, namesTheKeysOfTheSystem)
{
    const struct {
        const char* behaviour;
        int toolkit;
        Key key;
    } cases[] = {
        {"a letter is its capital",          Qt::Key_N,          keyOf(u'N')},
        {"a digit is itself",                Qt::Key_1,          keyOf(u'1')},
        {"Tab with Shift is Tab",            Qt::Key_Backtab,    KeyTab     },
        {"both Enter keys are one",          Qt::Key_Enter,      KeyEnter   },
        {"so is the large one",              Qt::Key_Return,     KeyEnter   },
        {"Delete",                           Qt::Key_Delete,     KeyDelete  },
        {"Page Up",                          Qt::Key_PageUp,     KeyPageUp  },
        {"F2",                               Qt::Key_F2,         KeyF2      },
        {"Shift alone is nobody's",          Qt::Key_Shift,      KeyNone    },
        {"nor is a sign",                    Qt::Key_Plus,       KeyNone    },
        {"nor a letter of another alphabet", Qt::Key_Ediaeresis, KeyNone    },
    };
    for (const auto& c : cases)
        EXPECT_EQ(systemKey(QKeyEvent(QEvent::KeyPress, c.toolkit, Qt::NoModifier)), c.key)
            << c.behaviour;
}

TEST(Keyboard, knowsWhatAKeyTypes)
{
    const struct {
        const char* behaviour;
        int key;
        Qt::KeyboardModifiers held;
        const char16_t* text;
        std::u16string characters;
    } cases[] = {
        {"a letter",                           Qt::Key_A,         Qt::NoModifier,                        u"a",          u"a"         },
        {"a capital",                          Qt::Key_A,         Qt::ShiftModifier,                     u"A",          u"A"         },
        {"nothing together with Ctrl",         Qt::Key_J,         Qt::ControlModifier,                   u"\n",         u""          },
        {"also if the toolkit makes a sign",   Qt::Key_Plus,      Qt::ControlModifier,                   u"+",          u""          },
        {"nothing together with Alt",          Qt::Key_F,         Qt::AltModifier,                       u"f",          u""          },
        {"the third sign of a key with both",  Qt::Key_E,         Qt::ControlModifier | Qt::AltModifier,
         u"\u20ac",                                                                                                     u"\u20ac"    },
        {"the third sign of a key of its own", Qt::Key_E,         Qt::GroupSwitchModifier,               u"\u20ac",
         u"\u20ac"                                                                                                                   },
        {"Enter is a carriage return",         Qt::Key_Enter,     Qt::KeypadModifier,                    u"\n",         u"\r"        },
        {"Backspace is itself",                Qt::Key_Backspace, Qt::NoModifier,                        u"",           u"\b"        },
        {"Escape types nothing",               Qt::Key_Escape,    Qt::NoModifier,                        u"\x1b",       u""          },
        {"nor does Delete",                    Qt::Key_Delete,    Qt::NoModifier,                        u"\x7f",       u""          },
        {"a pair of units stays together",     0,                 Qt::NoModifier,                        u"\U0001F600", u"\U0001F600"},
    };
    for (const auto& c : cases) {
        const QKeyEvent event(QEvent::KeyPress, c.key, c.held, QString::fromUtf16(c.text));
        EXPECT_EQ(charactersOf(event), c.characters) << c.behaviour;
    }
}

} // namespace
} // namespace vorn::qt
