#include "Generator.h"

#include "Manifest.h"
#include "Scene.h"

#include <QDir>
#include <QImage>
#include <QSaveFile>
#include <QSet>

#include <algorithm>
#include <cstdio>

namespace Lumenote::Bench::Generator {

using namespace Qt::StringLiterals;

namespace {
/// Whoever reads the pictures meanwhile sees the old or the new one, never half of it.
void save(const QImage& image, const QString& path, int quality)
{
    QSaveFile file(path);
    const QByteArray format = QFileInfo(path).suffix().toLatin1();
    if (!file.open(QIODevice::WriteOnly) || !image.save(&file, format.constData(), quality)
        || !file.commit())
        qFatal("Cannot write %s", qPrintable(path));
}

/// Removes the files of pictures that the set no longer has.
void removeStrays(const QString& folder, const QList<Scene>& scenes)
{
    QSet<QString> names;
    for (const Scene& scene : scenes)
        names.insert(scene.name);
    QDir dir(folder);
    for (const QFileInfo& info : dir.entryInfoList({u"*.json"_s, u"*.png"_s, u"*.jpg"_s})) {
        if (!names.contains(info.completeBaseName().remove(doubledPrefix)))
            dir.remove(info.fileName());
    }
}

/// Answers the faults of the picture.
QStringList draw(const Scene& scene, const QString& folder)
{
    Random random(seedOf(scene.name));
    Texts texts(scene.languages, scene.split, random);
    const Look look = lookNumber(scene.look, scene.split);
    Canvas canvas(scene.scale, look.rendering);
    Page page{canvas, look, texts, random};
    scene.draw(page);

    const bool isJpeg = scene.jpegQuality > 0;
    const QString file = scene.name + (isJpeg ? u".jpg"_s : u".png"_s);
    const QImage image = canvas.takeImage();
    save(image, folder + u'/' + file, isJpeg ? scene.jpegQuality : -1);
    Manifest::write(folder,
        {.name = scene.name,
            .group = scene.group,
            .split = scene.split,
            .isFlat = scene.isFlat,
            .languages = scene.readerLanguages,
            .file = file,
            .size = image.size(),
            .pieces = canvas.pieces()});
    return canvas.faults();
}
} // namespace

bool drawAll(const QString& folder, const QString& group)
{
    if (!QDir().mkpath(folder))
        qFatal("Cannot create %s", qPrintable(folder));
    bool isFaultless = true;
    const QList<Scene> scenes = allScenes();
    removeStrays(folder, scenes);
    for (const Scene& scene : scenes) {
        if (!group.isEmpty() && scene.group != group)
            continue;
        std::fprintf(stderr, "Drawing %s\n", qPrintable(scene.name));
        for (const QString& fault : draw(scene, folder)) {
            std::fprintf(stderr, "  %s\n", qPrintable(fault));
            isFaultless = false;
        }
    }
    return isFaultless;
}

void saveDoubled(const QString& picture, const QString& target)
{
    const QImage image(picture);
    if (image.isNull())
        qFatal("Cannot read %s", qPrintable(picture));
    save(image.scaled(image.size() * 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation), target,
        -1);
}

} // namespace Lumenote::Bench::Generator
