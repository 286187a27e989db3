// The main window: menu and toolbar, and below them the client area that the system paints and
// drives. It ends each message (qt/messages.h): menu, toolbar, edit control and full screen follow
// the system.
//
// Shape:  one, made after the Application and gone before it. It reads the settings when it is
//         made; the Close command writes them.
#pragma once

#include "qt/commandbars.h"
#include "qt/messages.h"
#include "qt/sheetwidget.h"

#include <QWidget>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vorn::qt {

// Of the window as a whole, without the desktop's frame.
constexpr QSize FirstWindowSize = {240, 320};
constexpr int LeastWindowSide = 120;

class MainWindow : public QWidget {
public:
    MainWindow();
    ~MainWindow() override;

    // The first messages: what the system has to say since it was made, then the file that the
    // program was started with, if any.
    void begin(std::u16string_view commandLine);

    // Of another start of the program, which waits while a message is under way.
    void openOnRequest(std::u16string path);
    void comeToFront();

    void showTitle(std::u16string_view title);
    void requestRepaint();

    // Brings the screen up to date at once.
    void repaintNow();

    CommandBars& commandBars() { return bars_; }
    SheetWidget& sheetWidget() { return sheet_; }
    Messages& messages() { return messages_; }

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void follow();
    void followFullScreen();
    void keepBands();
    void activate();
    void takeRequests();

    Messages messages_;
    CommandBars bars_;
    SheetWidget sheet_;
    bool maximizedBefore_ = false; // the full screen
    std::vector<std::u16string> requests_;
};

} // namespace vorn::qt
