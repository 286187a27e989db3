#include "qt/dialogs/filedialog.h"

#include "qt/dialogs/fileproperties.h"
#include "qt/dialoguser.h"
#include "shell/filedialogs.h"
#include "support/tempfolder.h"

#include <QComboBox>
#include <QDir>
#include <QFileSystemModel>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QStandardPaths>

#include <filesystem>

namespace vorn::qt {
namespace {

class FileDialogs : public DialogWindowTest {
protected:
    FileDialogs()
    {
        // What the toolkit remembers of its dialogs is not the user's here.
        QStandardPaths::setTestModeEnabled(true);
        question.title = u"Save File As";
        question.purpose = FileQuestion::Save;
        question.filters = {
            {u"Vorn Files (*.vn)",          u"*.vn" },
            {u"Pocket Excel Files (*.pxl)", u"*.pxl"},
            {u"Excel Files (*.xls)",        u"*.xls"}
        };
        question.folder = folder.path("");
    }

    bool ask(const DialogUser::Step& step)
    {
        willDo(step);
        return user.askFile(question);
    }

    static QLineEdit& name(QDialog& window)
    {
        return *window.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    }
    static QComboBox& types(QDialog& window)
    {
        return *window.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    }
    static void chooseType(QDialog& window, Qt::Key toward)
    {
        QTest::keyClick(&types(window), toward);
    }
    static void enter(QDialog& window, const QString& text)
    {
        name(window).selectAll();
        QTest::keyClicks(&name(window), text);
        QTest::keyClick(&name(window), Qt::Key_Return);
    }

    // The names in the list, once the folder has been read.
    static QStringList shownNames(QDialog& window, int count)
    {
        auto* list = window.findChild<QListView*>(QStringLiteral("listView"));
        QStringList names;
        const bool read = QTest::qWaitFor(
            [&] {
                names.clear();
                for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row)
                    names.append(list->model()->index(row, 0, list->rootIndex()).data().toString());
                return names.size() == count;
            },
            5000);
        EXPECT_TRUE(read) << names.join(u' ').toStdString();
        names.sort();
        return names;
    }

    TempFolder folder;
    FileQuestion question;
};

TEST_F(FileDialogs, beginWithWhatTheQuestionSays)
{
    question.path = folder.path("budget.pxl");
    question.filterIndex = 2;
    EXPECT_FALSE(ask([&](QDialog& window) {
        EXPECT_EQ(window.windowTitle(), u"Save File As");
        EXPECT_EQ(name(window).text(), u"budget.pxl");
        EXPECT_EQ(name(window).selectedText(), u"budget.pxl");
        EXPECT_EQ(window.focusWidget(), &name(window));
        EXPECT_EQ(types(window).currentText(), u"Pocket Excel Files (*.pxl)");
        EXPECT_EQ(types(window).count(), 3);
        window.reject();
    }));
    EXPECT_EQ(question.path, folder.path("budget.pxl")) << "as it was, after Cancel";
    EXPECT_EQ(question.filterIndex, 2);
}

TEST_F(FileDialogs, answerWithAPathAndAFilter)
{
    const struct {
        const char* behaviour;
        const char* typed;
        const char* chosen;
    } cases[] = {
        {"a name in the folder",                  "a.vn",           "a.vn"          },
        {"one without an extension",              "plain",          "plain"         },
        {"which nobody completes but the system", "dot.",           "dot."          },
        {"a name with blanks",                    "my own file.vn", "my own file.vn"},
        {"with signs that are HTML",              "<b>&amp;.vn",    "<b>&amp;.vn"   },
        {"with quotation marks",                  "a\"b\" c.vn",    "a\"b\" c.vn"   },
        {"with patterns",                         "a*?.vn",         "a*?.vn"        },
        {"in a folder below",                     "sub/a.vn",       "sub/a.vn"      },
        {"in one that is not there",              "none/a.vn",      "none/a.vn"     },
        {"and back out of it",                    "sub/../a.vn",    "a.vn"          },
    };
    std::filesystem::create_directory(folder.file("sub"));
    for (const auto& c : cases) {
        question.path = u"";
        question.filterIndex = 0;
        EXPECT_TRUE(ask([&](QDialog& window) {
            enter(window, QString::fromUtf8(c.typed));
            EXPECT_FALSE(window.isVisible()) << c.behaviour;
        })) << c.behaviour;
        EXPECT_EQ(question.path, folder.path(c.chosen)) << c.behaviour;
        EXPECT_EQ(question.filterIndex, 1) << c.behaviour;
    }
}

TEST_F(FileDialogs, takeAPathFromTheRoot)
{
    const TempFolder other;
    EXPECT_TRUE(ask([&](QDialog& window) { enter(window, toQt(other.path("x.vn"))); }));
    EXPECT_EQ(question.path, other.path("x.vn"));
}

TEST_F(FileDialogs, openAFolderThatIsTyped)
{
    std::filesystem::create_directory(folder.file("sub"));
    EXPECT_TRUE(ask([&](QDialog& window) {
        enter(window, QStringLiteral("sub"));
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(name(window).text(), QString());
        QTest::keyClick(&name(window), Qt::Key_Return);
        EXPECT_TRUE(window.isVisible()) << "no name is no file";
        enter(window, QStringLiteral("a.vn"));
    }));
    EXPECT_EQ(question.path, folder.path("sub/a.vn"));
}

TEST_F(FileDialogs, doNotAskAboutFilesThatAreThere)
{
    folder.write("old.vn", "old");
    EXPECT_TRUE(ask([&](QDialog& window) {
        enter(window, QStringLiteral("old.vn"));
        EXPECT_FALSE(window.isVisible());
    }));
    EXPECT_EQ(user.titles.size(), 1U) << "the system asks itself";
    EXPECT_EQ(folder.read("old.vn"), "old");
}

TEST_F(FileDialogs, doNotAskForFilesThatAreNotThere)
{
    question.purpose = FileQuestion::Open;
    EXPECT_TRUE(ask([&](QDialog& window) {
        enter(window, QStringLiteral("missing.vn"));
        EXPECT_FALSE(window.isVisible());
    })) << "the system says so itself";
    EXPECT_EQ(question.path, folder.path("missing.vn"));
}

TEST_F(FileDialogs, giveTheNameTheExtensionOfAnotherType)
{
    const struct {
        const char* behaviour;
        const char* before;
        const char* after;
    } cases[] = {
        {"an extension is another then",            "budget.vn",      "budget.xls"    },
        {"a name without one gets one",             "budget",         "budget.xls"    },
        {"all from the first dot on goes",          "a.b.c",          "a.xls"         },
        {"but no dot of a folder",                  "/tmp/a.b/c.d.e", "/tmp/a.b/c.xls"},
        {"where there is no name there is no file", "",               ""              },
    };
    for (const auto& c : cases) {
        ask([&](QDialog& window) {
            name(window).setText(QString::fromUtf8(c.before));
            chooseType(window, Qt::Key_End);
            EXPECT_EQ(name(window).text(), QString::fromUtf8(c.after)) << c.behaviour;
        });
    }
}

TEST_F(FileDialogs, answerWithTheTypeThatWasChosen)
{
    question.path = folder.path("budget.vn");
    EXPECT_TRUE(ask([&](QDialog& window) {
        chooseType(window, Qt::Key_Down);
        QTest::keyClick(&name(window), Qt::Key_Return);
    }));
    EXPECT_EQ(question.path, folder.path("budget.pxl"));
    EXPECT_EQ(question.filterIndex, 2);
}

TEST_F(FileDialogs, showTheFilesOfTheType)
{
    for (const char* file : {"a.vn", "b.VN", "c.pxl", "d.xls", "e.csv", "f.txt", "g\"h.vn"})
        folder.write(file, "");
    question = openQuestion();
    question.folder = folder.path("");
    question.filterIndex = 0;
    EXPECT_TRUE(ask([&](QDialog& window) {
        EXPECT_EQ(types(window).currentText(), u"All Vorn Files (*.vn *.pxl *.xls *.csv)");
        EXPECT_EQ(shownNames(window, 6).size(), 6);
        chooseType(window, Qt::Key_Down);
        EXPECT_EQ(shownNames(window, 3),
                  (QStringList{QStringLiteral("a.vn"), QStringLiteral("b.VN"),
                               QStringLiteral("g\"h.vn")}));
        static_cast<QFileDialog&>(window).setViewMode(QFileDialog::List);
        auto* list = window.findChild<QListView*>(QStringLiteral("listView"));
        list->setFocus();
        for (int row = 0; row < 3; ++row) {
            const QModelIndex entry = list->model()->index(row, 0, list->rootIndex());
            if (entry.data().toString() != u"g\"h.vn")
                continue;
            const QPoint place = list->visualRect(entry).center();
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
            EXPECT_EQ(name(window).text(), u"g\"h.vn");
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
            EXPECT_FALSE(window.isVisible());
            break;
        }
    }));
    EXPECT_EQ(question.path, folder.path("g\"h.vn"));
    EXPECT_EQ(question.filterIndex, 2);
}

TEST_F(FileDialogs, beginInAFolderThatIsThere)
{
    const struct {
        const char* behaviour;
        std::u16string folder;
        std::u16string path;
    } cases[] = {
        {"that of the question",         folder.path(""), u""                 },
        {"that of the name goes before", u"/",            folder.path("x.vn") },
        {"unless it is not there",       folder.path(""), u"/no/such/place.vn"},
        {"or is one of another machine", folder.path(""), u"\\C_Drive\\x.vn"  },
    };
    for (const auto& c : cases) {
        question.folder = c.folder;
        question.path = c.path;
        ask([&](QDialog& window) {
            EXPECT_EQ(static_cast<QFileDialog&>(window).directory().absolutePath() + u'/',
                      toQt(folder.path("")))
                << c.behaviour;
        });
    }
    question.folder = u"\\C_Drive\\C_MyDocs\\";
    question.path = u"";
    ask([&](QDialog& window) {
        EXPECT_TRUE(static_cast<QFileDialog&>(window).directory().exists());
    });
}

TEST_F(FileDialogs, fitOnAHandheld)
{
    question.filters.push_back({u"Files of a type with a rather long name", u"*.a;*.b;*.c;*.d"});
    for (const FileQuestion::Purpose purpose : {FileQuestion::Save, FileQuestion::Open}) {
        question.purpose = purpose;
        for (int file = 0; file < 30; ++file)
            folder.write("file number " + std::to_string(file) + ".vn", "");
        FileDialog dialog(nullptr, question, QSize(240, 320));
        dialog.show();
        EXPECT_EQ(shownNames(dialog, 30).size(), 30);
        EXPECT_LE(dialog.width(), 240);
        EXPECT_LE(dialog.height(), 320);
        for (const QWidget* part : dialog.findChildren<QWidget*>()) {
            if (part->isVisible() && part->window() == &dialog &&
                (qobject_cast<const QPushButton*>(part) != nullptr ||
                 qobject_cast<const QLineEdit*>(part) != nullptr)) {
                EXPECT_LE(part->mapTo(&dialog, QPoint(part->width(), 0)).x(), dialog.width());
                EXPECT_LE(part->mapTo(&dialog, QPoint(0, part->height())).y(), dialog.height());
            }
        }
        const QString pictures = qEnvironmentVariable("VORN_PICTURES");
        if (!pictures.isEmpty())
            dialog.grab().save(pictures + QStringLiteral("/file-%1-240.png").arg(int{purpose}));
    }
}

TEST_F(FileDialogs, nameTheTypesInShortOnAHandheld)
{
    question.filters.push_back({u"All Files", u"*.vn;*.pxl;*.csv"});
    question.filterIndex = 4;
    FileDialog dialog(nullptr, question, QSize(240, 320));
    dialog.show();
    QComboBox& box = types(dialog);
    EXPECT_EQ(box.currentText(), u"All Files");
    EXPECT_EQ(box.toolTip(), u"All Files (*.vn *.pxl *.csv)");
    for (const char* name : {"a.vn", "b.pxl", "c.csv", "d.txt"})
        folder.write(name, "");
    EXPECT_EQ(shownNames(dialog, 3), (QStringList{"a.vn", "b.pxl", "c.csv"}));
    chooseType(dialog, Qt::Key_Up);
    EXPECT_EQ(box.currentText(), u"Excel Files");
    EXPECT_EQ(box.toolTip(), u"Excel Files (*.xls)");
    EXPECT_EQ(dialog.filterIndex(), 3);
}

TEST_F(FileDialogs, saveWithTheSystem)
{
    application.documentFolder = folder.path("");
    willDo([](QDialog& window) { enter(window, QStringLiteral("first")); });
    EXPECT_TRUE(application.SaveDocument(true));
    EXPECT_TRUE(std::filesystem::exists(folder.file("first.vn")));
    willDo([](QDialog& window) { enter(window, QStringLiteral("first.vn")); },
           [](QDialog& box) { QTest::keyClick(&box, Qt::Key_N); },
           [](QDialog& window) { window.reject(); });
    EXPECT_FALSE(application.SaveDocument(true));
    ASSERT_EQ(user.texts.size(), 1U);
    EXPECT_EQ(user.texts[0],
              folder.path("first.vn") + u" already exists. Do you want to replace it?");
}

// --- What is known of a file

TEST_F(FileDialogs, tellWhatIsKnownOfAFile)
{
    question = propertyQuestion(folder.write("<i>.vn", std::string(2000, 'x')));
    EXPECT_FALSE(ask([&](QDialog& window) {
        const auto says = [&](const char* fact) {
            const auto* label = window.findChild<QLabel*>(QLatin1String(fact));
            EXPECT_NE(label, nullptr) << fact;
            return label == nullptr ? QString() : label->text().remove(QChar(0x200B));
        };
        EXPECT_EQ(window.windowTitle(), u"Property");
        EXPECT_EQ(says("Name:"), u"<i>.vn");
        EXPECT_EQ(says("Folder:") + u'/', toQt(folder.path("")));
        EXPECT_TRUE(says("Size:").contains(QLocale().toString(2000)));
        EXPECT_FALSE(says("Changed:").isEmpty());
        EXPECT_FALSE(says("Protected:").isEmpty());
        QTest::keyClick(&window, Qt::Key_Return);
        EXPECT_FALSE(window.isVisible());
    }));
    EXPECT_EQ(question.path, folder.path("<i>.vn"));
}

TEST_F(FileDialogs, tellThatAFileIsNotThere)
{
    const FileFacts facts = factsOfFile(folder.path("none.vn"));
    ASSERT_EQ(facts.size(), 3U);
    EXPECT_EQ(facts[0].second, u"none.vn");
    EXPECT_EQ(facts[2].second, u"There is no such file.");
}

} // namespace
} // namespace vorn::qt
