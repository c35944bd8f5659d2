#pragma once

#include <QString>

#include <span>
#include <vector>

namespace Platform {

/// A character that an engine read.
struct ReadSymbol {
    QString text; ///< One character, or a few for a ligature.
    double centre = 0; ///< Across, in pixels of the line.
    bool startsWord = false;
    double confidence = 0; ///< Of its word, 0 to 100.
    bool isOfKnownWord = false; ///< Its word stands in the language's dictionary.
};

/// What an engine read from one line.
struct LineReading {
    std::vector<ReadSymbol> symbols; ///< In the order in which they are read; maybe none.
    double confidence = 0; ///< Of the characters, 0 to 100, the mean.
};

/// The words of @p symbols, which may be constant.
template <typename Symbol>
std::vector<std::span<Symbol>> wordsOf(std::span<Symbol> symbols)
{
    std::vector<std::span<Symbol>> words;
    std::size_t start = 0;
    for (std::size_t next = 1; next <= symbols.size(); ++next) {
        if (next < symbols.size() && !symbols[next].startsWord)
            continue;
        words.push_back(symbols.subspan(start, next - start));
        start = next;
    }
    return words;
}

/// Whether two letters that follow each other have upright sides there. Between others a blank
/// looks narrower than it is: one hangs over it, or leans away from it ("of the", "saw why").
bool haveUprightSides(const ReadSymbol& left, const ReadSymbol& right);

/// Whether @p text is a dot, a dash, a quotation mark or the like: small, and easily taken for
/// another one.
bool isSmallMark(const QString& text);

/// The text of @p symbols, with a blank before each word but the first.
QString textOf(const std::vector<ReadSymbol>& symbols);

} // namespace Platform
