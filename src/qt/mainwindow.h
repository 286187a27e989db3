// The main window: menu and toolbar, and below them the client area that the system paints and
// drives. It ends each message (qt/messages.h): menu, toolbar, edit control and full screen follow
// the system.
//
// Shape:  one, made after the Application and gone before it. It reads the settings when it is
//         made; the Close command writes them.
#pragma once

#include "qt/commandbars.h"
#include "qt/instance.h"
#include "qt/messages.h"
#include "qt/sheetwidget.h"

#include <QWidget>

#include <string>
#include <string_view>

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

    // Serves the other starts of the program, which ask there.
    bool listen(const QString& address) { return starts_.listen(address); }

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
    Readiness readiness() const;
    void comeToFront();
    void openOnRequest(const std::u16string& line);

    Messages messages_;
    InstanceServer starts_;
    CommandBars bars_;
    SheetWidget sheet_;
    bool maximizedBefore_ = false; // the full screen
};

} // namespace vorn::qt
