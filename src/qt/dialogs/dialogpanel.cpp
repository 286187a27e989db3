#include "qt/dialogs/dialogpanel.h"

#include "qt/dialogs/samples.h"
#include "qt/dialogs/widgets.h"
#include "qt/strings.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace vorn::qt {

namespace {

constexpr int CaptionColumn = 0, FieldColumn = 1, ColumnCount = 2;
constexpr int NoteLines = 3;

bool standsAsCaption(const Control& control)
{
    return control.isBox();
}

} // namespace

DialogPanel::DialogPanel(DialogModel& dialog, FlowRow& foot, QWidget* parent)
    : QWidget(parent), dialog_(dialog), grid_(new QGridLayout(this))
{
    setObjectName(QString::number(dialog.number()));
    grid_->setHorizontalSpacing(Gap);
    grid_->setVerticalSpacing(Gap);
    grid_->setColumnStretch(FieldColumn, 1);
    std::vector<ControlForm> forms;
    for (const Control& control : dialog.controls()) {
        views_.push_back(makeControlView(dialog, control, this));
        forms.push_back(*control.form);
    }
    for (const ArrangedRow& row : arrangementOf(dialog.number(), forms)) {
        addRow(row);
        nameForAssistants(row);
    }
    moveButtonsTo(foot);
    const int margin = isBare() ? 0 : Margin;
    grid_->setContentsMargins(margin, margin, margin, margin);
    // What is left of the height goes to a list, or else below everything.
    bool grows = false;
    for (int row = 0; row < rows_; ++row)
        grows = grows || grid_->rowStretch(row) > 0;
    if (!grows)
        grid_->setRowStretch(rows_, 1);
    groupRadios();
    for (const auto& view : views_)
        view->show();
    if (sample_ != nullptr)
        sample_->refresh();
    dialog_.observer = this;
}

DialogPanel::~DialogPanel()
{
    letGo();
}

// The widgets outlive the views, and must not call them on their way out.
void DialogPanel::letGo()
{
    dialog_.observer = nullptr;
    for (const auto& view : views_) {
        view->widget()->blockSignals(true);
        for (QObject* part : view->widget()->findChildren<QObject*>())
            part->blockSignals(true);
    }
    views_.clear();
}

// --- What the model tells

void DialogPanel::controlChanged(int control)
{
    if (ControlView* view = find(control); view != nullptr)
        view->show();
    if (sample_ != nullptr)
        sample_->refresh();
}

void DialogPanel::focusMoved(int control)
{
    ControlView* view = find(control);
    if (view == nullptr)
        return;
    view->takeFocus();
    view->show();
}

void DialogPanel::labelEditBegun(int control)
{
    if (ControlView* view = find(control); view != nullptr)
        view->beginLabelEdit();
}

void DialogPanel::dialogClosed()
{
    if (onClosed)
        onClosed();
}

void DialogPanel::takeFocus()
{
    const auto takesIt = [this](const auto& view) {
        if (dialog_.focus() != NoControl)
            return view->id() == dialog_.focus();
        const QWidget* widget = view->widget();
        return (widget->focusPolicy() & Qt::TabFocus) != 0 && view->control().enabled;
    };
    const auto first = std::find_if(views_.begin(), views_.end(), takesIt);
    if (first == views_.end())
        return;
    (*first)->takeFocus();
    (*first)->selectText();
    if (dialog_.labelInEdit() == (*first)->id())
        (*first)->beginLabelEdit();
}

void DialogPanel::orderTabs(QWidget* last)
{
    std::vector<QWidget*> chain;
    for (int control : placed_)
        chain.push_back(find(control)->widget());
    chain.push_back(last);
    for (std::size_t i = 1; i < chain.size(); ++i)
        setTabOrder(chain[i - 1], chain[i]);
}

ControlView* DialogPanel::find(int control) const
{
    for (const auto& view : views_) {
        if (view->id() == control)
            return view.get();
    }
    return nullptr;
}

// --- Rows

// Arrows go round in a group, and the tab key passes it.
void DialogPanel::groupRadios()
{
    QButtonGroup* group = nullptr;
    for (const auto& view : views_) {
        if (view->control().form->kind != ControlKind::Radio)
            continue;
        if (group == nullptr || (view->control().form->traits & ControlStartsGroup) != 0)
            group = new QButtonGroup(this);
        group->addButton(static_cast<QAbstractButton*>(view->widget()));
    }
}

void DialogPanel::addRow(const ArrangedRow& row)
{
    switch (row.kind) {
    case RowKind::Fields:
        addFields(row);
        break;
    case RowKind::Flow:
        addFlow(row);
        break;
    case RowKind::List:
        addList(row);
        break;
    case RowKind::Note:
        addNote(row);
        break;
    case RowKind::Borders:
        addBorders(row);
        break;
    case RowKind::Sample:
        addSample();
        break;
    }
    ++rows_;
}

QWidget* DialogPanel::place(int control)
{
    placed_.push_back(control);
    return find(control)->widget();
}

QWidget* DialogPanel::makeFields(std::span<const int> controls)
{
    if (controls.size() == 1)
        return place(controls.front());
    auto* fields = new QWidget(this);
    auto* line = new QHBoxLayout(fields);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(Gap);
    for (int control : controls)
        line->addWidget(place(control), 1);
    return fields;
}

void DialogPanel::addFields(const ArrangedRow& row)
{
    const Control& first = find(row.controls.front())->control();
    std::span<const int> controls = row.controls;
    if (standsAsCaption(first)) {
        grid_->addWidget(place(controls.front()), rows_, CaptionColumn);
        controls = controls.subspan(1);
    }
    QWidget* fields = makeFields(controls);
    if (standsAsCaption(first) || !row.caption.empty() || !first.form->label.empty()) {
        grid_->addWidget(fields, rows_, FieldColumn);
        if (!standsAsCaption(first))
            addCaption(row, find(controls.front())->widget());
    } else {
        grid_->addWidget(fields, rows_, CaptionColumn, 1, ColumnCount);
    }
}

void DialogPanel::addCaption(const ArrangedRow& row, QWidget* field)
{
    const std::u16string_view label = find(row.controls.front())->control().form->label;
    const std::u16string_view text = label.empty() ? row.caption : label;
    auto* caption = new QLabel(captionText(text), this);
    caption->setTextFormat(Qt::PlainText);
    caption->setBuddy(field);
    grid_->addWidget(caption, rows_, CaptionColumn);
}

void DialogPanel::addFlow(const ArrangedRow& row)
{
    auto* flow = new FlowRow(this);
    for (int control : row.controls)
        flow->add(place(control));
    grid_->addWidget(flow, rows_, CaptionColumn, 1, ColumnCount);
}

void DialogPanel::addList(const ArrangedRow& row)
{
    auto* area = new QWidget(this);
    auto* line = new QHBoxLayout(area);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(Gap);
    line->addWidget(place(row.controls.front()), 1);
    if (row.controls.size() > 1) {
        auto* buttons = new QVBoxLayout;
        buttons->setSpacing(Gap);
        for (std::size_t i = 1; i < row.controls.size(); ++i)
            buttons->addWidget(place(row.controls[i]));
        buttons->addStretch(1);
        line->addLayout(buttons);
    }
    grid_->addWidget(area, rows_, CaptionColumn, 1, ColumnCount);
    grid_->setRowStretch(rows_, 1);
}

// A text that comes and goes keeps its place, so that nothing jumps.
void DialogPanel::addNote(const ArrangedRow& row)
{
    auto* note = static_cast<QLabel*>(place(row.controls.front()));
    note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    if (rows_ > 0 && grid_->rowStretch(rows_ - 1) > 0)
        note->setMinimumHeight(NoteLines * note->fontMetrics().lineSpacing());
    grid_->addWidget(note, rows_, CaptionColumn, 1, ColumnCount);
}

// Above, left, right, below, and the sample in the middle of them.
void DialogPanel::addBorders(const ArrangedRow& row)
{
    auto* area = new QWidget(this);
    auto* grid = new QGridLayout(area);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(Gap);
    grid->addWidget(place(row.controls[0]), 0, 1, Qt::AlignHCenter);
    grid->addWidget(place(row.controls[1]), 1, 0);
    grid->addWidget(place(row.controls[2]), 1, 2);
    grid->addWidget(place(row.controls[3]), 2, 1, Qt::AlignHCenter);
    grid->setColumnStretch(1, 1);
    sample_ = makeSample(dialog_, area);
    grid->addWidget(sample_, 1, 1);
    grid_->addWidget(area, rows_, CaptionColumn, 1, ColumnCount);
}

void DialogPanel::addSample()
{
    sample_ = makeSample(dialog_, this);
    grid_->addWidget(sample_, rows_, CaptionColumn, 1, ColumnCount);
}

void DialogPanel::moveButtonsTo(FlowRow& foot)
{
    for (const auto& view : views_) {
        if (std::find(placed_.begin(), placed_.end(), view->id()) != placed_.end())
            continue;
        foot.add(view->widget());
    }
}

// Readers of screens say what a field is for.
void DialogPanel::nameForAssistants(const ArrangedRow& row)
{
    std::u16string_view name = row.caption;
    for (int control : row.controls) {
        const std::u16string_view label = find(control)->control().form->label;
        if (!label.empty())
            name = label;
        if (!name.empty() && name != u" ")
            find(control)->widget()->setAccessibleName(toQt(name));
    }
}

} // namespace vorn::qt
