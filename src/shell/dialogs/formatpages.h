// The pages of Format Cells. Each shows some fields of one FormatRequest and takes them back when
// OK is pressed; what the user leaves alone stays as it was, mixed or not.
#pragma once

#include "editing/formatrequest.h"
#include "editing/numberformats.h"
#include "platform/textmeasure.h"
#include "shell/dialog.h"

#include <vector>

namespace vorn {

// Formats of numbers, dates and times, and the two dialogs that make new ones. The formats are
// those of the workbook: what is made or deleted here stays so, however the sheet is closed.
class FormatPage : public DialogModel {
public:
    // A deletion moves the formats behind it, in both requests.
    FormatPage(FormatRequest& before, FormatRequest& request);

protected:
    void opened() override;
    void changed(int control) override;
    void pressed(int button) override;

private:
    FormatList list() const;
    int chosenFormat() const;
    void fill(int format);
    void showDeletable();
    void makeFormat();
    void removeFormat();

    FormatRequest& before_;
    FormatRequest& request_;
    std::vector<FormatChoice> choices_;
};

class AlignmentPage : public DialogModel {
public:
    explicit AlignmentPage(FormatRequest& request);

protected:
    void opened() override;
    void pressed(int button) override;

private:
    FormatRequest& request_;
};

class FontPage : public DialogModel {
public:
    explicit FontPage(FormatRequest& request);

protected:
    void opened() override;
    void changed(int control) override;
    void pressed(int button) override;

private:
    void fillFaces();
    void fillSizes();

    FormatRequest& request_;
    std::vector<FontFamily> families_; // as the list shows them
    std::vector<int> sizes_;
    int size_ = FormatMixed; // the one chosen last, for fonts that do not offer it
};

class BorderPage : public DialogModel {
public:
    explicit BorderPage(FormatRequest& request);

protected:
    void opened() override;
    void pressed(int button) override;

private:
    FormatRequest& request_;
};

class ProtectPage : public DialogModel {
public:
    explicit ProtectPage(FormatRequest& request);

protected:
    void opened() override;
    void pressed(int button) override;

private:
    FormatRequest& request_;
};

} // namespace vorn
