#include "qt/dialogs/dialogwindow.h"

#include "platform/platform.h"
#include "qt/dialogs/arrangement.h"
#include "qt/dialogs/dialogpanel.h"
#include "qt/dialogs/dialogs.h"
#include "qt/dialogs/widgets.h"
#include "qt/strings.h"
#include "shell/pagesheet.h"

#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace vorn::qt {

namespace {

constexpr int LeastWidth = 200;
constexpr int TabFrame = 4; // around a page

} // namespace

class DialogWindow::SheetWatch : public DialogObserver {
public:
    SheetWatch(DialogWindow& window, PageSheet& sheet) : window_(window), sheet_(sheet)
    {
        sheet_.observer = this;
    }
    ~SheetWatch() override { sheet_.observer = nullptr; }

    void controlChanged(int) override {}
    void focusMoved(int) override {}
    void labelEditBegun(int) override {}
    void pageTurned() override { window_.turnTo(sheet_.page()); }
    void dialogClosed() override { window_.leave(); }

private:
    DialogWindow& window_;
    PageSheet& sheet_;
};

DialogWindow::DialogWindow(QWidget* parent, DialogModel& dialog, QSize room)
    : AskingWindow(parent), dialog_(dialog), foot_(new FlowRow(this, Qt::AlignRight))
{
    setWindowTitle(
        titleText(dialog.title().empty() ? titleOfUntitled(dialog.number()) : dialog.title()));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->setSizeConstraint(QLayout::SetNoConstraint);
    if (dialog.pages().empty())
        addPanel();
    else
        addPages();
    addFoot();
    auto* help = new QShortcut(QKeySequence(QKeySequence::HelpContents), this);
    connect(help, &QShortcut::activated, this, [this] { showHelp(); });
    fit(room);
}

DialogWindow::DialogWindow(QWidget* parent, DialogModel& dialog)
    : DialogWindow(parent, dialog, roomFor(parent))
{
}

DialogWindow::~DialogWindow()
{
    for (DialogPanel* panel : panels_)
        panel->letGo();
}

DialogPanel& DialogWindow::front() const
{
    return *panels_[tabs_ == nullptr ? 0 : static_cast<std::size_t>(tabs_->currentIndex())];
}

// --- What it is made of

void DialogWindow::addPanel()
{
    auto* panel = new DialogPanel(dialog_, *foot_, nullptr);
    panel->onClosed = [this] { leave(); };
    panels_.push_back(panel);
    bodies_.push_back(new ScrollingBody(panel, this));
    layout()->addWidget(bodies_.back());
}

void DialogWindow::addPages()
{
    auto& sheet = static_cast<PageSheet&>(dialog_);
    tabs_ = new QTabWidget(this);
    tabs_->setUsesScrollButtons(true);
    tabs_->setDocumentMode(true);
    for (DialogModel* page : sheet.pages()) {
        panels_.push_back(new DialogPanel(*page, *foot_, nullptr));
        bodies_.push_back(new ScrollingBody(panels_.back(), tabs_));
        tabs_->addTab(bodies_.back(), captionText(page->title()));
    }
    tabs_->setCurrentIndex(sheet.page());
    connect(tabs_, &QTabWidget::currentChanged, this, [&sheet](int page) { sheet.turnTo(page); });
    watch_ = std::make_unique<SheetWatch>(*this, sheet);
    layout()->addWidget(tabs_);
    // The tabs know these keys themselves, but a list that drops down takes them for letters.
    new QShortcut(QKeySequence::NextChild, this, [this] { turnPageBy(1); });
    new QShortcut(QKeySequence::PreviousChild, this, [this] { turnPageBy(-1); });
}

void DialogWindow::turnPageBy(int pages)
{
    tabs_->setCurrentIndex((tabs_->currentIndex() + pages + tabs_->count()) % tabs_->count());
}

// Help, the buttons of the dialog, OK and Cancel. A dialog whose own button is its OK has no other.
void DialogWindow::addFoot()
{
    QPushButton* ok = nullptr;
    if (dialog_.okButton() != ButtonOk) {
        ok = static_cast<QPushButton*>(panels_.front()->find(dialog_.okButton())->widget());
    } else {
        ok = makeButton(tr("OK"), this);
        ok->setObjectName(QString::number(ButtonOk));
        connect(ok, &QPushButton::clicked, this, [this] { accept(); });
        foot_->add(ok);
    }
    ok->setDefault(true);
    QPushButton* cancel = nullptr;
    if (hasCancel(dialog_.number())) {
        cancel = makeButton(tr("Cancel"), this);
        cancel->setObjectName(QString::number(ButtonCancel));
        connect(cancel, &QPushButton::clicked, this, [this] { reject(); });
        foot_->add(cancel);
    }
    foot_->addLead(makeHelpButton());
    foot_->setContentsMargins(Margin, panels_.front()->isBare() ? Margin : 0, Margin, Margin);
    layout()->addWidget(foot_);
    for (DialogPanel* panel : panels_)
        panel->orderTabs(ok);
}

QWidget* DialogWindow::makeHelpButton()
{
    auto* help = new QToolButton(this);
    help->setText(QStringLiteral("?"));
    help->setFixedSize(ButtonHeight, ButtonHeight);
    help->setObjectName(QStringLiteral("help"));
    help->setAccessibleName(tr("Help"));
    help->setToolTip(tr("Help"));
    connect(help, &QToolButton::clicked, this, [this] { showHelp(); });
    return help;
}

// --- Where it stands

void DialogWindow::fit(QSize room)
{
    int width = std::max(LeastWidth, foot_->sizeHint().width());
    int least = foot_->minimumSizeHint().width();
    for (const ScrollingBody* body : bodies_) {
        width = std::max(width, body->sizeHint().width());
        least = std::max(least, body->minimumSizeHint().width());
    }
    width = std::clamp(width, std::min(least, room.width()), room.width());
    int height = 0;
    for (const ScrollingBody* body : bodies_)
        height = std::max(height, body->contentHeight(width));
    if (tabs_ != nullptr)
        height += tabs_->tabBar()->sizeHint().height() + TabFrame;
    fitWindow(*this, {width, height + foot_->heightForWidth(width)}, room);
}

// A window that keeps its place begins at the foot of its owner: it lets the user see what stands
// above it.
void DialogWindow::standInPlace()
{
    if (dialog_.place == nullptr)
        return;
    if (dialog_.place->left >= 0) {
        move(dialog_.place->left, dialog_.place->top);
    } else {
        const QRect owner = parentWidget() != nullptr ? parentWidget()->window()->frameGeometry()
                                                      : screen()->availableGeometry();
        move(owner.center().x() - width() / 2, owner.bottom() - height());
    }
}

// The place may be one of a larger screen, and only a window that is shown has its frame.
void DialogWindow::stayOnScreen()
{
    if (dialog_.place == nullptr)
        return;
    const QRect room = screen()->availableGeometry();
    const QRect frame = frameGeometry();
    const auto into = [](int least, int place, int most) {
        return std::max(least, std::min(place, most));
    };
    const QPoint corner(into(room.left(), frame.left(), room.right() + 1 - frame.width()),
                        into(room.top(), frame.top(), room.bottom() + 1 - frame.height()));
    if (corner != frame.topLeft())
        move(corner);
}

void DialogWindow::keepPlace()
{
    if (dialog_.place == nullptr)
        return;
    const QRect frame = frameGeometry();
    *dialog_.place = {std::max(frame.left(), 0), frame.top(), frame.left() + frame.width(),
                      frame.top() + frame.height()};
}

// The toolkit gives the keys to a widget of its own choice, as if by the tab key, which would
// select the text there: so that the one of the model comes after it.
void DialogWindow::setVisible(bool visible)
{
    const bool comes = visible && !isVisible();
    if (comes) {
        standInPlace();
        stayOnScreen();
    }
    QDialog::setVisible(visible);
    if (comes) {
        stayOnScreen();
        front().takeFocus();
    }
}

// --- What happens

void DialogWindow::turnTo(int page)
{
    // Who turned it by hand keeps the keys on the tabs.
    if (tabs_->currentIndex() == page)
        return;
    tabs_->setCurrentIndex(page);
    front().takeFocus();
}

void DialogWindow::accept()
{
    dialog_.press(ButtonOk);
}

void DialogWindow::reject()
{
    dialog_.press(ButtonCancel);
}

void DialogWindow::showHelp()
{
    platform.userInterface->showHelp(dialog_.helpAnchor());
}

// The model has closed.
void DialogWindow::leave()
{
    if (!isVisible())
        return;
    keepPlace();
    done(dialog_.closedBy());
}

void runDialogWindow(QWidget* parent, DialogModel& dialog)
{
    if (!dialog.isOpen())
        return;
    // The owner may go away, with all that it owns, while the dialog waits.
    const QPointer<DialogWindow> window = new DialogWindow(ownerOf(parent), dialog);
    window->exec();
    delete window.data();
}

} // namespace vorn::qt
