#include "Platform/Desktop/FileDialogSavePanel.h"

#include "Harness/Desktop.h"
#include "Harness/Waiting.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QWindow>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using Platform::FileDialogSavePanel;
using testing::ElementsAre;

namespace {

/// The panel on a desktop with a window manager, asked by a window of the program.
class FileDialogSavePanelTest : public testing::Test {
protected:
    void SetUp() override
    {
        window->setObjectName(u"window"_qs);
        window->setStyleSheet(u"QWidget { color: red }"_qs);
        window->show();
        window->activateWindow();
        ASSERT_TRUE(Harness::waitFor([this] { return window->isActiveWindow(); }));
        panel.emplace();
    }

    void ask(const QString& name = u"suggested.png"_qs)
    {
        panel->ask(name, [this](const std::optional<std::filesystem::path>& file) {
            answers.push_back(file ? file->string() : "none");
        });
    }

    static QFileDialog* dialog()
    {
        for (auto* const widget : QApplication::topLevelWidgets())
            if (auto* const dialog = qobject_cast<QFileDialog*>(widget);
                dialog != nullptr && dialog->isVisible())
                return dialog;
        return nullptr;
    }

    static bool waitForDialog()
    {
        return Harness::waitFor([] { return dialog() != nullptr && dialog()->isActiveWindow(); });
    }

    /// Types a name into the open panel, and takes it.
    static void pick(const QString& name)
    {
        ASSERT_TRUE(waitForDialog());
        auto* const field = dialog()->findChild<QLineEdit*>();
        field->setText(name);
        QTest::keyClick(field, Qt::Key_Return);
    }

    bool waitForAnswers(size_t count) const
    {
        return Harness::waitFor([this, count] { return answers.size() >= count; });
    }

    std::string path(const char* name) const
    {
        return folder.filePath(QString::fromLatin1(name)).toStdString();
    }

public:
    const Harness::Desktop desktop;
    const Harness::Desktop::Program windowManager = desktop.startWindowManager();
    const QTemporaryDir folder;
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
    std::vector<std::string> answers;
    std::optional<FileDialogSavePanel> panel;
};

TEST_F(FileDialogSavePanelTest, staysAboveTheActiveWindowButTakesNothingFromIt)
{
    ask();
    EXPECT_TRUE(answers.empty());
    ASSERT_TRUE(waitForDialog());
    EXPECT_EQ(dialog()->windowHandle()->transientParent(), window->windowHandle());
    EXPECT_TRUE(dialog()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_FALSE(dialog()->isModal());
    const auto* const field = dialog()->findChild<QLineEdit*>();
    EXPECT_EQ(field->text(), u"suggested.png"_qs);
    EXPECT_NE(field->palette().color(QPalette::Text), QColor(Qt::red));
}

TEST_F(FileDialogSavePanelTest, answersWithAPngInTheFolderUsedLast)
{
    ask();
    pick(folder.filePath(u"first"_qs));
    ASSERT_TRUE(waitForAnswers(1));
    ask();
    pick(u"second.jpg"_qs);
    ASSERT_TRUE(waitForAnswers(2));
    ask();
    pick(u"THIRD.PNG"_qs);
    ASSERT_TRUE(waitForAnswers(3));
    EXPECT_THAT(answers, ElementsAre(path("first.png"), path("second.jpg.png"), path("THIRD.PNG")));
}

TEST_F(FileDialogSavePanelTest, answersOnceHoweverItGoes)
{
    const auto check = [this](const char* name, const std::function<void()>& end) {
        SCOPED_TRACE(name);
        answers.clear();
        ask();
        ASSERT_TRUE(waitForDialog());
        end();
        ASSERT_TRUE(waitForAnswers(1));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_THAT(answers, ElementsAre("none"));
        EXPECT_EQ(dialog(), nullptr);
    };
    check("escape", [] { QTest::keyClick(dialog(), Qt::Key_Escape); });
    check("closed", [] { dialog()->windowHandle()->close(); });
    check("deleted", [] { delete dialog(); });
    check("panelGone", [this] { panel.reset(); });
}

TEST_F(FileDialogSavePanelTest, outlivesTheWindowThatAsked)
{
    ask();
    ASSERT_TRUE(waitForDialog());
    window.reset();
    QCoreApplication::processEvents();
    ASSERT_NE(dialog(), nullptr);
    EXPECT_TRUE(answers.empty());
    pick(folder.filePath(u"late.png"_qs));
    ASSERT_TRUE(waitForAnswers(1));
    EXPECT_THAT(answers, ElementsAre(path("late.png")));
}

TEST_F(FileDialogSavePanelTest, theLastWhoAskedGetsTheAnswerOfTheOpenPanel)
{
    ask();
    ASSERT_TRUE(waitForDialog());
    const auto* const open = dialog();
    ask();
    EXPECT_EQ(dialog(), open);
    EXPECT_THAT(answers, ElementsAre("none"));
    pick(folder.filePath(u"picked.png"_qs));
    ASSERT_TRUE(waitForAnswers(2));
    EXPECT_THAT(answers, ElementsAre("none", path("picked.png")));
}

TEST_F(FileDialogSavePanelTest, replacesNoFileUnasked)
{
    QFile other(folder.filePath(u"a.jpg.png"_qs));
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    ask();
    pick(folder.filePath(u"a.jpg"_qs));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_TRUE(waitForDialog());
    EXPECT_EQ(dialog()->findChild<QLineEdit*>()->text(), u"a.jpg.png"_qs);
    EXPECT_TRUE(answers.empty());
    pick(u"b.png"_qs);
    ASSERT_TRUE(waitForAnswers(1));
    EXPECT_THAT(answers, ElementsAre(path("b.png")));
}

} // namespace
