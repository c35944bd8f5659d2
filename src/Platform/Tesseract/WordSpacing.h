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

/// A stretch of a line without ink, in pixels of the line.
struct InkGap {
    double left = 0;
    double right = 0;
};

/// Puts the words' boundaries where the line has its gaps. The engine misses narrow blanks and
/// sees one where a typewriter face leaves room around a dot. @p gaps stand from left to right.
void respace(std::vector<ReadSymbol>& symbols, const std::vector<InkGap>& gaps);

/// The text of @p symbols, with a blank before each word but the first.
QString textOf(const std::vector<ReadSymbol>& symbols);

} // namespace Platform
