#include "Scenes.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Lumenote::Bench {

using namespace Qt::StringLiterals;

namespace {
using Drawing = void (*)(Page&);

struct Entry {
    const char* name;
    Drawing draw;
};

constexpr std::array smallEntries{
    Entry{"dialog", Scenes::dialog},
    Entry{"menu", Scenes::menu},
    Entry{"tool-bar", Scenes::toolBar},
    Entry{"settings", Scenes::settings},
    Entry{"radio-list", Scenes::radioList},
    Entry{"form", Scenes::form},
    Entry{"coloured-buttons", Scenes::colouredButtons},
    Entry{"badges", Scenes::badges},
    Entry{"notifications", Scenes::notifications},
    Entry{"tooltip", Scenes::tooltip},
    Entry{"login", Scenes::login},
    Entry{"status-bar", Scenes::statusBar},
    Entry{"file-list", Scenes::fileList},
    Entry{"property-table", Scenes::propertyTable},
    Entry{"ruled-table", Scenes::ruledTable},
    Entry{"spreadsheet", Scenes::spreadsheet},
    Entry{"calendar", Scenes::calendar},
    Entry{"side-bar", Scenes::sideBar},
    Entry{"icon-grid", Scenes::iconGrid},
    Entry{"process-table", Scenes::processTable},
    Entry{"hex-table", Scenes::hexTable},
    Entry{"article", Scenes::article},
    Entry{"search-results", Scenes::searchResults},
    Entry{"chat", Scenes::chat},
    Entry{"mail-list", Scenes::mailList},
    Entry{"shop", Scenes::shop},
    Entry{"dashboard", Scenes::dashboard},
    Entry{"chart", Scenes::chart},
    Entry{"comments", Scenes::comments},
    Entry{"breadcrumbs", Scenes::breadcrumbs},
    Entry{"hero", Scenes::hero},
    Entry{"editor", Scenes::editor},
    Entry{"terminal-listing", Scenes::terminalListing},
    Entry{"version-log", Scenes::versionLog},
    Entry{"compiler-output", Scenes::compilerOutput},
    Entry{"prompt", Scenes::prompt},
    Entry{"tight-line", Scenes::tightLine},
    Entry{"tight-word", Scenes::tightWord},
    Entry{"tight-number", Scenes::tightNumber},
    Entry{"tight-paragraph", Scenes::tightParagraph},
    Entry{"key-list", Scenes::keyList},
    Entry{"steps", Scenes::steps},
    Entry{"selected-text", Scenes::selectedText},
};
/// What else is drawn of the small pictures.
constexpr std::array scaledNames{"dialog", "file-list", "editor", "chat", "settings", "ruled-table",
    "menu", "side-bar", "status-bar"};
constexpr std::array jpegNames{
    "dialog", "mail-list", "article", "property-table", "compiler-output"};
constexpr std::array languageNames{
    "dialog", "menu", "settings", "form", "article", "chat", "file-list", "comments"};
constexpr std::array mixedNames{"chat", "mail-list", "search-results", "notifications", "side-bar"};

constexpr std::array photoEntries{
    Entry{"caption-bar", Scenes::captionBar},
    Entry{"photo-title", Scenes::photoTitle},
    Entry{"gradient-card", Scenes::gradientCard},
    Entry{"player-overlay", Scenes::playerOverlay},
    Entry{"photo-grid", Scenes::photoGrid},
    Entry{"desktop", Scenes::desktop},
    Entry{"skyline", Scenes::skyline},
    Entry{"bright", Scenes::brightPhoto},
};
constexpr std::array dense1080Entries{
    Entry{"editor", Scenes::denseEditor},
    Entry{"document", Scenes::denseDocument},
    Entry{"mixed", Scenes::denseMixed},
};
constexpr std::array dense4kEntries{
    Entry{"editor", Scenes::denseEditor4k},
    Entry{"document", Scenes::denseDocument4k},
    Entry{"document-2x", Scenes::denseDocumentDoubled},
};
constexpr std::array noTextEntries{
    Entry{"gradients", Scenes::gradients},
    Entry{"photograph", Scenes::photograph},
    Entry{"icon-bar", Scenes::iconBar},
    Entry{"skyline", Scenes::bareSkyline},
    Entry{"charts", Scenes::bareCharts},
    Entry{"patterns", Scenes::patterns},
    Entry{"bars", Scenes::bars},
    Entry{"avatars", Scenes::avatars},
    Entry{"empty-window", Scenes::emptyWindow},
};

struct Script {
    const char* language;
    const char* family;
};
constexpr std::array scripts{
    Script{"rus", "DejaVu Sans"},
    Script{"ell", "Noto Sans"},
    Script{"heb", "DejaVu Sans"},
    Script{"ara", "DejaVu Sans"},
    Script{"chi_sim", "WenQuanYi Micro Hei"},
    Script{"jpn", "WenQuanYi Micro Hei"},
    Script{"kor", "WenQuanYi Micro Hei"},
};

constexpr std::array scales{1.25, 1.5, 2.0};
constexpr std::array jpegQualities{60, 85, 72, 66, 80};
constexpr std::array growingLineCounts{10, 20, 40, 80, 160};
constexpr std::array growingSizes{QSize(1152, 864), QSize(1632, 1224), QSize(2304, 1728),
    QSize(3264, 2448), QSize(4608, 3456), QSize(6656, 4992), QSize(9472, 7104)};

Drawing smallDrawing(std::string_view name)
{
    const auto* const entry = std::find_if(smallEntries.begin(), smallEntries.end(),
        [&](const Entry& candidate) { return candidate.name == name; });
    if (entry == smallEntries.end())
        qFatal("There is no small picture %s", name.data());
    return entry->draw;
}

QString splitName(Split split)
{
    return split == Split::tuning ? u"tuning"_s : u"test"_s;
}

/// Collects the scenes of one split.
class Catalogue {
public:
    Catalogue(Split split, QList<Scene>& scenes)
        : m_split(split)
        , m_scenes(scenes)
    {
    }

    /// Adds a picture in the next look.
    Scene& add(const QString& group, const QString& name, std::function<void(Page&)> draw)
    {
        m_scenes.append(Scene{
            .name = group + u'-' + name + u'-' + splitName(m_split),
            .group = group,
            .split = m_split,
            .look = m_nextLook++,
            .draw = std::move(draw),
        });
        return m_scenes.last();
    }

    template <typename Entries>
    void addAll(const QString& group, const Entries& entries)
    {
        for (const Entry& entry : entries)
            add(group, QString::fromLatin1(entry.name), entry.draw);
    }

    template <typename Names>
    void addIn(const QString& group, const Names& names, const QList<Language>& languages,
        const QStringList& readerLanguages)
    {
        for (const char* name : names) {
            Scene& scene = add(group, QString::fromLatin1(name), smallDrawing(name));
            scene.languages = languages;
            scene.readerLanguages = readerLanguages;
        }
    }

    void addScaled()
    {
        for (int i = 0; i < int(scaledNames.size()); ++i) {
            const double scale = scales[i % scales.size()];
            Scene& scene =
                add(u"scaled"_s, u"%1-%2"_s.arg(QLatin1String(scaledNames[i])).arg(scale * 100),
                    smallDrawing(scaledNames[i]));
            scene.scale = scale;
        }
    }

    void addJpegs()
    {
        for (int i = 0; i < int(jpegNames.size()); ++i)
            add(u"jpeg"_s, QString::fromLatin1(jpegNames[i]), smallDrawing(jpegNames[i]))
                .jpegQuality = jpegQualities[i];
    }

    void addPhotos()
    {
        for (const Entry& entry : photoEntries)
            add(u"photo"_s, QString::fromLatin1(entry.name), entry.draw).isFlat = false;
        add(u"photo"_s, u"caption-bar-jpeg"_s, Scenes::captionBar).isFlat = false;
        m_scenes.last().jpegQuality = 75;
    }

    void addDense()
    {
        addAll(u"dense-1080p"_s, dense1080Entries);
        addAll(u"dense-4k"_s, dense4kEntries);
        m_scenes.last().scale = 2;
    }

    void addScripts()
    {
        for (const Script& script : scripts) {
            const QString language = QString::fromLatin1(script.language);
            const QString family = QString::fromLatin1(script.family);
            add(u"script-"_s + language, u"dialog"_s, [=](Page& page) {
                QStringList texts;
                for (int i = 0; i < 6; ++i)
                    texts.append(page.texts.ofScript(script.language));
                Scenes::scriptDialog(page, family, texts);
            }).readerLanguages = {language};
        }
    }

    void addGrowth()
    {
        for (const int lines : growingLineCounts)
            add(u"growth-lines"_s, QString::number(lines).rightJustified(3, u'0'),
                [lines](Page& page) { Scenes::growingLines(page, lines); });
        for (const QSize size : growingSizes)
            add(u"growth-pixels"_s,
                QString::number(qRound(size.width() * size.height() / 1e6)).rightJustified(2, u'0')
                    + u"mp"_s,
                [size](Page& page) { Scenes::growingPixels(page, size); });
    }

private:
    Split m_split;
    QList<Scene>& m_scenes;
    int m_nextLook = 0;
};
} // namespace

QList<Scene> allScenes()
{
    QList<Scene> scenes;
    for (const Split split : {Split::tuning, Split::test}) {
        Catalogue catalogue(split, scenes);
        catalogue.addAll(u"small"_s, smallEntries);
        catalogue.addScaled();
        catalogue.addJpegs();
        catalogue.addPhotos();
        catalogue.addIn(u"german"_s, languageNames, {Language::german}, {u"deu"_s});
        catalogue.addIn(u"french"_s, languageNames, {Language::french}, {u"fra"_s});
        catalogue.addIn(
            u"mixed"_s, mixedNames, {Language::english, Language::german}, {u"eng"_s, u"deu"_s});
        catalogue.addDense();
        catalogue.addScripts();
        catalogue.addAll(u"no-text"_s, noTextEntries);
    }
    Catalogue(Split::test, scenes).addGrowth();
    return scenes;
}

} // namespace Lumenote::Bench
