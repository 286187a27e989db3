// A display that nobody sees: a server of its own for each test, whose picture lies in a file.
//
// Units:  pixels of the display.
#pragma once

#include "support/tempfolder.h"
#include "window/process.h"

#include <QImage>

#include <optional>

namespace vorn {

class Screen {
public:
    // Starts the server. Where that is not possible, `name` stays empty and `fault` says why.
    Screen(int width, int height);

    // What DISPLAY has to be.
    const std::string& name() const { return name_; }
    std::string fault() const;

    // Has the server done all that it was asked for?
    bool isIdle() const { return server_->isIdle(); }

    // What is on it now.
    QImage picture() const;

private:
    TempFolder folder_;
    std::optional<Process> server_;
    std::string name_;
};

// The smallest rectangle around everything that differs; empty if nothing does.
QRect difference(const QImage& one, const QImage& other);

} // namespace vorn
