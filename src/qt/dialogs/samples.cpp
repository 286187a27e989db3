#include "qt/dialogs/samples.h"

#include "core/workbook.h"
#include "editing/formatrequest.h"
#include "numfmt/locale.h"
#include "qt/colours.h"
#include "qt/dialogs/widgets.h"
#include "qt/fonts.h"
#include "qt/icons.h"
#include "qt/strings.h"
#include "resources/icons.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace vorn::qt {

namespace {

enum {
    NumberFormatDialog = 137,
    DateFormatDialog = 139,
    FontDialog = 135,
    BorderDialog = 105,
    AboutDialog = 143
};

std::u16string chosenText(const DialogModel& dialog, int control)
{
    const Control& list = *dialog.find(control);
    return list.selected == NoEntry ? std::u16string()
                                    : list.entries[static_cast<std::size_t>(list.selected)];
}

bool isOn(const DialogModel& dialog, int control)
{
    return dialog.find(control)->box == BoxState::On;
}

// --- Formats of numbers and dates

class TextSample : public SampleWidget {
public:
    using Text = std::u16string (*)(const DialogModel&);

    TextSample(const DialogModel& dialog, Text text, QWidget* parent)
        : SampleWidget(parent), dialog_(dialog), text_(text), label_(new QLabel(this))
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(label_);
        label_->setTextFormat(Qt::PlainText);
        label_->setAlignment(Qt::AlignCenter);
        label_->setWordWrap(true);
        label_->setMinimumHeight(ButtonHeight);
    }

    void refresh() override { label_->setText(breakable(toQt(text_(dialog_)))); }

private:
    const DialogModel& dialog_;
    Text text_;
    QLabel* label_;
};

// --- Fonts

class FontSample : public SampleWidget {
public:
    FontSample(const DialogModel& dialog, QWidget* parent) : SampleWidget(parent), dialog_(dialog)
    {
        setMinimumHeight(2 * FieldHeight);
    }

    void refresh() override { update(); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), colourOf(1008, Qt::white));
        painter.setPen(Qt::gray);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
        painter.setFont(sampleFont());
        painter.setPen(colourOf(1007, Qt::black));
        painter.drawText(rect(), Qt::AlignCenter, QStringLiteral("AaBbYy 123"));
    }

private:
    QColor colourOf(int control, QColor mixed) const
    {
        const int entry = dialog_.find(control)->selected;
        if (entry == NoEntry || workbook == nullptr)
            return mixed;
        return qt::colourOf(workbook->palette[colourOfEntry(entry) - FirstPaletteColour]);
    }

    // As a cell would show it at its own size.
    QFont sampleFont() const
    {
        FontLook look = interfaceFontLook();
        const std::u16string face = chosenText(dialog_, 1005);
        if (!face.empty())
            look.face = face;
        const int points = toQt(chosenText(dialog_, 1006)).toInt();
        if (points > 0)
            look.height = points * TwipsPerPoint / TwipsPerPixel;
        look.weight = isOn(dialog_, 1009) ? QFont::Bold : QFont::Normal;
        look.italic = isOn(dialog_, 1010);
        look.underline = isOn(dialog_, 1011);
        return fontOf(look);
    }

    static constexpr int TwipsPerPoint = 20, TwipsPerPixel = 14;

    const DialogModel& dialog_;
};

// --- Borders

// A cell with the lines that are on. Those of which some cells have one and others not are dotted.
class BorderSample : public SampleWidget {
public:
    BorderSample(const DialogModel& dialog, QWidget* parent) : SampleWidget(parent), dialog_(dialog)
    {
        setMinimumSize(FieldWidth, 2 * FieldHeight);
    }

    void refresh() override { update(); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        const QRect cell = rect().adjusted(Margin, Margin, -Margin - 1, -Margin - 1);
        painter.setPen(QPen(Qt::lightGray));
        painter.drawRect(cell);
        const BoxState outline = dialog_.find(1018)->box;
        drawSide(painter, 1014, outline, {cell.topLeft(), cell.bottomLeft()});
        drawSide(painter, 1015, outline, {cell.topRight(), cell.bottomRight()});
        drawSide(painter, 1016, outline, {cell.topLeft(), cell.topRight()});
        drawSide(painter, 1017, outline, {cell.bottomLeft(), cell.bottomRight()});
    }

private:
    void drawSide(QPainter& painter, int control, BoxState outline, QLine side) const
    {
        const BoxState state = dialog_.find(control)->box;
        if (state == BoxState::On || outline == BoxState::On)
            painter.setPen(QPen(Qt::black, 2));
        else if (state == BoxState::Mixed || outline == BoxState::Mixed)
            painter.setPen(QPen(Qt::black, 2, Qt::DotLine));
        else
            return;
        painter.drawLine(side);
    }

    const DialogModel& dialog_;
};

// --- The program itself

class ProgramSign : public SampleWidget {
public:
    explicit ProgramSign(QWidget* parent) : SampleWidget(parent)
    {
        setMinimumHeight(SignSize + Margin);
    }

    void refresh() override {}

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const QSize size(SignSize, SignSize);
        drawIcon(painter, QRect(rect().topLeft(), size).toRectF(), IconVorn, true);
    }

private:
    static constexpr int SignSize = 48;
};

// The digits of 1234 with the separators of the locale.
std::u16string sampleDigits(int decimals, bool thousands)
{
    std::u16string digits = u"1";
    if (thousands)
        digits += localeInfo.thousands;
    digits += u"234";
    if (decimals > 0) {
        digits += localeInfo.decimal;
        digits.append(static_cast<std::size_t>(decimals), u'0');
    }
    return digits;
}

} // namespace

std::u16string sampleOfNumberFormat(const DialogModel& dialog)
{
    const auto text = [&](int control) { return dialog.find(control)->text; };
    const std::u16string digits =
        sampleDigits(std::max(dialog.find(1019)->selected, 0), isOn(dialog, 1052));
    return text(1053) + digits + text(1054) + u"     " + text(1055) + digits + text(1057);
}

std::u16string sampleOfDateFormat(const DialogModel& dialog)
{
    std::u16string sample;
    if (isOn(dialog, 1057)) {
        for (int control : {1063, 1055, 1064, 1065, 1066})
            sample += chosenText(dialog, control);
    }
    if (isOn(dialog, 1058)) {
        if (!sample.empty())
            sample += u' ';
        sample += chosenText(dialog, 1053);
    }
    return sample;
}

SampleWidget* makeSample(const DialogModel& dialog, QWidget* parent)
{
    switch (dialog.number()) {
    case NumberFormatDialog:
        return new TextSample(dialog, sampleOfNumberFormat, parent);
    case DateFormatDialog:
        return new TextSample(dialog, sampleOfDateFormat, parent);
    case FontDialog:
        return new FontSample(dialog, parent);
    case BorderDialog:
        return new BorderSample(dialog, parent);
    case AboutDialog:
        return new ProgramSign(parent);
    default:
        return nullptr;
    }
}

} // namespace vorn::qt
