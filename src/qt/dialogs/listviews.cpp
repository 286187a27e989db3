#include "qt/dialogs/listviews.h"

#include "core/workbook.h"
#include "editing/formatrequest.h"
#include "qt/colours.h"
#include "qt/dialogs/widgets.h"
#include "qt/fonts.h"
#include "qt/strings.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QStringListModel>
#include <QStyledItemDelegate>

#include <algorithm>

namespace vorn::qt {

namespace {

constexpr int EntryPadding = 3; // above and below an entry, for fingers
constexpr int ShownCharacters = 4;
constexpr int PopupWidthMax = 230;
constexpr int PatchSize = 14;

QStringList entryTexts(const Control& control)
{
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(control.entries.size()));
    for (const std::u16string& entry : control.entries)
        texts.append(toQt(entry));
    return texts;
}

// Entries as high as a finger wants them.
class RoomyDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        size.rheight() += 2 * EntryPadding;
        return size;
    }
};

// A list that is only looked at has no entry that the keys stand on: so the first key goes to the
// first entry, and not to the second.
class QuietListView : public QListView {
public:
    using QListView::QListView;

    QSize sizeHint() const override { return {WantedListWidth, WantedListHeight}; }

protected:
    void focusInEvent(QFocusEvent* event) override
    {
        QListView::focusInEvent(event);
        if (!selectionModel()->hasSelection())
            selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
    }
};

// A wheel that scrolls the window must not choose on its way.
class QuietComboBox : public QComboBox {
public:
    using QComboBox::QComboBox;

protected:
    void wheelEvent(QWheelEvent* event) override
    {
        if (hasFocus())
            QComboBox::wheelEvent(event);
        else
            event->ignore();
    }
};

QComboBox* makeComboBox(QWidget* parent)
{
    auto* box = new QuietComboBox(parent);
    box->setFocusPolicy(Qt::StrongFocus);
    box->setMinimumHeight(FieldHeight);
    box->setMinimumWidth(FieldWidth);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(ShownCharacters);
    box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    box->setItemDelegate(new RoomyDelegate(box));
    return box;
}

// --- Entries that show what they name

QIcon patchOf(std::uint32_t colour, qreal scale)
{
    const QRect area(0, 0, PatchSize, PatchSize);
    QPixmap patch(area.size() * scale);
    patch.setDevicePixelRatio(scale);
    QPainter painter(&patch);
    painter.fillRect(area, colourOf(colour));
    painter.setPen(Qt::gray);
    painter.drawRect(area.adjusted(0, 0, -1, -1));
    painter.end();
    return QIcon(patch);
}

void showColours(QComboBox& box)
{
    if (workbook == nullptr)
        return;
    for (int entry = 0; entry < std::min(box.count(), ColourEntryCount); ++entry)
        box.setItemIcon(entry, patchOf(workbook->palette[colourOfEntry(entry) - FirstPaletteColour],
                                       box.devicePixelRatioF()));
}

// A face of symbols shows its own name as a row of them.
bool writesItsName(const QString& face)
{
    const auto systems = QFontDatabase::writingSystems(face);
    if (!systems.contains(QFontDatabase::Latin) || systems.contains(QFontDatabase::Symbol))
        return false;
    FontLook look = interfaceFontLook();
    look.face = fromQt(face);
    const QFontMetrics metrics(fontOf(look));
    return std::all_of(face.begin(), face.end(),
                       [&metrics](QChar character) { return metrics.inFont(character); });
}

void showFaces(QComboBox& box)
{
    FontLook look = interfaceFontLook();
    for (int entry = 0; entry < box.count(); ++entry) {
        const QString face = box.itemText(entry);
        if (!writesItsName(face))
            continue;
        look.face = fromQt(face);
        box.setItemData(entry, fontOf(look), Qt::FontRole);
    }
}

void fillComboBox(QComboBox& box, const Control& control, EntryLook look)
{
    const QStringList texts = entryTexts(control);
    QStringList present;
    for (int entry = 0; entry < box.count(); ++entry)
        present.append(box.itemText(entry));
    if (present == texts)
        return;
    box.clear();
    box.addItems(texts);
    if (look == EntryLook::Colours)
        showColours(box);
    else if (look == EntryLook::Faces)
        showFaces(box);
    const int wanted = box.view()->sizeHintForColumn(0) + box.view()->sizeHintForRow(0);
    box.view()->setMinimumWidth(std::min(wanted, PopupWidthMax));
}

} // namespace

// --- In full sight

ListView::ListView(DialogModel& dialog, const Control& control, QWidget* parent)
    : ControlView(dialog, control, new QuietListView(parent))
{
    view()->setModel(new QStringListModel(view()));
    view()->setItemDelegate(new RoomyDelegate(view()));
    view()->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view()->setSelectionMode(QAbstractItemView::SingleSelection);
    view()->setMinimumHeight(ListHeight);
    view()->setMinimumWidth(2 * FieldWidth);
    QObject::connect(view()->selectionModel(), &QItemSelectionModel::selectionChanged, view(),
                     [this] { selectionMoved(); });
    QObject::connect(view(), &QListView::doubleClicked, view(), [this](const QModelIndex& index) {
        settle(this->dialog().doubleTap(id(), index.row()));
    });
}

QListView* ListView::view() const
{
    return static_cast<QListView*>(widget());
}

QStringListModel* ListView::entries() const
{
    return static_cast<QStringListModel*>(view()->model());
}

void ListView::selectionMoved()
{
    if (isShowing())
        return;
    const QModelIndexList selected = view()->selectionModel()->selectedIndexes();
    // By hand an entry can be chosen but not left.
    settle(!selected.isEmpty() && dialog().choose(id(), selected.front().row()));
}

void ListView::display()
{
    const QStringList texts = entryTexts(control());
    const QStringList present = entries()->stringList();
    if (texts.size() != present.size()) {
        entries()->setStringList(texts);
    } else {
        // One by one, so that a view which edits an entry stays at it.
        for (int entry = 0; entry < texts.size(); ++entry) {
            if (texts[entry] != present[entry])
                entries()->setData(entries()->index(entry), texts[entry]);
        }
    }
    if (control().selected == NoEntry) {
        view()->clearSelection();
        view()->setCurrentIndex({});
        return;
    }
    const QModelIndex chosen = entries()->index(control().selected);
    if (!view()->selectionModel()->isSelected(chosen))
        view()->setCurrentIndex(chosen);
    view()->scrollTo(chosen);
}

// --- With labels that can be edited

// The line in which a label is edited tells the model how that ends, however it does.
class LabelListView::Editing : public RoomyDelegate {
public:
    Editing(LabelListView& list, QObject* parent) : RoomyDelegate(parent), list_(list)
    {
        connect(this, &QAbstractItemDelegate::closeEditor, this,
                [this] { list_.cancelLabelEdit(); });
    }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex&) const override
    {
        auto* line = new QLineEdit(parent);
        line->setFrame(true);
        if (list_.control().form->textMax > 0)
            line->setMaxLength(list_.control().form->textMax);
        return line;
    }

    void setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex&) const override
    {
        list_.endLabelEdit(static_cast<QLineEdit*>(editor)->text());
    }

private:
    LabelListView& list_;
};

class LabelListView::Keys : public QObject {
public:
    Keys(LabelListView& list, QObject* parent) : QObject(parent), list_(list) {}

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress ||
            static_cast<QKeyEvent*>(event)->key() != Qt::Key_F2)
            return false;
        list_.dialog().editLabel(list_.id());
        return true;
    }

private:
    LabelListView& list_;
};

LabelListView::LabelListView(DialogModel& dialog, const Control& control, QWidget* parent)
    : ListView(dialog, control, parent)
{
    view()->setItemDelegate(new Editing(*this, view()));
    view()->installEventFilter(new Keys(*this, view()));
}

void LabelListView::beginLabelEdit()
{
    if (editor() != nullptr)
        return;
    const QModelIndex chosen = view()->model()->index(control().selected, 0);
    view()->scrollTo(chosen);
    view()->setFocus(Qt::OtherFocusReason);
    view()->edit(chosen);
}

void LabelListView::display()
{
    ListView::display();
    // The model has ended the editing by itself: what stands in the line counts for nothing.
    if (ending_ || dialog().labelInEdit() == id())
        return;
    if (QWidget* line = editor(); line != nullptr)
        emit view()->itemDelegate()->closeEditor(line, QAbstractItemDelegate::RevertModelCache);
}

// One that was closed stays hidden until it is deleted.
QWidget* LabelListView::editor() const
{
    for (auto* line : view()->viewport()->findChildren<QLineEdit*>()) {
        if (!line->isHidden())
            return line;
    }
    return nullptr;
}

void LabelListView::endLabelEdit(const QString& text)
{
    if (dialog().labelInEdit() != id())
        return;
    ending_ = true;
    dialog().endLabelEdit(fromQt(text));
    ending_ = false;
}

void LabelListView::cancelLabelEdit()
{
    if (!isShowing() && dialog().labelInEdit() == id())
        dialog().cancelLabelEdit();
}

// --- Folded

ChoiceView::ChoiceView(DialogModel& dialog, const Control& control, QWidget* parent)
    : ControlView(dialog, control, makeComboBox(parent))
{
    const auto* box = static_cast<QComboBox*>(widget());
    QObject::connect(box, &QComboBox::activated, box,
                     [this](int entry) { settle(this->dialog().choose(id(), entry)); });
}

void ChoiceView::display()
{
    auto& box = *static_cast<QComboBox*>(widget());
    fillComboBox(box, control(), entryLookOf(dialog().number(), id()));
    box.setCurrentIndex(control().selected);
}

ComboView::ComboView(DialogModel& dialog, const Control& control, QWidget* parent)
    : LineOfText(dialog, control, makeComboBox(parent))
{
    auto* box = static_cast<QComboBox*>(widget());
    box->setEditable(true);
    // What is typed stays as it is typed: nothing is completed, matched or kept.
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setDuplicatesEnabled(true);
    box->setCompleter(nullptr);
    watch(box->lineEdit());
    QObject::connect(box, &QComboBox::activated, box,
                     [this](int entry) { settle(this->dialog().choose(id(), entry)); });
}

void ComboView::display()
{
    auto& box = *static_cast<QComboBox*>(widget());
    // Both change the text of the line as well, and with it the place of the caret.
    const QString text = box.currentText();
    const int place = box.lineEdit()->cursorPosition();
    fillComboBox(box, control(), EntryLook::Plain);
    if (box.currentIndex() != control().selected)
        box.setCurrentIndex(control().selected);
    if (box.currentText() != text) {
        box.setEditText(text);
        box.lineEdit()->setCursorPosition(place);
    }
    showLine();
}

} // namespace vorn::qt
