#include "qt/dialogs/filedialog.h"

#include "files/filenames.h"
#include "qt/dialogs/dialogs.h"
#include "qt/dialogs/fileproperties.h"
#include "qt/dialogs/widgets.h"
#include "qt/strings.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLayout>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QSplitter>
#include <QStandardPaths>

#include <algorithm>

namespace vorn::qt {

namespace {

constexpr int NarrowRoom = 480; // less wide than the toolkit's dialog is as a whole
constexpr QSize WantedSize(560, 400);
constexpr int PlacesWidth = 130; // of the folders at the side

// "Text Files (*.csv)" and "*.csv;*.txt" become "Text Files (*.csv *.txt)", from which the toolkit
// reads the patterns.
QString nameFilter(const FileFilter& filter)
{
    QString text = toQt(filter.text);
    const qsizetype patterns = text.indexOf(QStringLiteral(" ("));
    if (patterns >= 0)
        text.truncate(patterns);
    return text + QStringLiteral(" (") + toQt(filter.patterns).replace(u';', u' ') + u')';
}

// The first of them that is there: that of the name, that of the question, the user's documents.
QString firstFolder(const FileQuestion& question)
{
    const QStringList folders = {
        toQt(folderOfPath(question.path)),
        toQt(question.folder),
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
    };
    for (const QString& folder : folders) {
        if (!folder.isEmpty() && QFileInfo(folder).isDir())
            return folder;
    }
    return QDir::homePath();
}

QString wordOf(FileQuestion::Purpose purpose)
{
    switch (purpose) {
    case FileQuestion::Open:
        return FileDialog::tr("Open");
    case FileQuestion::Save:
        return FileDialog::tr("Save");
    case FileQuestion::Choose:
    case FileQuestion::Properties:
        break;
    }
    return FileDialog::tr("Choose");
}

} // namespace

// The desktop's own dialog would not do: it asks about existing files itself, completes names by
// its own rules and does not tell when another type is chosen.
FileDialog::FileDialog(QWidget* parent, const FileQuestion& question, QSize room)
    : QFileDialog(parent, toQt(question.title))
{
    setOptions(DontUseNativeDialog | DontConfirmOverwrite | DontUseCustomDirectoryIcons);
    // Whether the file has to be there is for whoever asks to say.
    setFileMode(AnyFile);
    setAcceptMode(question.purpose == FileQuestion::Save ? AcceptSave : AcceptOpen);
    setDirectory(firstFolder(question));
    // Where there is little room the patterns are left to the tool tip.
    setOption(HideNameFilterDetails, room.width() < NarrowRoom);
    QStringList filters;
    for (const FileFilter& filter : question.filters)
        filters.append(nameFilter(filter));
    setNameFilters(filters);
    if (question.filterIndex >= 1 && question.filterIndex <= static_cast<int>(filters.size()))
        selectNameFilter(filters[question.filterIndex - 1]);
    setLabelText(Accept, wordOf(question.purpose));
    name_ = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    types_ = findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    tellTypes(filters);
    name_->setCompleter(nullptr);
    name_->setText(toQt(nameOfPath(question.path)));
    name_->selectAll();
    name_->setFocus();
    if (question.purpose == FileQuestion::Save)
        connect(types_, &QComboBox::textActivated, this, [this] { followType(); });
    if (room.width() < NarrowRoom)
        makeNarrow();
    else
        findChild<QSplitter*>(QStringLiteral("splitter"))
            ->setSizes({PlacesWidth, WantedSize.width() - PlacesWidth});
    setMaximumSize(room);
    resize(WantedSize.boundedTo(room));
}

// On a small screen the list of files is what counts.
void FileDialog::makeNarrow()
{
    for (const char* part : {"sidebar", "backButton", "forwardButton", "listModeButton",
                             "detailModeButton", "lookInLabel", "fileNameLabel", "fileTypeLabel"}) {
        if (auto* widget = findChild<QWidget*>(QLatin1String(part)))
            widget->hide();
    }
    for (QComboBox* box : findChildren<QComboBox*>()) {
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(1);
        box->setMinimumWidth(FieldWidth);
    }
    for (QPushButton* button : findChildren<QPushButton*>()) {
        const int text = button->fontMetrics().horizontalAdvance(button->text());
        button->setFixedWidth(std::max(ButtonWidth, text + 2 * Margin));
    }
    setViewMode(List);
    findChild<QListView*>(QStringLiteral("listView"))->setWrapping(false);
    layout()->setContentsMargins(Margin, Margin, Margin, Margin);
    layout()->setSpacing(Gap);
    layout()->setSizeConstraint(QLayout::SetNoConstraint);
    setMinimumSize(0, 0);
}

// All of the type's text, of which the box may have to leave out some.
void FileDialog::tellTypes(const QStringList& filters)
{
    for (int type = 0; type < types_->count(); ++type)
        types_->setItemData(type, filters[type], Qt::ToolTipRole);
    const auto tell = [this] {
        types_->setToolTip(types_->currentData(Qt::ToolTipRole).toString());
    };
    connect(types_, &QComboBox::currentIndexChanged, types_, tell);
    tell();
}

int FileDialog::filterIndex() const
{
    return types_->currentIndex() + 1;
}

// The name that is shown goes with the type. A folder before it is no part of it, whatever dots it
// has.
void FileDialog::followType()
{
    const std::u16string text = fromQt(name_->text());
    if (text.empty())
        return;
    const std::u16string folder(folderOfPath(text));
    name_->setText(toQt(folder + nameForFilter(nameOfPath(text), filterIndex())));
}

// Takes the name as it stands: the toolkit would read quotation marks in it as a list of names.
void FileDialog::accept()
{
    QString text = name_->text();
    if (text.isEmpty())
        return;
    if (text == u"~" || text.startsWith(QStringLiteral("~/")))
        text.replace(0, 1, QDir::homePath());
    const QString path = QDir::cleanPath(directory().absoluteFilePath(text));
    if (QFileInfo(path).isDir()) {
        setDirectory(path);
        name_->clear();
        return;
    }
    path_ = fromQt(path);
    QDialog::accept();
}

bool showFileDialog(QWidget* parent, FileQuestion& question)
{
    QWidget* owner = ownerOf(parent);
    if (question.purpose == FileQuestion::Properties) {
        showFileProperties(owner, question);
        return false;
    }
    const QPointer<FileDialog> dialog = new FileDialog(owner, question, roomFor(owner));
    const bool chosen = dialog->exec() == QDialog::Accepted && !dialog.isNull();
    if (chosen) {
        question.path = dialog->path();
        question.filterIndex = dialog->filterIndex();
    }
    delete dialog.data();
    return chosen;
}

} // namespace vorn::qt
