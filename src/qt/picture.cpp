#include "qt/picture.h"

#include "qt/mainwindow.h"
#include "qt/strings.h"

#include <QImageWriter>

#include <cstdio>

namespace vorn::qt {

BoxAnswer PictureUser::messageBox(std::u16string_view, std::u16string_view text, BoxButtons buttons,
                                  BoxIcon)
{
    spoken_ = true;
    std::fprintf(stderr, "vorn: %s\n", qUtf8Printable(toQt(text)));
    switch (buttons) {
    case BoxButtons::Ok:
        return BoxAnswer::Ok;
    case BoxButtons::YesNo:
        return BoxAnswer::No;
    case BoxButtons::YesNoCancel:
        break;
    }
    return BoxAnswer::Cancel;
}

bool writePicture(MainWindow& window, const QString& path)
{
    window.repaintNow();
    QImageWriter writer(path, "png");
    if (writer.write(window.grab().toImage()))
        return true;
    std::fprintf(stderr, "vorn: %s: %s\n", qUtf8Printable(path),
                 qUtf8Printable(writer.errorString()));
    return false;
}

} // namespace vorn::qt
