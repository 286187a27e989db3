#include "qt/dialogs/fileproperties.h"

#include "qt/dialogs/widgets.h"
#include "qt/strings.h"

#include <QDateTime>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace vorn::qt {

namespace {

constexpr int LeastWidth = 220;
constexpr int MostWidth = 420;

QString sizeText(qint64 bytes)
{
    const QLocale locale;
    const QString exact = locale.toString(bytes) + QStringLiteral(" bytes");
    return bytes < 1024 ? exact
                        : locale.formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat) +
                              QStringLiteral(" (") + exact + u')';
}

QLabel* makeText(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(breakable(text));
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setFocusPolicy(Qt::NoFocus);
    return label;
}

QWidget* makeTable(const FileFacts& facts, QWidget* parent)
{
    auto* table = new QWidget(parent);
    auto* rows = new QFormLayout(table);
    rows->setContentsMargins(Margin, Margin, Margin, Margin);
    rows->setHorizontalSpacing(Margin);
    rows->setVerticalSpacing(Gap);
    rows->setLabelAlignment(Qt::AlignLeft | Qt::AlignTop);
    for (const auto& [name, value] : facts) {
        QLabel* text = makeText(toQt(value), table);
        text->setObjectName(toQt(name));
        rows->addRow(toQt(name), text);
    }
    return table;
}

} // namespace

FileFacts factsOfFile(std::u16string_view path)
{
    const QFileInfo file(toQt(path));
    FileFacts facts = {
        {u"Name:",   fromQt(file.fileName())    },
        {u"Folder:", fromQt(file.absolutePath())},
    };
    if (!file.exists()) {
        facts.emplace_back(u"Size:", u"There is no such file.");
        return facts;
    }
    facts.emplace_back(u"Size:", fromQt(sizeText(file.size())));
    const QLocale locale;
    const auto addTime = [&](const char16_t* name, const QDateTime& time) {
        // Not every disk keeps every date.
        if (time.isValid())
            facts.emplace_back(name, fromQt(locale.toString(time, QLocale::ShortFormat)));
    };
    addTime(u"Created:", file.birthTime());
    addTime(u"Changed:", file.lastModified());
    addTime(u"Opened:", file.lastRead());
    facts.emplace_back(u"Protected:", file.isWritable() ? u"no" : u"yes, it can only be read");
    return facts;
}

void showFileProperties(QWidget* owner, const FileQuestion& question)
{
    const QPointer<AskingWindow> window = new AskingWindow(owner);
    window->setWindowTitle(titleText(question.title));
    window->setObjectName(QStringLiteral("properties"));
    auto* column = new QVBoxLayout(window);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->setSizeConstraint(QLayout::SetNoConstraint);
    auto* body = new ScrollingBody(makeTable(factsOfFile(question.path), window), window);
    column->addWidget(body, 1);
    auto* foot = new FlowRow(window, Qt::AlignRight);
    foot->setContentsMargins(Margin, 0, Margin, Margin);
    QPushButton* ok = makeButton(QDialog::tr("OK"), window);
    ok->setDefault(true);
    QObject::connect(ok, &QPushButton::clicked, window.data(), &QDialog::accept);
    foot->add(ok);
    column->addWidget(foot);
    const QSize room = roomFor(owner);
    const int width =
        std::min(std::clamp(body->sizeHint().width(), LeastWidth, MostWidth), room.width());
    fitWindow(*window, {width, body->contentHeight(width) + foot->heightForWidth(width)}, room);
    window->exec();
    delete window.data();
}

} // namespace vorn::qt
