// A program with its window and a user at it, without a display, for tests of the window.
#pragma once

#include "core/workbook.h"
#include "qt/keyboard.h"
#include "qt/mainwindow.h"
#include "qt/strings.h"
#include "shell/application.h"
#include "support/testplatform.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include <string>
#include <string_view>

namespace vorn::qt {

class WindowSession {
public:
    WindowSession()
    {
        window.show();
        window.begin({});
        settle();
    }

    // Whatever was asked for meanwhile, a repaint among it, happens.
    static void settle() { QCoreApplication::processEvents(); }

    // Where the keys go.
    QWidget* focus() const
    {
        QWidget* widget = window.focusWidget();
        return widget != nullptr ? widget : const_cast<SheetWidget*>(&sheet());
    }
    SheetWidget& sheet() { return window.sheetWidget(); }
    const SheetWidget& sheet() const { return const_cast<MainWindow&>(window).sheetWidget(); }
    EditControl& control() { return const_cast<EditControl&>(sheet().editControl()); }

    void press(int key, Qt::KeyboardModifiers held = Qt::NoModifier, const QString& text = {})
    {
        QKeyEvent down(QEvent::KeyPress, key, held, text);
        QCoreApplication::sendEvent(focus(), &down);
        settle();
    }

    // Letters and what else makes a character.
    void type(std::u16string_view text)
    {
        for (const char16_t unit : text) {
            const QString made(1, QChar(unit));
            press(made.toUpper().front().unicode(), Qt::NoModifier, made);
        }
    }

    void compose(const QString& preedit, const QString& commit)
    {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QCoreApplication::sendEvent(focus(), &event);
        settle();
    }

    void mouse(QEvent::Type type, QWidget& widget, QPointF at,
               Qt::MouseButton button = Qt::LeftButton)
    {
        const bool held = type != QEvent::MouseButtonRelease;
        const bool moves = type == QEvent::MouseMove;
        QMouseEvent event(type, at, widget.mapToGlobal(at), moves ? Qt::NoButton : button,
                          held ? button : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
    }
    void hover(QWidget& widget, QPointF at)
    {
        QMouseEvent event(QEvent::MouseMove, at, widget.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
    }
    void click(QWidget& widget, QPointF at, Qt::MouseButton button = Qt::LeftButton)
    {
        mouse(QEvent::MouseButtonPress, widget, at, button);
        mouse(QEvent::MouseButtonRelease, widget, at, button);
        settle();
    }

    // The text of the model with a bar at the caret, or with what is selected in brackets.
    std::string line() const
    {
        const EditLine& model = app.formulaBar.line;
        std::u16string text = model.text();
        const auto start = static_cast<std::size_t>(model.selectionStart());
        const auto end = static_cast<std::size_t>(model.selectionEnd());
        if (start == end)
            text.insert(end, u"|");
        else
            text.insert(end, u"]").insert(start, u"[");
        return toQt(text).toStdString();
    }

    // The same of the control.
    std::string shownLine()
    {
        QString text = control().text();
        if (control().hasSelectedText())
            text.insert(control().selectionEnd(), ']').insert(control().selectionStart(), '[');
        else
            text.insert(control().cursorPosition(), '|');
        return text.toStdString();
    }

    std::u16string input(int column, int row) const
    {
        return workbook->currentSheet->cellInput(column, row);
    }

    TestPlatform machine;
    Application app;
    MainWindow window;
};

} // namespace vorn::qt
