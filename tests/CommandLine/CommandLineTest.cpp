// The real program, as a shell starts it.

#include "Harness/Folder.h"
#include "Harness/Pictures.h"
#include "Harness/Waiting.h"
#include "Harness/XServer.h"
#include "Platform/TextLayout/Canvas.h"

#include <QProcess>
#include <QRegularExpression>

#include <csignal>
#include <gtest/gtest.h>

namespace {

constexpr auto quiet = "";

/// What a command left behind, with every time in it as "TIME".
struct Outcome {
    QByteArray output;
    QByteArray error;
    int exitCode = -1; ///< As a shell tells it: 128 and more for a signal.
};

QByteArray withoutTimes(const QByteArray& text)
{
    static const QRegularExpression time(
        u"\\bin \\d+(ms|\\.\\ds)( — \\d+ model loads?)?|after \\d+(ms|\\.\\ds)"_qs);
    return QString::fromUtf8(text).replace(time, u"TIME"_qs).toUtf8();
}

class CommandLineTest : public testing::Test {
protected:
    void SetUp() override
    {
        const auto save = [this](const Drawing::Canvas& canvas, const char* name) {
            auto png = Harness::encoded(canvas.image, "png");
            folder.fileWith(png, name);
            return png;
        };
        const auto page = save(Drawing::Canvas({600, 120})
                                   .write({20, 45}, u"Hello reader"_qs, {.size = 28})
                                   .write({20, 95}, u"Second line"_qs, {.size = 28}),
            "page.png");
        folder.fileWith(page.left(page.size() / 2), "cut.png");
        save(Drawing::Canvas({200, 100}), "blank.png");
        std::filesystem::create_directory(folder.pathOf("folder"));
    }

    /// Runs a line of shell in the folder of the pictures, with $LUMENOTE the program.
    Outcome run(const QByteArray& script) const
    {
        QProcess shell;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LUMENOTE"_qs, QStringLiteral(LUMENOTE_PROGRAM));
        environment.insert(u"DISPLAY"_qs, u":no-such-display"_qs);
        environment.remove(u"QT_QPA_PLATFORM"_qs);
        shell.setProcessEnvironment(environment);
        shell.setWorkingDirectory(path());
        shell.start(u"bash"_qs, {u"-c"_qs, QString::fromUtf8(script)});
        EXPECT_TRUE(shell.waitForFinished(Harness::patience)) << script.toStdString();
        return {.output = shell.readAllStandardOutput(),
            .error = withoutTimes(shell.readAllStandardError()),
            .exitCode = shell.exitStatus() == QProcess::NormalExit ? shell.exitCode() : -1};
    }

    void expect(const QByteArray& script, int exitCode, const QByteArray& output,
        const QByteArray& error) const
    {
        SCOPED_TRACE(script.toStdString());
        const auto outcome = run(script);
        EXPECT_EQ(outcome.exitCode, exitCode);
        EXPECT_EQ(outcome.output, output);
        EXPECT_EQ(outcome.error, error);
    }

    QString path() const { return QString::fromStdString(folder.path()); }

public:
    const Harness::Folder folder;
};

constexpr auto read = "lumenote: OCR 2 lines TIME\n";
constexpr auto text = "Hello reader\nSecond line\n";
constexpr auto development = "Lumenote (development build — no bundle)\n";
constexpr auto usage = "usage: lumenote --ocr <image>\n";
constexpr auto notWritten = "lumenote: couldn't write the text\n";

QByteArray unread(const QByteArray& path)
{
    return "lumenote: couldn't read image at " + path + '\n';
}

QByteArray undecoded(const QByteArray& path)
{
    return "lumenote: couldn't decode image at " + path + '\n';
}

TEST_F(CommandLineTest, theFirstModeThatCountsIsTaken)
{
    expect("$LUMENOTE --ocr", 64, quiet, usage);
    expect("$LUMENOTE --version --ocr gone.png", 66, quiet, unread("gone.png"));
    expect("$LUMENOTE --ocr --ocr page.png", 66, quiet, unread("--ocr"));
    expect("exec -a --ocr $LUMENOTE gone.png", 66, quiet, unread("gone.png"));
    expect("$LUMENOTE --version", 0, development, quiet);
    expect("$LUMENOTE --warm-up --version", 0, development, quiet);
}

TEST_F(CommandLineTest, picturesAreReadFromAnywhere)
{
    expect("$LUMENOTE --ocr page.png", 0, text, read);
    expect("$LUMENOTE x --ocr page.png --platform y", 0, text, read);
    expect("$LUMENOTE --ocr blank.png", 0, "\n", "lumenote: OCR 0 lines TIME\n");
    expect("cat page.png | $LUMENOTE --ocr /dev/stdin", 0, text, read);
    expect("$LUMENOTE --ocr <(cat page.png)", 0, text, read);
    expect("$LUMENOTE --ocr ''", 66, quiet, unread(""));
    expect("$LUMENOTE --ocr folder", 66, quiet, unread("folder"));
    expect("$LUMENOTE --ocr /dev/zero", 66, quiet, unread("/dev/zero"));
    expect("$LUMENOTE --ocr /dev/stdin <&-", 66, quiet, unread("/dev/stdin"));
    expect("$LUMENOTE --ocr '%s%n.png'", 66, quiet, unread("%s%n.png"));
    expect("$LUMENOTE --ocr cut.png", 66, quiet, undecoded("cut.png"));
    expect("cp page.png $'caf\\xe9.png' && $LUMENOTE --ocr $'caf\\xe9.png'", 0, text, read);
}

TEST_F(CommandLineTest, outputThatGoesNowhereIsTold)
{
    expect("$LUMENOTE --ocr page.png >&-", 74, quiet, read + QByteArray(notWritten));
    expect("$LUMENOTE --ocr page.png >/dev/full", 74, quiet, read + QByteArray(notWritten));
    expect("$LUMENOTE --version >&-", 74, quiet, notWritten);
    expect("{ sleep 0.2; $LUMENOTE --version; echo $? >&2; } | true", 0, quiet,
        notWritten + QByteArray("74\n"));
    expect("$LUMENOTE --ocr page.png 2>&-", 0, text, quiet);
    expect("$LUMENOTE --ocr page.png 2>/dev/full", 0, text, quiet);
    expect("$LUMENOTE --ocr page.png <&- >&- 2>&-", 74, quiet, quiet);
}

TEST_F(CommandLineTest, theWarmUpNeedsFontsAndNoDisplay)
{
    expect("$LUMENOTE --warm-up -platform no-such-platform", 0, quiet,
        "lumenote: OCR warm-up ready TIME\n");
}

TEST_F(CommandLineTest, withoutLanguageDataTheUserIsToldWhatToInstall)
{
    for (const QByteArray mode : {"--ocr page.png", "--warm-up"}) {
        const auto outcome = run("TESSDATA_PREFIX=$PWD/folder $LUMENOTE " + mode);
        EXPECT_EQ(outcome.exitCode, mode == "--warm-up" ? 70 : 75);
        EXPECT_EQ(outcome.output, "");
        EXPECT_TRUE(outcome.error.startsWith("lumenote: OCR ")) << outcome.error.toStdString();
        EXPECT_TRUE(outcome.error.contains("tesseract-ocr-eng")) << outcome.error.toStdString();
        EXPECT_TRUE(outcome.error.endsWith(mode == "--warm-up"
                ? "lumenote: OCR warm-up failed TIME\n"
                : "lumenote: OCR gave up TIME\nlumenote: recognition didn't finish\n"))
            << outcome.error.toStdString();
    }
}

TEST_F(CommandLineTest, withoutADisplayTheDesktopProgramEndsWithAMessage)
{
    for (const QByteArray arguments : {"", "--unknown"}) {
        const auto outcome = run("$LUMENOTE " + arguments);
        EXPECT_EQ(outcome.exitCode, 69) << arguments.toStdString();
        EXPECT_EQ(outcome.output, "") << arguments.toStdString();
        EXPECT_TRUE(outcome.error.startsWith("lumenote: needs a display: "))
            << outcome.error.toStdString();
    }
}

TEST_F(CommandLineTest, theSelfTestProvesThatTheScreenCanBeCaptured)
{
    const auto denied = run("$LUMENOTE --self-test");
    EXPECT_EQ(denied.exitCode, 77);
    EXPECT_EQ(denied.output,
        "screen recording: denied\nself-test: cannot capture without Screen Recording\n");
    EXPECT_TRUE(denied.error.startsWith("lumenote: capture ")) << denied.error.toStdString();

    const Harness::XServer server;
    ASSERT_TRUE(server.isRunning()) << qPrintable(server.failure());
    const auto granted =
        run("DISPLAY=" + server.display().toLocal8Bit() + " $LUMENOTE --self-test");
    EXPECT_EQ(granted.exitCode, 0) << granted.error.toStdString();
    EXPECT_EQ(
        granted.output, "screen recording: granted\ncapture: 64x64pt, 64x64px\nself-test: OK\n");
}

TEST_F(CommandLineTest, anInterruptLeavesNothingHalfDone)
{
    QProcess program;
    program.start(QStringLiteral(LUMENOTE_PROGRAM), {u"--ocr"_qs, u"/dev/stdin"_qs});
    ASSERT_TRUE(program.waitForStarted(Harness::patience));
    program.write("half a picture"); // And no end: the program waits for the rest.
    ASSERT_TRUE(program.waitForBytesWritten(Harness::patience));
    ASSERT_EQ(kill(static_cast<pid_t>(program.processId()), SIGINT), 0);
    ASSERT_TRUE(program.waitForFinished(Harness::patience));
    EXPECT_EQ(program.exitStatus(), QProcess::CrashExit) << "a shell must see the signal";
    EXPECT_EQ(program.exitCode(), SIGINT);
    EXPECT_EQ(program.readAllStandardOutput(), "");
}

TEST_F(CommandLineTest, anInstalledProgramKnowsItsVersion)
{
    QProcess install;
    install.start(QStringLiteral(LUMENOTE_CMAKE),
        {u"--install"_qs, QStringLiteral(LUMENOTE_BUILD_FOLDER), u"--prefix"_qs, path()});
    ASSERT_TRUE(install.waitForFinished(Harness::patience));
    ASSERT_EQ(install.exitCode(), 0) << install.readAllStandardError().toStdString();
    const auto outcome = run("bin/lumenote --version; ln -s bin/lumenote link; ./link --version");
    EXPECT_EQ(outcome.exitCode, 0);
    static const QRegularExpression twice(u"^(Lumenote \\d+\\.\\d+\\.\\d+ \\(\\d+\\)\n)\\1$"_qs);
    EXPECT_TRUE(twice.match(QString::fromUtf8(outcome.output)).hasMatch())
        << outcome.output.toStdString();
}

} // namespace
