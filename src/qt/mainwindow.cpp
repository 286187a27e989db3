#include "qt/mainwindow.h"

#include "core/workbook.h"
#include "qt/icons.h"
#include "qt/strings.h"
#include "resources/icons.h"
#include "shell/application.h"
#include "shell/commands.h"
#include "shell/documentflow.h"
#include "shell/entry.h"
#include "shell/settings.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QVBoxLayout>

namespace vorn::qt {

MainWindow::MainWindow()
    : messages_([this] { follow(); }),
      starts_({[this] { return readiness(); }, [this] { comeToFront(); },
               [this](const std::u16string& line) { openOnRequest(line); }}),
      bars_([this](int id) { messages_.send([id] { onCommand(static_cast<std::uint16_t>(id)); }); },
            this),
      sheet_(messages_, this)
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(&bars_);
    rows->addWidget(&sheet_, 1);
    setFocusPolicy(Qt::NoFocus);
    setMinimumSize(LeastWindowSide, LeastWindowSide);
    setWindowIcon(iconOf(IconVorn));
    loadSettings();
    bars_.restore(application->commandBand);
    resize(FirstWindowSize);
}

MainWindow::~MainWindow() = default;

// A message around both, or a request that waits for a box of the first would come between them,
// and its document be lost to the file.
void MainWindow::begin(std::u16string_view commandLine)
{
    messages_.send([this, commandLine] {
        messages_.send([] { application->showDocument(); });
        openFromCommandLine(commandLine);
    });
}

// --- Following the system

void MainWindow::follow()
{
    if (application->quitRequested) {
        hide();
        QCoreApplication::quit();
        starts_.goOn();
        return;
    }
    bars_.follow(application->commandState);
    keepBands();
    followFullScreen();
    sheet_.follow();
    requestRepaint();
    starts_.goOn();
}

// The mode takes the bands away, and the desktop around the window with them.
void MainWindow::followFullScreen()
{
    const bool full = application->fullScreen;
    if (full == bars_.isHidden())
        return;
    bars_.setVisible(!full);
    if (full) {
        maximizedBefore_ = isMaximized();
        showFullScreen();
    } else if (maximizedBefore_) {
        showMaximized();
    } else {
        showNormal();
    }
}

// '[*]' would be the toolkit's mark of a changed document.
void MainWindow::showTitle(std::u16string_view title)
{
    setWindowTitle(toQt(title).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
}

void MainWindow::requestRepaint()
{
    sheet_.requestRepaint();
}

void MainWindow::repaintNow()
{
    sheet_.repaintChanges();
    repaint();
}

// --- Messages of the desktop

bool MainWindow::event(QEvent* event)
{
    if (event->type() == QEvent::WindowBlocked)
        sheet_.interrupt();
    return QWidget::event(event);
}

void MainWindow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        activate();
    QWidget::changeEvent(event);
}

// Another program may have changed the clipboard, and with it what can be pasted.
void MainWindow::activate()
{
    if (workbook == nullptr || messages_.isUnderWay())
        return;
    messages_.send([] {
        application->resize(application->clientArea);
        refreshCommandState();
    });
}

void MainWindow::resizeEvent(QResizeEvent*)
{
    keepBands();
}

// The system writes the settings, whenever it closes. Before the bars are seen they have no sizes.
void MainWindow::keepBands()
{
    if (bars_.isVisible())
        application->commandBand = bars_.record();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (messages_.isUnderWay())
        return;
    messages_.send([] {
        // What is being written is a change, too.
        if (workbook != nullptr && commitEdit(StayAfterCommit) && application->PromptSaveChanges())
            application->close();
    });
}

// --- Requests of other starts

Readiness MainWindow::readiness() const
{
    if (application->quitRequested)
        return Readiness::Leaving;
    return messages_.isUnderWay() ? Readiness::Busy : Readiness::Ready;
}

void MainWindow::comeToFront()
{
    if (isMinimized())
        setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
}

// What it opens is taken as if this were the first start, but the document may have changed.
void MainWindow::openOnRequest(const std::u16string& line)
{
    messages_.send([&line] {
        if (commitEdit(StayAfterCommit) && application->PromptSaveChanges())
            openFromCommandLine(line);
    });
}

} // namespace vorn::qt
