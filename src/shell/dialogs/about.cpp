#include "shell/commandhandlers.h"
#include "shell/dialog.h"

namespace vorn {

namespace {

constexpr int Program = 1111, Version = 1112;

class AboutDialog : public DialogModel {
public:
    AboutDialog() : DialogModel(143) {}

protected:
    void opened() override
    {
        setText(Program, u"Vorn");
        setText(Version, u"Version " VORN_VERSION);
    }
};

} // namespace

void aboutCommand()
{
    AboutDialog dialog;
    runDialog(dialog);
}

} // namespace vorn
