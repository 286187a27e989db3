#include "qt/clipboard.h"

#include "qt/strings.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace vorn::qt {

namespace {

// Null where the machine has nothing to show.
const QMimeData* content()
{
    return QGuiApplication::clipboard()->mimeData();
}

} // namespace

unsigned QtClipboard::registerFormat(std::u16string_view name)
{
    const QString type = QStringLiteral("application/x-vorn.") + toQt(name).toLower();
    if (!types_.contains(type))
        types_.append(type);
    return static_cast<unsigned>(types_.indexOf(type)) + 1;
}

bool QtClipboard::holds(unsigned format)
{
    const QString type = typeOf(format);
    return !type.isEmpty() && content() != nullptr && content()->hasFormat(type);
}

bool QtClipboard::holdsText()
{
    return content() != nullptr && content()->hasText();
}

void QtClipboard::putText(std::u16string_view text)
{
    QGuiApplication::clipboard()->setText(toQt(text));
}

std::u16string QtClipboard::text()
{
    return fromQt(QGuiApplication::clipboard()->text());
}

QString QtClipboard::typeOf(unsigned format) const
{
    return format == 0 ? QString() : types_.value(static_cast<qsizetype>(format) - 1);
}

} // namespace vorn::qt
