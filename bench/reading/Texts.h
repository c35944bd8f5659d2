#pragma once

#include "Picture.h"
#include "Random.h"

#include <QHash>

namespace Lumenote::Bench {

enum class Language { english, german, french };

/// Two halves of one entry: a menu's item and its shortcut, a field's label and its value.
struct TextPair {
    QString first;
    QString second;
};

/// The texts of one picture, drawn by lot from its half of the files in `texts`. With several
/// languages each text comes from one of them by lot.
class Texts {
public:
    /// @p random is borrowed and must outlive this object.
    Texts(QList<Language> languages, Split split, Random& random);

    /// An entry of @p section that this object has not given before, as long as there is one.
    QString one(const char* section);
    TextPair pair(const char* section);
    QStringList several(const char* section, int count);

    /// An entry of a section of `code.txt`, its placeholders filled in.
    QString code(const char* section);

    /// An entry of the section @p language of `scripts.txt`.
    QString ofScript(const char* language);

    /// A grammatical English sentence of which there are millions.
    QString sentence();

    QString fileSize();
    QString date();
    QString longDate();
    QString time();
    QString price();
    QString decimal(int digits);
    QString integer(int low, int high);
    QString percent();
    QString address();
    QString webAddress();
    QString mailAddress();
    QString hexadecimal(int digits);
    QString uuid();
    QString version();

    Random& random() { return m_random; }

private:
    QString draw(const QString& file, const QString& section);
    Language anyLanguage();
    QString placeholder(const QString& name);

    QList<Language> m_languages;
    Split m_split;
    Random& m_random;
    QHash<QString, QStringList> m_left;
};

} // namespace Lumenote::Bench
