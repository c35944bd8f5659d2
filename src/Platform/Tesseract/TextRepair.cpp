#include "Platform/Tesseract/TextRepair.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <optional>
#include <span>

namespace Platform {

namespace {

using Word = std::span<ReadSymbol>;

QChar first(const ReadSymbol& symbol)
{
    return symbol.text.front();
}

bool isHexDigit(QChar character)
{
    return QStringLiteral("0123456789abcdefABCDEF").contains(character);
}

QString textOfWord(Word word)
{
    QString text;
    for (const ReadSymbol& symbol : word)
        text += symbol.text;
    return text;
}

/// A bar before a verb in the first person is the pronoun; before anything else it may be a pipe or
/// a rule between links.
void repairBars(const std::vector<Word>& words)
{
    static const QStringList verbs{QStringLiteral("am"), QStringLiteral("can"),
        QStringLiteral("could"), QStringLiteral("did"), QStringLiteral("do"),
        QStringLiteral("don't"), QStringLiteral("had"), QStringLiteral("have"),
        QStringLiteral("know"), QStringLiteral("need"), QStringLiteral("should"),
        QStringLiteral("think"), QStringLiteral("want"), QStringLiteral("was"),
        QStringLiteral("will"), QStringLiteral("would")};
    for (std::size_t word = 0; word + 1 < words.size(); ++word) {
        const bool isBar = words[word].size() == 1 && first(words[word][0]) == u'|';
        if (isBar && verbs.contains(textOfWord(words[word + 1])))
            words[word][0].text = QStringLiteral("I");
    }
}

/// An at sign stands between letters in addresses and before them in names: elsewhere it is a
/// zero with a stroke or a dot inside.
void repairZeros(std::vector<ReadSymbol>& symbols)
{
    for (std::size_t symbol = 0; symbol < symbols.size(); ++symbol) {
        if (first(symbols[symbol]) != u'@')
            continue;
        const bool isLast = symbol + 1 == symbols.size() || symbols[symbol + 1].startsWord;
        const bool isFirst = symbol == 0 || symbols[symbol].startsWord;
        const QChar next = isLast ? u' ' : first(symbols[symbol + 1]);
        const QChar previous = isFirst ? u' ' : first(symbols[symbol - 1]);
        const bool isHexPrefix = isFirst && next == u'x' && symbol + 2 < symbols.size()
            && isHexDigit(first(symbols[symbol + 2]));
        const bool isInNumber = previous.isDigit() && (isLast || !next.isLetter());
        const bool isBeforeNumber = isFirst && (next.isDigit() || next == u'.' || next == u':');
        const bool isAlone = isFirst && !isLast && !next.isLetterOrNumber() && next != u'@';
        if (isHexPrefix || isInNumber || isBeforeNumber || isAlone)
            symbols[symbol].text = QStringLiteral("0");
    }
}

/// The digit that a letter stands for in a hexadecimal number.
std::optional<QString> hexDigitFor(QChar letter)
{
    switch (letter.unicode()) {
    case u'O':
    case u'o':
    case u'Q':
    case u'@':
        return QStringLiteral("0");
    case u'l':
    case u'I':
    case u'i':
        return QStringLiteral("1");
    case u'S':
    case u's':
        return QStringLiteral("5");
    case u'Z':
        return QStringLiteral("2");
    default:
        return std::nullopt;
    }
}

/// Whether a digit stands beside the symbol of this number.
bool isBesideDigit(Word word, std::size_t symbol)
{
    return (symbol > 0 && first(word[symbol - 1]).isDigit())
        || (symbol + 1 < word.size() && first(word[symbol + 1]).isDigit());
}

/// Letters that no hexadecimal number has, in a word that is one but for them: each beside a digit,
/// or anywhere where the word is too long to be made of such letters by chance.
void repairHexNumbers(Word word)
{
    constexpr std::size_t shortestNumber = 7;
    constexpr std::size_t longNumber = 10;
    constexpr std::size_t fewestDigits = 3;
    std::size_t digits = 0;
    std::vector<std::size_t> mistaken;
    for (std::size_t symbol = 0; symbol < word.size(); ++symbol) {
        const QChar character = first(word[symbol]);
        digits += character.isDigit() ? 1 : 0;
        if (isHexDigit(character) || character == u'-')
            continue;
        if (!hexDigitFor(character) || (word.size() < longNumber && !isBesideDigit(word, symbol)))
            return;
        mistaken.push_back(symbol);
    }
    if (word.size() < shortestNumber || digits < fewestDigits || digits * 4 < word.size()
        || mistaken.size() * 4 > word.size())
        return;
    for (const std::size_t symbol : mistaken)
        word[symbol].text = *hexDigitFor(first(word[symbol]));
}

/// "Ctri" and its like at the start of a word are the key.
void repairControlKey(Word word)
{
    const auto at = [&](std::size_t index) { return first(word[index]); };
    for (std::size_t start = 0; start + 4 <= word.size(); ++start) {
        const bool isKey = at(start) == u'C' && at(start + 1) == u't' && at(start + 2) == u'r'
            && (at(start + 3) == u'i' || at(start + 3) == u'I' || at(start + 3) == u'1'
                || at(start + 3) == u'|');
        const bool ends = start + 4 == word.size() || !at(start + 4).isLetter();
        const bool begins = start == 0 || !at(start - 1).isLetter();
        if (isKey && ends && begins)
            word[start + 3].text = QStringLiteral("l");
    }
}

/// "F" before two bars or digits, alone or behind a plus sign, is a function key: "Ctrl+F11".
void repairFunctionKey(Word word)
{
    constexpr std::size_t length = 3;
    if (word.size() < length
        || (word.size() > length && first(word[word.size() - length - 1]) != u'+'))
        return;
    const Word key = word.last(length);
    const auto isBar = [](QChar character) { return QStringLiteral("lI|").contains(character); };
    const QChar tens = first(key[1]);
    const QChar ones = first(key[2]);
    if (first(key[0]) != u'F' || !(isBar(tens) || tens == u'1' || tens == u'2')
        || !(isBar(ones) || ones.isDigit()))
        return;
    for (ReadSymbol& symbol : key.subspan(1))
        if (isBar(first(symbol)))
            symbol.text = QStringLiteral("1");
}

/// A capital "I" in the small letters that end the name of a file is an "l": ".xlsx", ".html".
void repairEnding(Word word)
{
    constexpr std::size_t longestEnding = 5;
    std::size_t start = word.size();
    while (start > 0 && first(word[start - 1]) != u'.')
        --start;
    if (start < 2 || word.size() - start > longestEnding || word.size() - start < 2)
        return;
    const Word ending = word.subspan(start);
    const bool isLowerCase = std::all_of(ending.begin(), ending.end(),
        [](const ReadSymbol& symbol) { return first(symbol).isLower() || first(symbol) == u'I'; });
    // "isId" and its like are names in a program.
    const bool isName = first(ending.back()) == u'd' || first(ending.back()) == u't';
    if (!isLowerCase || first(ending.front()) == u'I' || isName)
        return;
    for (ReadSymbol& symbol : ending)
        if (first(symbol) == u'I')
            symbol.text = QStringLiteral("l");
}

QChar openerOf(QChar closer)
{
    return closer == u')' ? u'(' : closer == u']' ? u'[' : u'{';
}

/// An opening brace that is closed by another kind of bracket was one of that kind.
void repairBraces(std::vector<ReadSymbol>& symbols)
{
    std::vector<std::size_t> open;
    for (std::size_t symbol = 0; symbol < symbols.size(); ++symbol) {
        const QChar character = first(symbols[symbol]);
        if (QStringLiteral("([{").contains(character)) {
            open.push_back(symbol);
        } else if (QStringLiteral(")]").contains(character) && !open.empty()) {
            if (first(symbols[open.back()]) == u'{')
                symbols[open.back()].text = openerOf(character);
            open.pop_back();
        } else if (character == u'}' && !open.empty()) {
            open.pop_back();
        }
    }
}

} // namespace

void repair(std::vector<ReadSymbol>& symbols)
{
    repairZeros(symbols);
    repairBraces(symbols);
    const std::vector<Word> words = wordsOf(Word(symbols));
    repairBars(words);
    for (const Word word : words) {
        repairHexNumbers(word);
        repairControlKey(word);
        repairFunctionKey(word);
        repairEnding(word);
    }
}

} // namespace Platform
