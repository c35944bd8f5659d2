#include "Platform/Tesseract/LineReading.h"

namespace Platform {

namespace {

/// Whether @p character is of a script that sets no blanks between words.
bool isUnspaced(QChar character)
{
    switch (character.script()) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
        return true;
    default:
        return false;
    }
}

} // namespace

bool haveUprightSides(const ReadSymbol& left, const ReadSymbol& right)
{
    return !QStringLiteral("fkrtvwxyFKLPTVWXY'\"").contains(left.text.back())
        && !QStringLiteral("fjtvwxyAJTVWXY'\"").contains(right.text.front());
}

bool isSmallMark(const QString& text)
{
    return QStringLiteral(".,:;'`°\"-_~*·^=´’‘“”„–—•").contains(text);
}

QString textOf(const std::vector<ReadSymbol>& symbols)
{
    QString text;
    for (const ReadSymbol& symbol : symbols) {
        const bool isBlank = symbol.startsWord && !text.isEmpty()
            && !(isUnspaced(text.back()) && isUnspaced(symbol.text.front()));
        if (isBlank)
            text += u' ';
        text += symbol.text;
    }
    return text;
}

} // namespace Platform
