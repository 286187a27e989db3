#include "qt/dialogs/help.h"

#include "qt/dialogs/dialogs.h"
#include "qt/strings.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace vorn::qt {

namespace {

// From the folder of the program. The last one is the way from the folder of a build to the
// sources, which the build knows.
constexpr const char* Places[] = {"vorn.htm", "../share/doc/vorn/vorn.htm", VORN_HELP_FROM_BUILD};

} // namespace

QString helpFile(const QString& programFolder)
{
    const QDir folder(programFolder);
    for (const char* place : Places) {
        const QString path = QDir::cleanPath(folder.absoluteFilePath(QLatin1String(place)));
        if (QFileInfo(path).isFile())
            return path;
    }
    return {};
}

void openHelp(QWidget* parent, std::u16string_view anchor)
{
    openHelpOf(QCoreApplication::applicationDirPath(), parent, anchor);
}

void openHelpOf(const QString& programFolder, QWidget* parent, std::u16string_view anchor)
{
    const QString path = helpFile(programFolder);
    if (path.isEmpty()) {
        showMessageBox(parent, u"Vorn",
                       u"The help file vorn.htm is not where the program looks "
                       u"for it.",
                       BoxButtons::Ok, BoxIcon::None);
        return;
    }
    QUrl page = QUrl::fromLocalFile(path);
    if (!anchor.empty())
        page.setFragment(toQt(anchor));
    if (!QDesktopServices::openUrl(page))
        showMessageBox(parent, u"Vorn",
                       u"There is no program that shows the help. It is in " + fromQt(path) + u'.',
                       BoxButtons::Ok, BoxIcon::None);
}

} // namespace vorn::qt
