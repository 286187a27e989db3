// A dialog of several pages. Each page is a dialog of its own, with its number, its controls and
// its rules; the sheet has the title, OK and Cancel. OK goes to every page, in their order, as if
// it had been pressed there; a page that refuses comes to the front and the sheet stays open.
//
// Shape:  it borrows its pages. Its number is that of the first.
// Errors: those of the pages, shown over the sheet.
#pragma once

#include "shell/dialog.h"

#include <vector>

namespace vorn {

class PageSheet : public DialogModel {
public:
    // `rememberedPage` is the index of the page that was in front last, and learns which one is
    // when the sheet closes.
    PageSheet(const PageSheetForm& form, std::vector<DialogModel*> pages, int& rememberedPage);

    std::span<DialogModel* const> pages() const override { return pages_; }
    std::u16string_view helpAnchor() const override { return front().helpAnchor(); }

    int page() const { return page_; }
    DialogModel& front() const { return *pages_[static_cast<std::size_t>(page_)]; }

    void turnTo(int page) override;

protected:
    void opened() override;
    void pressed(int button) override;
    void cancelled() override;

private:
    std::vector<DialogModel*> pages_;
    int page_ = 0;
    int& rememberedPage_;
};

} // namespace vorn
