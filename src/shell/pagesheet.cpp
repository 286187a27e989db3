#include "shell/pagesheet.h"

#include <algorithm>
#include <cassert>

namespace vorn {

PageSheet::PageSheet(const PageSheetForm& form, std::vector<DialogModel*> pages,
                     int& rememberedPage)
    : DialogModel(DialogForm{pages.front()->number(), form.title, u"", {}}),
      pages_(std::move(pages)), rememberedPage_(rememberedPage)
{
}

void PageSheet::turnTo(int page)
{
    assert(page >= 0 && page < static_cast<int>(pages_.size()));
    page_ = page;
    tellPageTurned();
}

void PageSheet::opened()
{
    page_ = std::clamp(rememberedPage_, 0, static_cast<int>(pages_.size()) - 1);
    for (DialogModel* page : pages_)
        page->open();
}

void PageSheet::pressed(int button)
{
    for (std::size_t i = 0; i < pages_.size(); ++i) {
        pages_[i]->press(button);
        if (!pages_[i]->isOpen())
            continue;
        turnTo(static_cast<int>(i));
        // The pages before it have done their part, and will be asked again.
        while (i > 0)
            pages_[--i]->reopen();
        return;
    }
    rememberedPage_ = page_;
    close(button);
}

void PageSheet::cancelled()
{
    for (DialogModel* page : pages_)
        page->press(ButtonCancel);
    rememberedPage_ = page_;
}

} // namespace vorn
