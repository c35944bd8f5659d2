// The real program, as a shell starts it.

#include "Harness/Waiting.h"
#include "Harness/XServer.h"

#include <QFile>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <array>
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
        QStringLiteral("\\bin \\d+(ms|\\.\\ds)( — \\d+ model loads?)?|after \\d+(ms|\\.\\ds)"));
    return QString::fromUtf8(text).replace(time, QStringLiteral("TIME")).toUtf8();
}

class CommandLineTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(folder.isValid());
        ASSERT_TRUE(page().save(folder.filePath(u"page.png"_qs)));
        QImage blank(200, 100, QImage::Format_RGB32);
        blank.fill(Qt::white);
        ASSERT_TRUE(blank.save(folder.filePath(u"blank.png"_qs)));
        QFile cut(folder.filePath(u"cut.png"_qs));
        QFile whole(folder.filePath(u"page.png"_qs));
        ASSERT_TRUE(cut.open(QIODevice::WriteOnly) && whole.open(QIODevice::ReadOnly));
        cut.write(whole.read(whole.size() / 2));
        ASSERT_TRUE(QDir(folder.path()).mkdir(u"folder"_qs));
    }

    /// Two lines that no recogniser misreads.
    static QImage page()
    {
        QImage image(600, 120, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QFont font(u"DejaVu Sans"_qs);
        font.setPixelSize(28);
        painter.setFont(font);
        painter.drawText(20, 45, u"Hello reader"_qs);
        painter.drawText(20, 95, u"Second line"_qs);
        return image;
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
        shell.setWorkingDirectory(folder.path());
        shell.start(u"bash"_qs, {u"-c"_qs, QString::fromUtf8(script)});
        EXPECT_TRUE(shell.waitForFinished(Harness::patience)) << script.toStdString();
        return {.output = shell.readAllStandardOutput(),
            .error = withoutTimes(shell.readAllStandardError()),
            .exitCode = shell.exitStatus() == QProcess::NormalExit ? shell.exitCode() : -1};
    }

public:
    const QTemporaryDir folder;
};

struct Row {
    const char* name;
    QByteArray script;
    int exitCode;
    QByteArray output;
    QByteArray error;
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

const std::vector<Row>& rows()
{
    static const std::vector<Row> all{
        // Which mode it is.
        {"ocrWithoutPath", "$LUMENOTE --ocr", 64, quiet, usage},
        {"ocrWithoutPathLast", "$LUMENOTE --version --ocr", 64, quiet, usage},
        {"modeAsPath", "$LUMENOTE --ocr --self-test", 66, quiet, unread("--self-test")},
        {"ocrBeforeVersion", "$LUMENOTE --version --ocr gone.png", 66, quiet, unread("gone.png")},
        {"ocrBeforeSelfTest", "$LUMENOTE --self-test --ocr gone", 66, quiet, unread("gone")},
        {"firstOcrCounts", "$LUMENOTE --ocr --ocr page.png", 66, quiet, unread("--ocr")},
        {"ocrAsProgramName", "exec -a --ocr $LUMENOTE gone.png", 66, quiet, unread("gone.png")},
        {"version", "$LUMENOTE --version", 0, development, quiet},
        {"versionBeforeWarmUp", "$LUMENOTE --warm-up --version", 0, development, quiet},
        {"versionAmongOthers", "$LUMENOTE -x --version y", 0, development, quiet},

        // What it reads.
        {"text", "$LUMENOTE --ocr page.png", 0, text, read},
        {"restIsIgnored", "$LUMENOTE x --ocr page.png --platform y", 0, text, read},
        {"noText", "$LUMENOTE --ocr blank.png", 0, "\n", "lumenote: OCR 0 lines TIME\n"},
        {"standardInput", "cat page.png | $LUMENOTE --ocr /dev/stdin", 0, text, read},
        {"substitution", "$LUMENOTE --ocr <(cat page.png)", 0, text, read},
        {"emptyPath", "$LUMENOTE --ocr ''", 66, quiet, unread("")},
        {"folder", "$LUMENOTE --ocr folder", 66, quiet, unread("folder")},
        {"device", "$LUMENOTE --ocr /dev/zero", 66, quiet, unread("/dev/zero")},
        {"closedInput", "$LUMENOTE --ocr /dev/stdin <&-", 66, quiet, unread("/dev/stdin")},
        {"percentInPath", "$LUMENOTE --ocr '%s%n.png'", 66, quiet, unread("%s%n.png")},
        {"cutShort", "$LUMENOTE --ocr cut.png", 66, quiet, undecoded("cut.png")},
        {"bytesThatAreNoText", "cp page.png $'caf\\xe9.png' && $LUMENOTE --ocr $'caf\\xe9.png'", 0,
            text, read},

        // Where standard output takes nothing, and what is left of standard error.
        {"outputClosed", "$LUMENOTE --ocr page.png >&-", 74, quiet, read + QByteArray(notWritten)},
        {"outputFull", "$LUMENOTE --ocr page.png >/dev/full", 74, quiet,
            read + QByteArray(notWritten)},
        {"versionOutputClosed", "$LUMENOTE --version >&-", 74, quiet, notWritten},
        {"readerGone", "{ sleep 0.2; $LUMENOTE --version; echo $? >&2; } | true", 0, quiet,
            notWritten + QByteArray("74\n")},
        {"errorClosed", "$LUMENOTE --ocr page.png 2>&-", 0, text, quiet},
        {"errorFull", "$LUMENOTE --ocr page.png 2>/dev/full", 0, text, quiet},
        {"allClosed", "$LUMENOTE --ocr page.png <&- >&- 2>&-", 74, quiet, quiet},

        // The warm-up needs fonts, and no display.
        {"warmUp", "$LUMENOTE --warm-up -platform no-such-platform", 0, quiet,
            "lumenote: OCR warm-up ready TIME\n"},
    };
    return all;
}

class CommandLineTableTest : public CommandLineTest, public testing::WithParamInterface<Row> { };

TEST_P(CommandLineTableTest, endsAsTold)
{
    const auto& row = GetParam();
    const auto outcome = run(row.script);
    EXPECT_EQ(outcome.exitCode, row.exitCode);
    EXPECT_EQ(outcome.output, row.output);
    EXPECT_EQ(outcome.error, row.error);
}

INSTANTIATE_TEST_SUITE_P(All, CommandLineTableTest, testing::ValuesIn(rows()),
    [](const auto& row) { return std::string(row.param.name); });

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
        {u"--install"_qs, QStringLiteral(LUMENOTE_BUILD_FOLDER), u"--prefix"_qs, folder.path()});
    ASSERT_TRUE(install.waitForFinished(Harness::patience));
    ASSERT_EQ(install.exitCode(), 0) << install.readAllStandardError().toStdString();
    const auto outcome = run("bin/lumenote --version; ln -s bin/lumenote link; ./link --version");
    EXPECT_EQ(outcome.exitCode, 0);
    static const QRegularExpression twice(
        QStringLiteral("^(Lumenote \\d+\\.\\d+\\.\\d+ \\(\\d+\\)\n)\\1$"));
    EXPECT_TRUE(twice.match(QString::fromUtf8(outcome.output)).hasMatch())
        << outcome.output.toStdString();
}

} // namespace
