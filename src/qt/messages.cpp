#include "qt/messages.h"

#include "shell/application.h"

namespace vorn::qt {

void Messages::finish()
{
    application->showError();
    --depth_;
    atEnd_();
}

} // namespace vorn::qt
