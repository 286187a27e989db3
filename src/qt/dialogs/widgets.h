// What the windows that ask are put together from: measures that a finger can hit, texts that break
// where there is little room, rows that wrap, and a body that scrolls.
//
// Units: pixels of the toolkit, which scales them.
#pragma once

#include <QDialog>
#include <QScrollArea>
#include <QString>
#include <QWidget>

#include <string_view>
#include <vector>

class QPushButton;

namespace vorn::qt {

constexpr int FieldHeight = 28;
constexpr int FieldWidth = 48; // at least
constexpr int BoxHeight = 26;
constexpr int ButtonHeight = 30;
constexpr int ButtonWidth = 64; // at least
constexpr int ListHeight = 96;  // at least
constexpr int WantedListWidth = 320;
constexpr int WantedListHeight = 220;
constexpr int Gap = 6;
constexpr int Margin = 8;

// A text for a button, a box, a tab or a caption, where '&' would else name a key.
QString captionText(std::u16string_view text);

// A text for the title of a window, where "[*]" would else stand for a mark. A window without one
// of its own has the program's name there.
QString titleText(std::u16string_view text);

// The text with places to break in its longest words, paths for example, which else would make a
// label as wide as they are.
QString breakable(const QString& text);

// A button that Enter does not press unless it is the default one.
QPushButton* makeButton(const QString& text, QWidget* parent);

// A window that asks. Where no window manager puts a frame around it, it has a thin one of its own.
class AskingWindow : public QDialog {
public:
    using QDialog::QDialog;

protected:
    void paintEvent(QPaintEvent* event) override;
};

// Widgets one behind the other, on as many lines as they need. Buttons become narrower
// where that saves one.
class FlowRow : public QWidget {
public:
    explicit FlowRow(QWidget* parent, Qt::Alignment side = Qt::AlignLeft);

    void add(QWidget* widget);

    // Comes before all others, and stays at the left.
    void addLead(QWidget* widget);

    QWidget* at(std::size_t place) const { return items_[place]; }
    std::size_t count() const { return items_.size(); }

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Placed {
        QWidget* widget;
        QSize size;
    };
    using Line = std::vector<Placed>;

    enum Width { Wanted, Narrow };
    static QSize sizeOf(const QWidget& item, Width width);
    static QSize sizeOf(const Line& line);
    std::vector<Line> linesFor(int width) const;
    std::vector<Line> breakLines(int width, Width items) const;
    void place();

    std::vector<QWidget*> items_;
    const QWidget* lead_ = nullptr;
    Qt::Alignment side_;
};

// Shows one widget, which gets all the room there is, and scrolls where it needs more.
class ScrollingBody : public QScrollArea {
public:
    ScrollingBody(QWidget* content, QWidget* parent);

    int contentHeight(int width) const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int leastHeight(int width) const;
    void place();
};

// The window that a new one belongs to: the one that asks at the moment, else `parent`.
QWidget* ownerOf(QWidget* parent);

// The room on the screen where a window of this owner is about to stand.
QSize roomFor(const QWidget* owner);

// Gives the window the size that its content wants, if there is room.
void fitWindow(QDialog& window, QSize wanted, QSize room);

} // namespace vorn::qt
