#pragma once

#include "Harness/Desktop.h"
#include "Harness/Folder.h"
#include "Harness/PaintedWindow.h"
#include "Harness/Waiting.h"
#include "Harness/XClient.h"
#include "Model/StoredText.h"
#include "Platform/TextLayout/Canvas.h"

#include <QDir>
#include <QProcess>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <optional>
#include <unistd.h>

inline constexpr QRgb white = 0xffffffff;
inline constexpr QRect pageRect(100, 100, 600, 120);

/// Two lines that no recogniser misreads.
inline QImage page()
{
    return Drawing::Canvas(pageRect.size())
        .write({20, 45}, u"Hello reader"_qs, {.size = 28})
        .write({20, 95}, u"Second line"_qs, {.size = 28})
        .image;
}

/// What a program writes here it takes for what a person reads.
class Terminal {
public:
    Terminal()
        : m_descriptor(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {
        EXPECT_EQ(grantpt(m_descriptor), 0);
        EXPECT_EQ(unlockpt(m_descriptor), 0);
    }
    ~Terminal() { close(m_descriptor); }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    QString name() const
    {
        std::array<char, 64> name{};
        EXPECT_EQ(ptsname_r(m_descriptor, name.data(), name.size()), 0);
        return QString::fromLocal8Bit(name.data());
    }
    const QByteArray& text()
    {
        std::array<char, 4096> bytes{};
        for (ssize_t count = 0; (count = read(m_descriptor, bytes.data(), bytes.size())) > 0;)
            m_text.append(bytes.data(), count);
        return m_text;
    }

private:
    const int m_descriptor;
    QByteArray m_text;
};

/// The whole program on an X server of its own, before a page with two lines.
class LumenoteProcess : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_server->isRunning()) << qPrintable(m_server->failure());
        // The windows of the test belong there as well.
        qputenv("DISPLAY", m_server->display().toLocal8Bit());
        m_other.emplace();
        ASSERT_TRUE(page().save(QString::fromStdString(m_folder.pathOf("page.png"))));
        m_wallpaper.emplace(m_other->rect(), white, QByteArrayList{"plain", "1", "unmanaged", "1"});
        m_page.emplace(pageRect, white,
            QByteArrayList{"picture", m_folder.pathOf("page.png").c_str(), "unmanaged", "1"});

        auto environment = m_server->environment();
        environment.insert(u"XDG_DATA_HOME"_qs, QString::fromStdString(m_folder.path()));
        m_lumenote.setProcessEnvironment(environment);
        m_lumenote.setStandardErrorFile(m_terminal.name());
        m_lumenote.start(QStringLiteral(LUMENOTE_PROGRAM), QStringList());
        ASSERT_TRUE(m_lumenote.waitForStarted(Harness::patience));
    }

    void TearDown() override
    {
        if (HasFailure())
            std::fputs(m_terminal.text().constData(), stderr);
        m_lumenote.kill();
        m_lumenote.waitForFinished(Harness::patience);
    }

    void xdotool(const QByteArrayList& arguments) const
    {
        ASSERT_TRUE(Harness::Desktop(m_server->environment()).run("xdotool", arguments));
    }

    bool isDimmed() const { return m_other->picture().pixel(10, 10) == 0xffa6a6a6; }

    /// Presses the shortcut until the overlays are there: nobody tells when the program listens.
    void beginSelection()
    {
        ASSERT_TRUE(Harness::waitFor([this] {
            if (!isDimmed())
                xdotool({"key", "--clearmodifiers", "ctrl+shift+6"});
            return isDimmed();
        }));
    }

    void pickPage()
    {
        const auto place = [](QPoint point) {
            return QByteArrayList{
                "mousemove", QByteArray::number(point.x()), QByteArray::number(point.y())};
        };
        xdotool(place(pageRect.topLeft()) + QByteArrayList{"mousedown", "1"});
        xdotool(place(pageRect.bottomRight() + QPoint(1, 1)) + QByteArrayList{"mouseup", "1"});
        ASSERT_TRUE(Harness::waitFor([this] { return !isDimmed(); }));
    }

    QFileInfoList captures(const char* subfolder = "") const
    {
        return QDir(QString::fromStdString(m_folder.path()) + u"/Lumenote (dev)/Captures/"_qs
            + QString::fromUtf8(subfolder))
            .entryInfoList(QDir::Files);
    }

    /// All that is stored can be read, and nothing else lies there.
    void expectWholeHistory() const
    {
        for (const auto& file : captures())
            EXPECT_EQ(QImage(file.filePath()).size(), pageRect.size())
                << qPrintable(file.fileName());
        for (const auto& file : captures("Text")) {
            QFile json(file.filePath());
            EXPECT_TRUE(
                json.open(QIODevice::ReadOnly) && Lumenote::storedTextFromJson(json.readAll()))
                << qPrintable(file.fileName());
        }
    }

    /// Whether the program ends by itself, with that code.
    testing::AssertionResult endsWith(int exitCode)
    {
        if (!Harness::waitFor([this] { return m_lumenote.state() == QProcess::NotRunning; }))
            return testing::AssertionFailure() << "still runs";
        if (m_lumenote.exitStatus() != QProcess::NormalExit)
            return testing::AssertionFailure() << "killed by signal " << m_lumenote.exitCode();
        if (m_lumenote.exitCode() != exitCode)
            return testing::AssertionFailure() << "exit code " << m_lumenote.exitCode();
        return testing::AssertionSuccess();
    }

    const Harness::Folder m_folder;
    std::optional<Harness::XServer> m_server{std::in_place};
    std::optional<Harness::XClient> m_other;
    std::optional<Harness::PaintedWindow> m_wallpaper;
    std::optional<Harness::PaintedWindow> m_page;
    Terminal m_terminal;
    QProcess m_lumenote;
};
