#include "Manifest.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace Lumenote::Bench::Manifest {

using namespace Qt::StringLiterals;

namespace {
constexpr int version = 1;

QJsonArray toJson(const QRectF& rect)
{
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

QRectF rectFromJson(const QJsonArray& array)
{
    return {array[0].toDouble(), array[1].toDouble(), array[2].toDouble(), array[3].toDouble()};
}

QJsonObject toJson(const Picture& picture)
{
    QJsonArray pieces;
    for (const Piece& piece : picture.pieces)
        pieces.append(QJsonObject{{u"text"_s, piece.text}, {u"rect"_s, toJson(piece.rect)}});
    return {
        {u"version"_s, version},
        {u"name"_s, picture.name},
        {u"group"_s, picture.group},
        {u"split"_s, picture.split == Split::tuning ? u"tuning"_s : u"test"_s},
        {u"flat"_s, picture.isFlat},
        {u"languages"_s, QJsonArray::fromStringList(picture.languages)},
        {u"file"_s, picture.file},
        {u"width"_s, picture.size.width()},
        {u"height"_s, picture.size.height()},
        {u"pieces"_s, pieces},
    };
}

Picture pictureFromJson(const QJsonObject& json)
{
    Picture picture{
        .name = json[u"name"].toString(),
        .group = json[u"group"].toString(),
        .split = json[u"split"].toString() == "tuning"_L1 ? Split::tuning : Split::test,
        .isFlat = json[u"flat"].toBool(),
        .languages = {},
        .file = json[u"file"].toString(),
        .size = {json[u"width"].toInt(), json[u"height"].toInt()},
        .pieces = {},
    };
    for (const QJsonValue language : json[u"languages"].toArray())
        picture.languages.append(language.toString());
    for (const QJsonValue piece : json[u"pieces"].toArray())
        picture.pieces.append({piece[u"text"].toString(), rectFromJson(piece[u"rect"].toArray())});
    return picture;
}
} // namespace

void write(const QString& folder, const Picture& picture)
{
    QSaveFile file(folder + u'/' + picture.name + u".json"_s);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("Cannot write %s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
    file.write(QJsonDocument(toJson(picture)).toJson());
    file.commit();
}

QList<Picture> readAll(const QString& folder)
{
    QList<Picture> pictures;
    for (const QFileInfo& info :
        QDir(folder).entryInfoList({u"*.json"_s}, QDir::Files, QDir::Name)) {
        QFile file(info.filePath());
        const bool isOpen = file.open(QIODevice::ReadOnly);
        const QJsonObject json = QJsonDocument::fromJson(file.readAll()).object();
        if (!isOpen || json[u"version"].toInt() != version)
            qFatal("%s is no picture's manifest of this version", qPrintable(info.filePath()));
        pictures.append(pictureFromJson(json));
    }
    return pictures;
}

} // namespace Lumenote::Bench::Manifest
