#pragma once

#include "Platform/Tesseract/LineReader.h"

#include <QStringList>

#include <stop_token>
#include <vector>

namespace Platform {

/// Reads all lines of @p page: first in the main language, English where it is installed, and what
/// stays doubtful again in the others. Of several readings the surest is answered.
Result<std::vector<LineReading>> readInBestLanguages(const PageLayout& page, LineReader& reader,
    const QStringList& languages, const std::stop_token& stop);

} // namespace Platform
