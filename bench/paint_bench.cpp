// The painting of the window on a picture in memory: all of it, and the little that a move of the
// cursor or a scroll by a row leaves to do. Each on a sheet of ten cells and on one of 800,000, at
// one pixel of the picture for one of the window's and at four.

#include "core/input.h"
#include "core/workbook.h"
#include "platform/headless/clipboard.h"
#include "platform/headless/userinterface.h"
#include "platform/platform.h"
#include "platform/system/machine.h"
#include "qt/canvas.h"
#include "qt/fonts.h"
#include "shell/application.h"
#include "shell/keys.h"
#include "shell/scrolling.h"
#include "shell/windowpaint.h"

#include <QApplication>
#include <QImage>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <string>

namespace vorn {
namespace {

constexpr int FullRows = 16000;
constexpr int FullColumns = 50;
constexpr int FewCells = 10;
constexpr Rect Client{0, 0, 1280, 800};

constexpr int FormatThousands = 4;
constexpr int FormatPercent = 10;

// What a cell holds and how it looks goes round by its column.
struct Look {
    int format;
    int font;
    Alignment alignment;
    bool border;
};
constexpr Look looks[] = {
    {0,               0, AlignGeneral, false},
    {FormatThousands, 0, AlignGeneral, false},
    {0,               1, AlignCenter,  false},
    {FormatPercent,   0, AlignGeneral, true },
    {0,               0, AlignLeft,    false},
};
constexpr int LookCount = static_cast<int>(std::size(looks));

int styleOf(const Look& look)
{
    CellStyle style = defaultStyle();
    style.set(StyleFormat, look.format);
    style.set(StyleFont, look.font);
    style.set(StyleHorizontal, look.alignment);
    style.set(StyleBottomLine, look.border ? 1 : 0);
    return workbook->addStyle(style);
}

std::u16string digits(int number)
{
    const std::string text = std::to_string(number);
    return {text.begin(), text.end()};
}

std::u16string contents(int column, int row)
{
    const int mixed = (row * 7919 + column * 104729) % 100000;
    switch (column % LookCount) {
    case 0:
        return u"Item " + digits(mixed);
    case 1:
        return digits(mixed) + u".25";
    case 2:
        return digits(1 + mixed % 12) + u"/" + digits(1 + mixed % 28) + u"/2001";
    case 3:
        return u"0." + digits(mixed);
    default:
        return digits(mixed);
    }
}

void fillCell(const int (&styles)[LookCount], int column, int row)
{
    Sheet& sheet = *workbook->currentSheet;
    sheet.setCellStyle(column, row, styles[column % LookCount]);
    storeCellInput(column, row, contents(column, row));
}

// A window of the usual size with a document of few or of many cells.
class PaintedDocument {
public:
    PaintedDocument(bool full, int scale)
        : image_(Client.width() * scale, Client.height() * scale, QImage::Format_RGB32)
    {
        image_.setDevicePixelRatio(scale);
        int styles[LookCount];
        for (int i = 0; i < LookCount; ++i)
            styles[i] = styleOf(looks[i]);
        for (int row = 0; row < (full ? FullRows : 1); ++row) {
            for (int column = 0; column < (full ? FullColumns : FewCells); ++column)
                fillCell(styles, column, row);
        }
        application_.resize(Client);
        paint();
    }

    // One pass, and what the window does behind it but for showing it on the screen.
    void paint()
    {
        paintChanges(canvas_);
        benchmark::DoNotOptimize(canvas_.takeChanged());
    }

private:
    Application application_;
    QImage image_;
    qt::QtCanvas canvas_{image_};
};

void fullRepaint(benchmark::State& state)
{
    PaintedDocument document(state.range(0) != 0, static_cast<int>(state.range(1)));
    for (auto each : state) {
        forgetPainted();
        document.paint();
    }
}

// The key and all that follows from it.
void cursorMove(benchmark::State& state)
{
    PaintedDocument document(state.range(0) != 0, static_cast<int>(state.range(1)));
    bool down = false;
    for (auto each : state) {
        down = !down;
        keyDown(down ? KeyDown : KeyUp, {});
        document.paint();
    }
}

void scrollByRow(benchmark::State& state)
{
    PaintedDocument document(state.range(0) != 0, static_cast<int>(state.range(1)));
    bool down = false;
    for (auto each : state) {
        down = !down;
        scrollBy(0, down ? 1 : -1);
        document.paint();
    }
}

void eachSheetAndScale(benchmark::internal::Benchmark* benchmark)
{
    benchmark
        ->ArgNames({
            "full", "scale"
    })
        ->ArgsProduct({{0, 1}, {1, 2}});
    benchmark->Unit(benchmark::kMicrosecond);
}
BENCHMARK(fullRepaint)->Apply(eachSheetAndScale);
BENCHMARK(cursorMove)->Apply(eachSheetAndScale);
BENCHMARK(scrollByRow)->Apply(eachSheetAndScale);

} // namespace
} // namespace vorn

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication program(argc, argv);
    vorn::SilentUserInterface user;
    vorn::MemoryClipboard clipboard;
    vorn::qt::QtTextMeasure textMeasure;
    vorn::SystemMachine machine(user, clipboard, textMeasure);
    std::string reason;
    if (!machine.install({"en_US", "2001-03-04T05:06:07", 0, {}}, reason)) {
        std::fprintf(stderr, "%s\n", reason.c_str());
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
