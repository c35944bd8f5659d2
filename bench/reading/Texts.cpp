#include "Texts.h"

#include <QDate>
#include <QFile>
#include <QLocale>
#include <QRegularExpression>
#include <QTime>

namespace Lumenote::Bench {

using namespace Qt::StringLiterals;

namespace {
using Sections = QHash<QString, QStringList>;

Sections readSections(const QString& name)
{
    QFile file(u":/texts/"_s + name + u".txt"_s);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("No texts named %s", qPrintable(name));
    Sections sections;
    QString section;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        if (line.startsWith(u'[') && line.endsWith(u']') && !line.contains(u' '))
            section = line.mid(1, line.size() - 2);
        else if (!section.isEmpty() && !line.isEmpty())
            sections[section].append(line);
    }
    return sections;
}

const QStringList& entries(const QString& file, const QString& section)
{
    static QHash<QString, Sections> files;
    if (!files.contains(file))
        files.insert(file, readSections(file));
    const auto found = files[file].constFind(section);
    if (found == files[file].constEnd())
        qFatal("%s.txt has no section %s", qPrintable(file), qPrintable(section));
    return *found;
}

QString fileOf(Language language)
{
    switch (language) {
    case Language::german:
        return u"german"_s;
    case Language::french:
        return u"french"_s;
    case Language::english:
        break;
    }
    return u"english"_s;
}

QLocale localeOf(Language language)
{
    switch (language) {
    case Language::german:
        return {QLocale::German, QLocale::Germany};
    case Language::french:
        return {QLocale::French, QLocale::France};
    case Language::english:
        break;
    }
    return {QLocale::English, QLocale::UnitedKingdom};
}
} // namespace

Texts::Texts(QList<Language> languages, Split split, Random& random)
    : m_languages(std::move(languages))
    , m_split(split)
    , m_random(random)
{
}

Language Texts::anyLanguage()
{
    return m_random.pick(m_languages);
}

QString Texts::draw(const QString& file, const QString& section)
{
    QStringList& left = m_left[file + u'/' + section];
    if (left.isEmpty()) {
        const QStringList& all = entries(file, section);
        for (qsizetype i = m_split == Split::tuning ? 0 : 1; i < all.size(); i += 2)
            left.append(all[i]);
    }
    return left.takeAt(m_random.below(int(left.size())));
}

QString Texts::one(const char* section)
{
    return draw(fileOf(anyLanguage()), QString::fromLatin1(section));
}

TextPair Texts::pair(const char* section)
{
    const QStringList halves = one(section).split(u'\t');
    if (halves.size() != 2)
        qFatal("An entry of %s has no two halves", section);
    return {halves[0], halves[1]};
}

QStringList Texts::several(const char* section, int count)
{
    QStringList texts;
    for (int i = 0; i < count; ++i)
        texts.append(one(section));
    return texts;
}

QString Texts::placeholder(const QString& name)
{
    if (name == "$name"_L1)
        return draw(u"code"_s, u"identifiers"_s);
    if (name == "$Type"_L1)
        return draw(u"code"_s, u"types"_s);
    if (name == "$word"_L1)
        return draw(u"english"_s, u"nouns"_s);
    return QString::number(m_random.between(2, 480));
}

QString Texts::code(const char* section)
{
    static const QRegularExpression placeholders(u"\\$(name|Type|word|number)"_s);
    QString line = draw(u"code"_s, QString::fromLatin1(section));
    for (auto match = placeholders.match(line); match.hasMatch(); match = placeholders.match(line))
        line.replace(match.capturedStart(), match.capturedLength(), placeholder(match.captured()));
    return line;
}

QString Texts::ofScript(const char* language)
{
    return draw(u"scripts"_s, QString::fromLatin1(language));
}

QString Texts::sentence()
{
    const auto word = [this](const char* section) {
        return draw(u"english"_s, QString::fromLatin1(section));
    };
    return u"The %1 %2 %3 the %4 %5 %6."_s.arg(word("adjectives"), word("nouns"), word("verbs"),
        word("adjectives"), word("nouns"), word("places"));
}

QString Texts::fileSize()
{
    static const QStringList units{u"KB"_s, u"MB"_s, u"GB"_s, u"KiB"_s, u"MiB"_s};
    return decimal(1) + u' ' + m_random.pick(units);
}

QString Texts::date()
{
    const QDate day = QDate(2022, 1, 1).addDays(m_random.below(1000));
    if (m_languages == QList{Language::english})
        return day.toString(m_random.isLuckyIn(2) ? u"yyyy-MM-dd"_s : u"dd/MM/yyyy"_s);
    return day.toString(u"dd.MM.yyyy"_s);
}

QString Texts::longDate()
{
    const QDate day = QDate(2022, 1, 1).addDays(m_random.below(1000));
    const Language language = anyLanguage();
    return localeOf(language).toString(
        day, language == Language::german ? u"d. MMMM yyyy"_s : u"d MMMM yyyy"_s);
}

QString Texts::time()
{
    return QTime(m_random.below(24), m_random.below(60)).toString(u"HH:mm"_s);
}

QString Texts::price()
{
    const Language language = anyLanguage();
    QLocale locale = localeOf(language);
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    const QString amount = locale.toString(m_random.between(99, 99999) / 100.0, 'f', 2);
    return language == Language::english ? (m_random.isLuckyIn(2) ? u"$"_s : u"£"_s) + amount
                                         : amount + u" €"_s;
}

QString Texts::decimal(int digits)
{
    const double value = m_random.between(1, 9999) / 10.0;
    return localeOf(anyLanguage()).toString(value, 'f', digits);
}

QString Texts::integer(int low, int high)
{
    return QString::number(m_random.between(low, high));
}

QString Texts::percent()
{
    return integer(1, 99) + u'%';
}

QString Texts::address()
{
    return u"%1.%2.%3.%4"_s.arg(
        integer(10, 223), integer(0, 255), integer(0, 255), integer(1, 254));
}

QString Texts::webAddress()
{
    const QString noun = draw(u"english"_s, u"nouns"_s);
    return u"https://%1.example.org/%2/%3"_s.arg(
        noun, draw(u"english"_s, u"adjectives"_s), integer(10, 9999));
}

QString Texts::mailAddress()
{
    return u"%1.%2@example.com"_s.arg(
        draw(u"english"_s, u"adjectives"_s), draw(u"english"_s, u"nouns"_s));
}

QString Texts::hexadecimal(int digits)
{
    QString text;
    for (int i = 0; i < digits; ++i)
        text.append(u"0123456789abcdef"[m_random.below(16)]);
    return text;
}

QString Texts::uuid()
{
    return u"%1-%2-4%3-a%4-%5"_s.arg(
        hexadecimal(8), hexadecimal(4), hexadecimal(3), hexadecimal(3), hexadecimal(12));
}

QString Texts::version()
{
    return u"%1.%2.%3"_s.arg(integer(0, 24), integer(0, 19), integer(0, 40));
}

} // namespace Lumenote::Bench
