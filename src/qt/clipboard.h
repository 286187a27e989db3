// The clipboard of the desktop. A format of the system's own travels under a MIME type that is made
// of its name.
#pragma once

#include "platform/clipboard.h"

#include <QString>
#include <QStringList>

namespace vorn::qt {

class QtClipboard : public Clipboard {
public:
    unsigned registerFormat(std::u16string_view name) override;
    bool holds(unsigned format) override;
    bool holdsText() override;
    void putText(std::u16string_view text) override;
    std::u16string text() override;

    // The MIME type of a format; empty for a number that was never given.
    QString typeOf(unsigned format) const;

private:
    QStringList types_;
};

} // namespace vorn::qt
