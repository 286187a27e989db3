// The pages of Format Cells that only show and take fields: alignment, borders, protection.
#include "shell/dialogs/formatpages.h"

namespace vorn {

namespace {

enum { Horizontal = 1004, Vertical = 1044, WrapText = 1045 };
enum { Locked = 1098, Hidden = 1058 };

// The boxes of the borders and their fields.
constexpr struct {
    int control;
    int FormatRequest::*field;
} Borders[] = {
    {1014, &FormatRequest::borderLeft  },
    {1015, &FormatRequest::borderRight },
    {1016, &FormatRequest::borderTop   },
    {1017, &FormatRequest::borderBottom},
    {1018, &FormatRequest::outline     },
};

} // namespace

AlignmentPage::AlignmentPage(FormatRequest& request) : DialogModel(134), request_(request) {}

// An alignment that the lists do not have is as good as mixed: no entry is chosen.
void AlignmentPage::opened()
{
    select(Horizontal, request_.horizontal);
    select(Vertical, request_.vertical);
    showBox(WrapText, static_cast<BoxState>(request_.wrapText));
}

void AlignmentPage::pressed(int button)
{
    request_.horizontal = selected(Horizontal);
    request_.vertical = selected(Vertical);
    request_.wrapText = static_cast<int>(boxState(WrapText));
    close(button);
}

BorderPage::BorderPage(FormatRequest& request) : DialogModel(105), request_(request) {}

void BorderPage::opened()
{
    for (const auto& border : Borders)
        showBox(border.control, static_cast<BoxState>(request_.*border.field));
}

void BorderPage::pressed(int button)
{
    for (const auto& border : Borders)
        request_.*border.field = static_cast<int>(boxState(border.control));
    close(button);
}

ProtectPage::ProtectPage(FormatRequest& request) : DialogModel(161), request_(request) {}

void ProtectPage::opened()
{
    showBox(Locked, static_cast<BoxState>(request_.locked));
    showBox(Hidden, static_cast<BoxState>(request_.hidden));
}

void ProtectPage::pressed(int button)
{
    request_.locked = static_cast<int>(boxState(Locked));
    request_.hidden = static_cast<int>(boxState(Hidden));
    close(button);
}

} // namespace vorn
