#pragma once

#include "Platform/Tesseract/EnginePool.h"
#include "Platform/TextLayout/PageLayout.h"

#include <QString>
#include <QStringList>

#include <stop_token>
#include <vector>

namespace Platform {

/// Reads the lines of one page with as many engines as pay.
class LineReader {
public:
    /// @p page and @p engines must outlive the reader.
    LineReader(const PageLayout& page, EnginePool& engines)
        : m_page(page)
        , m_engines(engines)
    {
    }

    /// Reads the page in @p language, one reading for each of its lines. Lines of a reduced level
    /// are read only where what finer levels saw in their place is no sure text; the others stay
    /// empty, like those that were not reached when @p stop was requested. Fails where no engine
    /// starts.
    Result<std::vector<LineReading>> readPage(const QString& language, const std::stop_token& stop);

    /// Reads the lines of these numbers in @p language, one reading for each; those that were not
    /// reached when @p stop was requested are left empty. Fails where no engine starts.
    Result<std::vector<LineReading>> read(
        const std::vector<int>& lines, const QString& language, const std::stop_token& stop);

private:
    int workersFor(const std::vector<int>& lines, const QString& language) const;
    std::vector<std::size_t> longestFirst(const std::vector<int>& lines) const;

    const PageLayout& m_page;
    EnginePool& m_engines;
};

} // namespace Platform
