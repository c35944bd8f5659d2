#include "Platform/Tesseract/LanguagePass.h"

#include <algorithm>
#include <numeric>

namespace Platform {

Result<std::vector<LineReading>> readInBestLanguages(const PageLayout& page, LineReader& reader,
    const QStringList& languages, const std::stop_token& stop)
{
    const QString english = QStringLiteral("eng");
    const QString main = languages.contains(english) ? english : languages.front();
    std::vector<int> all(page.lines.size());
    std::iota(all.begin(), all.end(), 0);
    return reader.read(all, main, stop);
}

} // namespace Platform
